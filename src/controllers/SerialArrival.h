#pragma once

#include "support/SharedLibrary.h"

#include <QMap>
#include <QObject>
#include <memory>
#include <optional>

/// USB identity of a port's adapter; zeros where it has none.
struct UsbIds
{
    quint16 vendor = 0;
    quint16 product = 0;
};

/// Names of ports, each with a number, not 0, that tells it from a successor of the same name.
using PortNames = QMap<QString, quint64>;

/// Tells when the operating system gets a new serial port, also one that takes the name of another; removals
/// show up as errors of the port. One source per system. Main thread.
class LUMIVAR_DEVICES_EXPORT SerialArrival : public QObject
{
    Q_OBJECT

public:
    /// `deviceFolder` is a Unix system's folder of devices.
    explicit SerialArrival(const QString& deviceFolder, QObject* parent = nullptr);
    ~SerialArrival() override;

    /// The ports that are there, told without opening or disturbing one; nothing where that takes no care.
    static std::optional<PortNames> present(const QString& deviceFolder);
    /// The adapter's identity where the list of ports does not know it.
    static UsbIds usbIds(const QString& portName);

signals:
    void arrived(QString name);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
