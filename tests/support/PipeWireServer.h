#pragma once

#include "ServerProcess.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QThread>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// A media server of the test's own (pipewire), and the session manager (wireplumber) that links the streams
/// in it. Both end with this object.
class PipeWireServer : public ServerProcess
{
public:
    ~PipeWireServer() { stop(); }

    /// Waits until the server takes connections; false, with a warning, when it does not. Once stopped it
    /// comes back in the same place.
    bool start()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(variable, m_home.path());
        for (const char* variable : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS"})
            environment.remove(variable);
        for (MortalProcess* process : {&m_server, &m_manager}) {
            process->setProcessEnvironment(environment);
            process->setProcessChannelMode(QProcess::MergedChannels);
        }
        QFile::remove(m_socket); // a killed server leaves it
        QFile settings(m_home.filePath("server.conf"));
        if (!settings.open(QIODevice::WriteOnly) || settings.write(kSettings) < 0)
            return false;
        settings.close();
        m_server.start("pipewire", {"-c", settings.fileName()});
        for (QDeadlineTimer patience(kStartMs); !patience.hasExpired(); QThread::msleep(5)) {
            const int file = m_server.state() == QProcess::NotRunning ? -1 : connection();
            if (file >= 0) {
                ::close(file);
                return startManager();
            }
            m_server.waitForFinished(0);
        }
        qWarning() << "pipewire does not start:" << m_server.errorString() << m_server.readAll();
        return false;
    }
    /// Kills both, as a crash would.
    void stop()
    {
        stopManager();
        ServerProcess::stop();
    }
    bool startManager()
    {
        m_manager.start("wireplumber", {"-c", "policy.conf"});
        return m_manager.waitForStarted(kStartMs);
    }
    void stopManager()
    {
        m_manager.kill();
        m_manager.waitForFinished();
    }
    QString socket() const { return m_socket; }
    /// A new connection to the server, as a portal hands it out; -1 when there is none. The caller closes it.
    int connection() const
    {
        const int file = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = QFile::encodeName(m_socket);
        std::strncpy(address.sun_path, path.constData(), sizeof address.sun_path - 1);
        if (::connect(file, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            return file;
        ::close(file);
        return -1;
    }

private:
    static constexpr char kSettings[] = R"(
context.properties = { core.daemon = true core.name = pipewire-0 log.level = 1 }
context.spa-libs = { support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-protocol-native }
    { name = libpipewire-module-metadata }
    { name = libpipewire-module-client-node }
    { name = libpipewire-module-access }
    { name = libpipewire-module-adapter }
    { name = libpipewire-module-link-factory }
    { name = libpipewire-module-session-manager }
]
)";

    QTemporaryDir m_home{QDir::tempPath() + "/pw-XXXXXX"}; // a socket's path must be short
    const QString m_socket = m_home.filePath("pipewire-0");
    MortalProcess m_manager;
};
