#pragma once

#include <QByteArray>
#include <QString>

/// What a device answered to the probe: six characters of model, a comma, the binary serial, two tail bytes.
struct ProbeReply
{
    static constexpr int kMaxBytes = 128; ///< longer ones are no answer

    QString text;   ///< the answer without its tail, for the log
    QString model;  ///< upper case
    QString serial; ///< upper-case hexadecimal, empty where the device has none
    QString id;     ///< the identity of the controller
    bool hasSerial = false;

    /// An invalid reply is no device of ours.
    bool isValid() const { return !id.isEmpty(); }
    /// Gives a device without a serial its place as one, so that twins are two devices.
    void standIn(const QString& place);
    /// Any bytes may come. What follows the usual tail, line noise or the same answer again, is dropped.
    static ProbeReply parse(const QByteArray& bytes);
    /// False when an answer does not begin with these bytes; one that has not begun may yet.
    static bool mayBegin(const QByteArray& bytes);
    /// They end as an answer usually does.
    static bool looksWhole(const QByteArray& bytes);
};
