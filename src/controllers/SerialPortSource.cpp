#include "controllers/SerialPortSource.h"

#include "controllers/BridgedSerialPortSource.h"
#include "controllers/SystemSerialPortSource.h"

#include <algorithm>

SerialPortRecord ISerialPortSource::find(const QString& name)
{
    const QList<SerialPortRecord> ports = availablePorts();
    const auto found =
        std::find_if(ports.begin(), ports.end(), [&](const auto& port) { return port.name == name; });
    return found == ports.end() ? SerialPortRecord{} : *found;
}

CombinedSerialPortSource::CombinedSerialPortSource(std::vector<std::unique_ptr<ISerialPortSource>> sources,
                                                   QObject* parent)
    : ISerialPortSource(parent)
    , m_sources(std::move(sources))
{
    for (const auto& source : m_sources)
        connect(source.get(), &ISerialPortSource::portArrived, this, &ISerialPortSource::portArrived);
}

QList<SerialPortRecord> CombinedSerialPortSource::availablePorts()
{
    QList<SerialPortRecord> all;
    for (const auto& source : m_sources) {
        const QList<SerialPortRecord> ports = source->availablePorts();
        for (const SerialPortRecord& port : ports) {
            const auto same = [&](const SerialPortRecord& known) { return known.name == port.name; };
            if (std::none_of(all.cbegin(), all.cend(), same))
                all.append(port);
        }
    }
    return all;
}

QList<PortlessAdapter> CombinedSerialPortSource::portlessAdapters()
{
    QList<PortlessAdapter> all;
    for (const auto& source : m_sources)
        all += source->portlessAdapters();
    return all;
}

std::unique_ptr<ISerialPortSource> CombinedSerialPortSource::createDefault()
{
    std::vector<std::unique_ptr<ISerialPortSource>> sources;
    sources.push_back(std::make_unique<SystemSerialPortSource>());
    const QString file = BridgedSerialPortSource::fileFromEnvironment();
    if (!file.isEmpty())
        sources.push_back(std::make_unique<BridgedSerialPortSource>(file));
    return std::make_unique<CombinedSerialPortSource>(std::move(sources));
}
