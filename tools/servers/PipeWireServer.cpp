#include "PipeWireServer.h"

#include <QFile>
#include <QLocalSocket>
#include <QProcessEnvironment>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr char kSettings[] = R"(
context.properties = { core.daemon = true core.name = pipewire-0 log.level = 1 }
context.spa-libs = { support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-protocol-native } { name = libpipewire-module-metadata }
    { name = libpipewire-module-client-node } { name = libpipewire-module-access }
    { name = libpipewire-module-adapter } { name = libpipewire-module-link-factory }
    { name = libpipewire-module-session-manager }
]
)";

bool writeSettings(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(kSettings) > 0;
}

} // namespace

PipeWireServer::~PipeWireServer()
{
    stop();
}

bool PipeWireServer::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(variable, m_home.path());
    for (const char* variable : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(variable);
    for (MortalProcess* process : {&m_server, &m_manager})
        process->setProcessEnvironment(environment);
    QFile::remove(m_socket); // a killed server leaves it
    const QString settings = m_home.filePath("server.conf");
    if (!writeSettings(settings))
        return false;
    m_server.start("pipewire", {"-c", settings});
    const auto takesConnections = [this] {
        const int file = connection();
        return file >= 0 && ::close(file) == 0;
    };
    return comesUp(takesConnections) && startManager();
}

void PipeWireServer::stop()
{
    stopManager();
    ServerProcess::stop();
}

bool PipeWireServer::startManager()
{
    m_manager.start("wireplumber", {"-c", "policy.conf"});
    return m_manager.waitForStarted(kStartMs);
}

void PipeWireServer::stopManager()
{
    m_manager.kill();
    m_manager.waitForFinished();
}

int PipeWireServer::connection() const
{
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    return ::fcntl(int(socket.socketDescriptor()), F_DUPFD_CLOEXEC, 0);
}
