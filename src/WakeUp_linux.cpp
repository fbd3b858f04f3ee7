#include "WakeUp.h"

#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kRetryMs = 20;
constexpr int kPatienceMs = 1000;
constexpr int kMaxRequestBytes = 64;
constexpr char kRequest[] = "13137\n";

bool isPrivateFolder(const QByteArray& path)
{
    struct stat info = {};
    return lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == getuid() &&
           (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// A folder that only this user can write to, so that nobody else can pose as the program; empty if none.
QString privateFolder()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && isPrivateFolder(runtime))
        return QFile::decodeName(runtime);
    const QString path = QDir::temp().filePath(QStringLiteral("lumivar-%1").arg(getuid()));
    const QByteArray name = QFile::encodeName(path);
    mkdir(name.constData(), S_IRWXU);
    return isPrivateFolder(name) ? path : QString();
}

QString socketPath()
{
    const QString folder = privateFolder();
    return folder.isEmpty() ? QString() : folder + QLatin1String("/lumivar-wakeup");
}

} // namespace

bool sendWakeUp()
{
    const QString path = socketPath();
    if (path.isEmpty())
        return false;
    // The other process may hold the lock without listening yet.
    QElapsedTimer elapsed;
    elapsed.start();
    do {
        QLocalSocket socket;
        socket.connectToServer(path);
        if (socket.waitForConnected(kPatienceMs)) {
            socket.write(kRequest);
            socket.disconnectFromServer();
            return socket.state() == QLocalSocket::UnconnectedState ||
                   socket.waitForDisconnected(kPatienceMs);
        }
        QThread::msleep(kRetryMs);
    } while (elapsed.elapsed() < kPatienceMs);
    return false;
}

struct WakeUpServer::Private
{
    QLocalServer server;
};

WakeUpServer::WakeUpServer(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    connect(&d->server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = d->server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->canReadLine() && socket->bytesAvailable() < kMaxRequestBytes)
                    return;
                if (socket->readLine(kMaxRequestBytes) == kRequest) {
                    qInfo() << "[WakeUp]: a second process was started";
                    emit wakeUpRequested();
                }
                socket->abort();
            });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

WakeUpServer::~WakeUpServer() = default;

bool WakeUpServer::listen()
{
    const QString path = socketPath();
    if (path.isEmpty()) {
        qWarning() << "[WakeUp]: no private folder for the socket";
        return false;
    }
    QLocalServer::removeServer(path);
    // No access options: they bind to another name first and rename it over a live socket. The folder
    // protects.
    if (!d->server.listen(path)) {
        qWarning() << "[WakeUp]: cannot listen on" << path << d->server.errorString();
        return false;
    }
    return true;
}
