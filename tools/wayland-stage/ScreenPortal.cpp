#include "ScreenPortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QLocalSocket>
#include <QTimer>

#include <unistd.h>
#include <utility>

namespace {

constexpr char kService[] = "org.freedesktop.portal.Desktop";
constexpr char kFailed[] = "org.freedesktop.portal.Error.Failed";
constexpr char kPath[] = "/org/freedesktop/portal/desktop";
constexpr uint kVersion = 5;
constexpr uint kEverything = 7; // monitors, windows, virtual screens; cursors hidden, drawn in, told of

QVariantMap optionsOf(const QDBusMessage& call)
{
    return qdbus_cast<QVariantMap>(call.arguments().constLast());
}

/// Where the caller expects the session or request of that token.
QString handleOf(const QDBusMessage& call, const char* kind, const char* option)
{
    const QString token = optionsOf(call).value(option).toString();
    return QString("%1/%2/%3/%4").arg(kPath, kind, call.service().mid(1).replace('.', '_'), token);
}

QString requestOf(const QDBusMessage& call, ScreenPortal::Fault fault)
{
    return fault == ScreenPortal::Fault::OwnPath ? "/request/own" : handleOf(call, "request", "handle_token");
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& to, const PortalStream& stream)
{
    to.beginStructure();
    to << stream.node << stream.properties;
    to.endStructure();
    return to;
}

const QDBusArgument& operator>>(const QDBusArgument& from, PortalStream&)
{
    return from; // nobody reads any here
}

ScreenPortal::ScreenPortal(const PrivateBus& bus)
    : m_bus(bus)
{
    qDBusRegisterMetaType<PortalStream>();
    qDBusRegisterMetaType<QList<PortalStream>>();
}

ScreenPortal::~ScreenPortal()
{
    leave();
}

bool ScreenPortal::come()
{
    m_name = QStringLiteral("portal-%1").arg(++m_times);
    QDBusConnection bus = m_bus.connection(m_name);
    return bus.registerVirtualObject(kPath, this, QDBusConnection::SubPath) && bus.registerService(kService);
}

void ScreenPortal::leave()
{
    if (!m_name.isEmpty()) {
        QDBusConnection(m_name).unregisterService(kService); // now: another one may come at once
        QDBusConnection::disconnectFromBus(m_name);
    }
    m_name.clear();
    m_session.clear();
    m_start = QDBusMessage();
    openSessions = 0;
}

void ScreenPortal::answerDialog(uint response)
{
    if (!isDialogOpen())
        return;
    respond(std::exchange(m_start, {}), response, response == 0 ? consent() : QVariantMap());
    emit answered(response);
}

void ScreenPortal::endSession()
{
    if (m_session.isEmpty())
        return;
    --openSessions;
    tell(m_client, std::exchange(m_session, {}), "Session", "Closed", {QVariantMap()});
}

QString ScreenPortal::introspect(const QString& /*path*/) const
{
    return {};
}

bool ScreenPortal::handleMessage(const QDBusMessage& call, const QDBusConnection& connection)
{
    const QString method = call.member();
    if ((call.interface() + call.arguments().value(0).toString()).contains("Shortcuts"))
        return false; // a desktop that hands out screens alone
    const Fault fault = faults.value(method);
    calls << method;
    m_client = call.service();
    const bool isNonsense = fault == Fault::Nonsense;
    if (fault == Fault::Dies || fault == Fault::DiesAtOnce)
        QTimer::singleShot(0, this, &ScreenPortal::leave);
    if (fault == Fault::Silent || fault == Fault::DiesAtOnce || method == "Register")
        return true;
    if (fault == Fault::Error) {
        connection.send(call.createErrorReply(kFailed, "no"));
    } else if (method == "GetAll") {
        const QVariantMap all{{"AvailableSourceTypes", kEverything}, {"AvailableCursorModes", kEverything}};
        connection.send(call.createReply(isNonsense ? QVariant(7) : all));
    } else if (method == "Get") {
        connection.send(call.createReply(QVariant::fromValue(QDBusVariant(kVersion))));
    } else if (method == "OpenPipeWireRemote") {
        connection.send(isNonsense ? call.createReply(QVariant(7)) : replyWithRemote(call));
    } else if (method == "Close") {
        onClose(call.path());
    } else {
        onRequest(call, connection, fault);
    }
    return true;
}

void ScreenPortal::tell(const QString& client, const QString& path, const char* kind, const char* signal,
                        const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createTargetedSignal(
        client, path, QString("org.freedesktop.portal.%1").arg(kind), signal);
    message.setArguments(arguments);
    QDBusConnection(m_name).send(message);
}

void ScreenPortal::onRequest(const QDBusMessage& call, const QDBusConnection& connection, Fault fault)
{
    connection.send(call.createReply(QVariant::fromValue(QDBusObjectPath(requestOf(call, fault)))));
    QVariantMap results;
    if (call.member() == "CreateSession") {
        m_session = handleOf(call, "session", "session_handle_token");
        ++openSessions;
        results.insert("session_handle", m_session);
    } else if (call.member() == "SelectSources") {
        selection = optionsOf(call);
        if (chokesOnTokens && selection.contains("restore_token"))
            fault = Fault::Ended;
    } else if (call.member() == "Start") {
        const bool asks = goodToken.isEmpty() || selection["restore_token"] != goodToken;
        dialogs += asks ? 1 : 0;
        if (asks && isUserSlow) {
            m_start = call;
            emit asked();
            return;
        }
        results = consent();
        if (asks)
            emit answered(0);
        else
            emit restored();
    }
    if (fault != Fault::Dies)
        respond(call, fault == Fault::Refused ? 1 : fault == Fault::Ended ? 2 : 0, results, fault);
}

QVariantMap ScreenPortal::consent()
{
    const QVariant shown = QVariant::fromValue(streams);
    if (!givesTokens)
        return {{"streams", shown}};
    goodToken = QString("token-%1").arg(++m_tokens);
    return {{"streams", shown}, {"restore_token", goodToken}};
}

void ScreenPortal::respond(const QDBusMessage& call, uint response, const QVariantMap& results, Fault fault)
{
    for (int times = fault == Fault::Twice ? 2 : 1; times > 0; --times)
        tell(call.service(), requestOf(call, fault), "Request", "Response",
             fault == Fault::Nonsense ? QVariantList{"yes"} : QVariantList{response, results});
}

void ScreenPortal::onClose(const QString& path)
{
    const bool isNews = isDialogOpen() || path == m_session;
    m_start = QDBusMessage();
    if (path == m_session) {
        --openSessions;
        m_session.clear();
    }
    if (isNews)
        emit closed();
}

QDBusMessage ScreenPortal::replyWithRemote(const QDBusMessage& call) const
{
    QLocalSocket server;
    server.connectToServer(socket);
    const QDBusUnixFileDescriptor remote(socket.isEmpty() ? STDERR_FILENO : int(server.socketDescriptor()));
    return remote.isValid() ? call.createReply(QVariant::fromValue(remote))
                            : call.createErrorReply(kFailed, "no media server");
}
