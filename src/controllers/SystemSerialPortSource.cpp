#include "controllers/SystemSerialPortSource.h"

#include "controllers/PortPlace.h"
#include "controllers/SystemPorts.h"

namespace {

QList<SerialPortRecord> records()
{
    QList<SerialPortRecord> all;
    const QList<SystemPort> ports = systemPorts();
    for (const SystemPort& port : ports) {
        const UsbIds ids = port.ids.vendor != 0 ? port.ids : SerialArrival::usbIds(port.name);
        all.append({port.name, port.location, SystemSerialPortSource::describe(port.description, ids),
                    portPlace(port.name)});
    }
    return all;
}

} // namespace

SystemSerialPortSource::SystemSerialPortSource(QObject* parent)
    : SystemSerialPortSource(QStringLiteral("/dev"), &records, parent)
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
