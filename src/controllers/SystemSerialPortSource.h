#pragma once

#include "controllers/SerialArrival.h"
#include "controllers/SerialPortSource.h"
#include "support/SharedLibrary.h"

#include <functional>

/// The serial ports that the operating system lists. They are asked for anew only when the names have
/// changed: asking may disturb what is connected to them.
class LUMIVAR_DEVICES_EXPORT SystemSerialPortSource : public ISerialPortSource
{
    Q_OBJECT

public:
    using Details = std::function<QList<SerialPortRecord>()>;

    explicit SystemSerialPortSource(QObject* parent = nullptr);
    /// With another folder of devices and another list; for tests.
    SystemSerialPortSource(const QString& deviceFolder, Details details, QObject* parent = nullptr);

    QList<SerialPortRecord> availablePorts() override;
    QList<PortlessAdapter> portlessAdapters() override;

    /// The description by which devices are told from other ports. Some systems name the adapter after the
    /// text in its descriptor, which does not say the chip; the USB identity does.
    static QString describe(const QString& systemDescription, UsbIds ids);

private:
    QString m_deviceFolder;
    Details m_details;
    std::optional<PortNames> m_askedAt; ///< the names when m_ports were asked for
    QList<SerialPortRecord> m_ports;
};
