#pragma once

#include "ServerProcess.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QThread>
#include <fcntl.h>
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
        for (MortalProcess* process : {&m_server, &m_manager})
            process->setProcessEnvironment(environment);
        QFile::remove(m_socket); // a killed server leaves it
        QFile settings(m_home.filePath("server.conf"));
        const bool isWritten = settings.open(QIODevice::WriteOnly) && settings.write(kSettings) > 0;
        settings.close();
        m_server.start("pipewire", {"-c", settings.fileName()});
        for (QDeadlineTimer patience(kStartMs); isWritten && !patience.hasExpired(); QThread::msleep(5)) {
            if (const int file = connection(); file >= 0)
                return ::close(file) == 0 && startManager();
            if (m_server.waitForFinished(0))
                break;
        }
        qWarning() << "pipewire does not start:" << m_server.errorString() << m_server.readAllStandardError();
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
        QLocalSocket socket;
        socket.connectToServer(m_socket);
        return fcntl(int(socket.socketDescriptor()), F_DUPFD_CLOEXEC, 0);
    }

private:
    static constexpr char kSettings[] = R"(
context.properties = { core.daemon = true core.name = pipewire-0 log.level = 1 }
context.spa-libs = { support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-protocol-native } { name = libpipewire-module-metadata }
    { name = libpipewire-module-client-node } { name = libpipewire-module-access }
    { name = libpipewire-module-adapter } { name = libpipewire-module-link-factory }
    { name = libpipewire-module-session-manager }
]
)";

    QTemporaryDir m_home{QDir::tempPath() + "/pw-XXXXXX"}; // a socket's path must be short
    const QString m_socket = m_home.filePath("pipewire-0");
    MortalProcess m_manager;
};
