#include "controllers/BridgedSerialPortSource.h"

#include "support/config/DataFile.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace {
constexpr int kDebounceMs = 20;
constexpr int kPollMs = 2000; ///< for folders that cannot be watched or do not exist yet
} // namespace

BridgedSerialPortSource::BridgedSerialPortSource(const QString& file, QObject* parent)
    : ISerialPortSource(parent)
    , m_file(QFileInfo(file).absoluteFilePath())
{
    m_debounce.setSingleShot(true);
    m_debounce.setInterval(kDebounceMs);
    connect(&m_debounce, &QTimer::timeout, this, &BridgedSerialPortSource::reload);
    connect(&m_poll, &QTimer::timeout, this, &BridgedSerialPortSource::reload);
    const auto soon = [this] { m_debounce.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, soon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, soon);
    watchFile();
    read();
    m_identities = identities();
    m_poll.start(kPollMs);
}

QString BridgedSerialPortSource::fileFromEnvironment()
{
    return qEnvironmentVariable("LUMIVAR_SERIAL_PORTS");
}

std::optional<QList<SerialPortRecord>> BridgedSerialPortSource::parse(const QByteArray& json, QString* error)
{
    QJsonParseError parseError{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (!document.isArray()) {
        *error = document.isNull() ? parseError.errorString() : QStringLiteral("not an array");
        return std::nullopt;
    }
    QList<SerialPortRecord> ports;
    const QJsonArray array = document.array();
    for (const QJsonValue& value : array) {
        const QJsonObject entry = value.toObject();
        const SerialPortRecord record{entry.value(QLatin1String("name")).toString(),
                                      entry.value(QLatin1String("location")).toString(),
                                      entry.value(QLatin1String("description")).toString()};
        if (record.isValid() && !record.systemLocation.isEmpty())
            ports.append(record);
    }
    return ports;
}

void BridgedSerialPortSource::watchFile()
{
    // Writers replace the file, which ends the watch on it; the folder tells of the new one.
    const QString folder = QFileInfo(m_file).path();
    if (!m_watcher.directories().contains(folder) && QFileInfo(folder).isDir())
        m_watcher.addPath(folder);
    if (!m_watcher.files().contains(m_file) && QFileInfo::exists(m_file))
        m_watcher.addPath(m_file);
}

bool BridgedSerialPortSource::read()
{
    QString error;
    QByteArray bytes;
    if (const std::optional<QByteArray> content = readDataFile(m_file, &error))
        bytes = *content;
    else if (QFileInfo::exists(m_file))
        bytes = m_lastBytes; // not readable at present
    else
        m_ports.clear();
    if (error != m_readError && QFileInfo::exists(m_file))
        qWarning().noquote() << "[SerialPort]: Cannot read the list of serial ports" << m_file << error;
    m_readError = error;
    if (bytes == m_lastBytes)
        return true;
    m_lastBytes = bytes;
    if (bytes.isEmpty())
        return true;
    const auto ports = parse(bytes, &error);
    if (!ports) {
        qWarning().noquote() << "[SerialPort]: Ignored broken list of serial ports" << m_file << error;
        return false;
    }
    m_ports = *ports;
    return true;
}

QStringList BridgedSerialPortSource::identities() const
{
    QStringList list;
    for (const SerialPortRecord& port : m_ports) {
        const QFileInfo node(port.systemLocation);
        list.append(QStringLiteral("%1\n%2\n%3\n%4")
                        .arg(port.name, port.systemLocation, node.canonicalFilePath())
                        .arg(node.metadataChangeTime().toMSecsSinceEpoch()));
    }
    return list;
}

void BridgedSerialPortSource::reload()
{
    watchFile();
    if (!read())
        return;
    const QStringList before = std::exchange(m_identities, identities());
    const QStringList now = m_identities;          // a receiver may cause the next reload
    const QList<SerialPortRecord> ports = m_ports; // likewise
    for (int i = 0; i < now.size(); ++i) {
        if (!before.contains(now.at(i)))
            emit portArrived(ports.at(i).name);
    }
}
