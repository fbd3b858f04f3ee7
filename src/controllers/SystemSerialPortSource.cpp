#include "controllers/SystemSerialPortSource.h"

#include "controllers/PortPlace.h"

#include <QSerialPortInfo>

namespace {

QList<SerialPortRecord> systemPorts()
{
    QList<SerialPortRecord> records;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports) {
        const UsbIds ids = port.hasVendorIdentifier()
                               ? UsbIds{port.vendorIdentifier(), port.productIdentifier()}
                               : SerialArrival::usbIds(port.portName());
        records.append({port.portName(), port.systemLocation(),
                        SystemSerialPortSource::describe(port.description(), ids),
                        portPlace(port.portName())});
    }
    return records;
}

} // namespace

SystemSerialPortSource::SystemSerialPortSource(QObject* parent)
    : SystemSerialPortSource(QStringLiteral("/dev"), &systemPorts, parent)
{
}

SystemSerialPortSource::SystemSerialPortSource(const QString& deviceFolder, Details details, QObject* parent)
    : ISerialPortSource(parent)
    , m_deviceFolder(deviceFolder)
    , m_details(std::move(details))
{
    auto* arrival = new SerialArrival(deviceFolder, this);
    connect(arrival, &SerialArrival::arrived, this, &ISerialPortSource::portArrived);
}

QList<SerialPortRecord> SystemSerialPortSource::availablePorts()
{
    const std::optional<PortNames> present = SerialArrival::present(m_deviceFolder);
    if (!present || present != m_askedAt) {
        m_ports.clear();
        for (const SerialPortRecord& port : m_details()) {
            if (!present || present->contains(port.name)) // or it is just going
                m_ports.append(port);
        }
        m_askedAt = present;
    }
    return m_ports;
}

QList<PortlessAdapter> SystemSerialPortSource::portlessAdapters()
{
    return ::portlessAdapters();
}

QString SystemSerialPortSource::describe(const QString& systemDescription, UsbIds ids)
{
    const QLatin1String chip("CH340");
    if (!isStripAdapter(ids) || systemDescription.contains(chip))
        return systemDescription;
    return QStringLiteral("%1 (%2)").arg(systemDescription, chip).trimmed();
}
