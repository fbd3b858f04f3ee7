#include "SerialPortsFile.h"

#include <QDebug>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

const QLatin1String kName("name");
const QLatin1String kLocation("location");

void removeFrom(QJsonArray& ports, const std::function<bool(const QJsonObject&)>& matches)
{
    for (int i = ports.size() - 1; i >= 0; --i) {
        if (matches(ports.at(i).toObject()))
            ports.removeAt(i);
    }
}

/// Held for a change. The lock file stays: removing it would let two holders in.
class FileLock
{
public:
    explicit FileLock(const QString& path)
        : m_fd(::open(QFile::encodeName(path).constData(), O_CREAT | O_RDWR | O_CLOEXEC, 0600))
    {
        if (m_fd >= 0)
            ::flock(m_fd, LOCK_EX);
    }
    ~FileLock()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int m_fd;
};

} // namespace

SerialPortsFile::SerialPortsFile(const QString& path)
    : m_path(path.isEmpty() ? qEnvironmentVariable("LUMIVAR_SERIAL_PORTS") : path)
{
}

bool SerialPortsFile::add(const QString& name, const QString& location, const QString& description) const
{
    return change([&](QJsonArray& ports) {
        removeFrom(ports, [&](const QJsonObject& port) { return port.value(kName).toString() == name; });
        ports.append(
            QJsonObject{{kName, name}, {kLocation, location}, {QStringLiteral("description"), description}});
    });
}

bool SerialPortsFile::remove(const QString& name, const QString& location) const
{
    return change([&](QJsonArray& ports) {
        removeFrom(ports, [&](const QJsonObject& port) {
            return port.value(kName).toString() == name && port.value(kLocation).toString() == location;
        });
    });
}

bool SerialPortsFile::change(const std::function<void(QJsonArray&)>& edit) const
{
    if (m_path.isEmpty())
        return false;
    const FileLock lock(m_path + QLatin1String(".lock"));
    QFile old(m_path);
    QJsonArray ports;
    if (old.open(QIODevice::ReadOnly))
        ports = QJsonDocument::fromJson(old.readAll()).array();
    edit(ports);

    QSaveFile file(m_path);
    const QByteArray json = QJsonDocument(ports).toJson();
    const bool ok = file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.commit();
    if (!ok)
        qWarning().noquote() << "[StripSimulator]: Failed to write" << m_path << file.errorString();
    return ok;
}
