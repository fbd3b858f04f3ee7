#include "system/WakeUp.h"

#include "system/RuntimeFile.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>

namespace {

constexpr int kRetryMs = 20;
constexpr int kPatienceMs = 1000;
constexpr int kMaxRequestBytes = 64;

QString socketPath()
{
    return runtimeFile(QStringLiteral("lumivar-wakeup"));
}

QByteArray line(WakeUp request)
{
    return QByteArray::number(static_cast<int>(request)) + '\n';
}

} // namespace

bool sendWakeUp(WakeUp request)
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
            socket.write(line(request));
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
                const QByteArray request = socket->readLine(kMaxRequestBytes);
                if (request == line(WakeUp::Show)) {
                    qInfo() << "[WakeUp]: a second process was started";
                    emit wakeUpRequested();
                } else if (request == line(WakeUp::Quit)) {
                    qInfo() << "[WakeUp]: a second process asks the program to end";
                    emit quitRequested();
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
    if (path.isEmpty())
        return false;
    QLocalServer::removeServer(path);
    // No access options: they bind to another name first and rename it over a live socket. The folder
    // protects.
    if (!d->server.listen(path)) {
        qWarning() << "[WakeUp]: cannot listen on" << path << d->server.errorString();
        return false;
    }
    return true;
}
