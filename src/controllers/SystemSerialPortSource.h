#pragma once

#include "controllers/SerialArrival.h"
#include "controllers/SerialPortSource.h"

/// The serial ports that the operating system lists.
class SystemSerialPortSource : public ISerialPortSource
{
    Q_OBJECT

public:
    explicit SystemSerialPortSource(QObject* parent = nullptr);

    QList<SerialPortRecord> availablePorts() override;

    /// The description by which devices are told from other ports. Some systems name the adapter after the
    /// text in its descriptor, which does not say the chip; the USB identity does.
    static QString describe(const QString& systemDescription, UsbIds ids);
};
