#pragma once

#include <QObject>
#include <memory>

/// USB identity of a port's adapter; zeros where it has none.
struct UsbIds
{
    quint16 vendor = 0;
    quint16 product = 0;
};

/// Tells when the operating system gets a new serial port; removals show up as errors of the port. One source
/// per system. Main thread.
class SerialArrival : public QObject
{
    Q_OBJECT

public:
    explicit SerialArrival(QObject* parent = nullptr);
    ~SerialArrival() override;

    /// The adapter's identity where the list of ports does not know it.
    static UsbIds usbIds(const QString& portName);

signals:
    void arrived(QString name);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
