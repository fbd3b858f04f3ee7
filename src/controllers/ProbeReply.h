#pragma once

#include <QByteArray>
#include <QString>

/// What a device answered to the probe: six characters of model, a comma, the binary serial, two tail bytes.
struct ProbeReply
{
    QString text;   ///< the answer without its tail, for the log
    QString model;  ///< upper case
    QString serial; ///< upper-case hexadecimal, empty where the device has none
    QString id;     ///< the identity of the controller
    bool hasSerial = false;

    /// An invalid reply is no device of ours.
    bool isValid() const { return !id.isEmpty(); }
    /// Any bytes may come; of an endless answer only the beginning counts.
    static ProbeReply parse(const QByteArray& bytes);
};
