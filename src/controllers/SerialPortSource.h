#pragma once

#include "controllers/UsbAdapters.h"
#include "support/SharedLibrary.h"

#include <QList>
#include <QObject>
#include <QString>
#include <memory>
#include <vector>

/// One serial port as a source lists it.
struct SerialPortRecord
{
    QString name;           ///< short name, unique in a list: "ttyUSB0", "COM5"
    QString systemLocation; ///< what is opened: "/dev/ttyUSB0", "\\.\COM5"
    QString description;    ///< of the hardware, decides whether the port is probed
    QString socket{};       ///< what the adapter is plugged into, empty: known by the name only

    /// Tells the place of a device from that of its twin, the same at every start.
    QString place() const { return socket.isEmpty() ? name : socket; }
    bool isValid() const { return !name.isEmpty(); }
};

/// A list of serial ports that tells when one arrives. Main thread.
class LUMIVAR_DEVICES_EXPORT ISerialPortSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QList<SerialPortRecord> availablePorts() = 0;
    /// Adapters that are plugged in without being a port.
    virtual QList<PortlessAdapter> portlessAdapters() { return {}; }
    /// The port of that name, an invalid record when it is not listed at present.
    SerialPortRecord find(const QString& name);

signals:
    void portArrived(QString name);
};

/// Several sources as one; where names clash, the earlier source wins.
class LUMIVAR_DEVICES_EXPORT CombinedSerialPortSource : public ISerialPortSource
{
    Q_OBJECT

public:
    explicit CombinedSerialPortSource(std::vector<std::unique_ptr<ISerialPortSource>> sources,
                                      QObject* parent = nullptr);

    QList<SerialPortRecord> availablePorts() override;
    QList<PortlessAdapter> portlessAdapters() override;

    /// The system's ports and those of the file named in the environment, if any.
    static std::unique_ptr<ISerialPortSource> createDefault();

private:
    std::vector<std::unique_ptr<ISerialPortSource>> m_sources;
};
