#pragma once

#include "PrivateBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QHash>
#include <QLocalSocket>
#include <QPoint>
#include <QSize>
#include <QTimer>
#include <unistd.h>

/// A stream as the portal tells of it: "id", "position" (QPoint), "size" (QSize), each where it is known.
struct FakeStream
{
    uint node = 0;
    QVariantMap properties;
};
Q_DECLARE_METATYPE(FakeStream)
inline QDBusArgument& operator<<(QDBusArgument& to, const FakeStream& stream)
{
    to.beginStructure();
    to << stream.node << stream.properties;
    to.endStructure();
    return to;
}
inline const QDBusArgument& operator>>(const QDBusArgument& from, FakeStream&)
{
    return from; // nobody reads any here
}

/// A desktop's screen-cast portal and the user in front of it, who consents at once unless told otherwise.
/// Needs the event loop of its thread.
class FakeScreenCast : public QDBusVirtualObject
{
public:
    /// How a call goes.
    enum class Way { Well, Error, Silent, Twice, Refused, Ended, Nonsense, OwnPath, Dies, DiesAtOnce };

    explicit FakeScreenCast(const PrivateBus& bus)
        : m_bus(bus)
    {
        qDBusRegisterMetaType<FakeStream>();
        qDBusRegisterMetaType<QList<FakeStream>>();
    }
    ~FakeScreenCast() override { leave(); }

    QList<FakeStream> streams{{42, {{"id", "left"}, {"position", QPoint(0, 0)}, {"size", QSize(640, 480)}}}};
    QString socket;              ///< of the PipeWire to hand out; none: one that says nothing
    QHash<QString, Way> ways;    ///< by method
    bool givesTokens = true;     ///< as version 4 does
    bool chokesOnTokens = false; ///< fails with one instead of asking the user
    bool isUserSlow = false;     ///< a dialog stays open until answerDialog()
    QString goodToken;           ///< the last one given; another one leads to a dialog
    int dialogs = 0;             ///< so far
    int openSessions = 0;
    QStringList calls;     ///< methods, in their order
    QVariantMap selection; ///< the last options of SelectSources

    /// Takes its name on the bus.
    bool come()
    {
        m_name = QStringLiteral("portal-%1").arg(++m_times);
        QDBusConnection connection = m_bus.connection(m_name);
        return connection.registerVirtualObject(kPath, this, QDBusConnection::SubPath) &&
               connection.registerService(kService);
    }
    /// As a crash would: whoever waits gets nothing, sessions are forgotten.
    void leave()
    {
        if (!m_name.isEmpty()) {
            QDBusConnection(m_name).unregisterService(kService); // now: another one may come at once
            QDBusConnection::disconnectFromBus(m_name);
        }
        m_name.clear();
        m_start = QDBusMessage();
        openSessions = 0;
    }
    bool isThere() const { return !m_name.isEmpty(); }
    QDBusConnection connection() const { return QDBusConnection(m_name); }
    bool isDialogOpen() const { return m_start.type() == QDBusMessage::MethodCallMessage; }
    /// 0: consent to what is asked, 1: refuse, 2: end it otherwise.
    void answerDialog(uint response)
    {
        respond(std::exchange(m_start, {}), response, response == 0 ? consent() : QVariantMap());
    }
    /// The user ends the sharing.
    void endSession()
    {
        --openSessions;
        tell(m_client, std::exchange(m_session, {}), "Session", "Closed", {QVariantMap()});
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        const QString method = call.member();
        if ((call.interface() + call.arguments().value(0).toString()).contains("Shortcuts"))
            return false; // a desktop that hands out screens alone
        const Way way = ways.value(method);
        calls << method;
        m_client = call.service();
        const bool isNonsense = way == Way::Nonsense;
        if (way == Way::Dies || way == Way::DiesAtOnce)
            QTimer::singleShot(0, this, [this] { leave(); });
        if (way == Way::Silent || way == Way::DiesAtOnce || method == "Register")
            return true;
        if (way == Way::Error)
            connection.send(call.createErrorReply("org.freedesktop.portal.Error.Failed", "no"));
        else if (method == "GetAll")
            connection.send(call.createReply(isNonsense ? QVariant(7) : kProperties));
        else if (method == "Get") // the version
            connection.send(call.createReply(QVariant::fromValue(QDBusVariant(5u))));
        else if (method == "OpenPipeWireRemote")
            connection.send(call.createReply(isNonsense ? QVariant(7) : remote()));
        else if (method == "Close")
            onClose(call.path());
        else
            onRequest(call, connection, way);
        return true;
    }

private:
    static constexpr char kService[] = "org.freedesktop.portal.Desktop";
    static constexpr char kPath[] = "/org/freedesktop/portal/desktop";
    const QVariant kProperties = QVariantMap{{"AvailableSourceTypes", 7u}, {"AvailableCursorModes", 7u}};

    static QVariantMap optionsOf(const QDBusMessage& call)
    {
        return qdbus_cast<QVariantMap>(call.arguments().constLast());
    }
    /// Where the caller expects the session or request of that token.
    static QString handleOf(const QDBusMessage& call, const char* kind, const char* option)
    {
        const QString token = optionsOf(call).value(option).toString();
        return QString("%1/%2/%3/%4").arg(kPath, kind, call.service().mid(1).replace('.', '_'), token);
    }
    static QString requestOf(const QDBusMessage& call, Way way)
    {
        return way == Way::OwnPath ? "/request/own" : handleOf(call, "request", "handle_token");
    }
    void tell(const QString& client, const QString& path, const char* kind, const char* signal,
              const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createTargetedSignal(
            client, path, QString("org.freedesktop.portal.%1").arg(kind), signal);
        message.setArguments(arguments);
        QDBusConnection(m_name).send(message);
    }

    void onRequest(const QDBusMessage& call, const QDBusConnection& connection, Way way)
    {
        connection.send(call.createReply(QVariant::fromValue(QDBusObjectPath(requestOf(call, way)))));
        QVariantMap results;
        if (call.member() == "CreateSession") {
            m_session = handleOf(call, "session", "session_handle_token");
            ++openSessions;
            results.insert("session_handle", m_session);
        } else if (call.member() == "SelectSources") {
            selection = optionsOf(call);
            if (chokesOnTokens && selection.contains("restore_token"))
                way = Way::Ended;
        } else if (call.member() == "Start") {
            const bool asks = goodToken.isEmpty() || selection["restore_token"] != goodToken;
            dialogs += asks ? 1 : 0;
            if (asks && isUserSlow) {
                m_start = call;
                return;
            }
            results = consent();
        }
        if (way != Way::Dies)
            respond(call, way == Way::Refused ? 1 : way == Way::Ended ? 2 : 0, results, way);
    }
    QVariantMap consent()
    {
        const QVariant shown = QVariant::fromValue(streams);
        if (!givesTokens)
            return {{"streams", shown}};
        goodToken = QString("token-%1").arg(++m_tokens);
        return {{"streams", shown}, {"restore_token", goodToken}};
    }
    void respond(const QDBusMessage& call, uint response, const QVariantMap& results, Way way = Way::Well)
    {
        for (int times = way == Way::Twice ? 2 : 1; times > 0; --times)
            tell(call.service(), requestOf(call, way), "Request", "Response",
                 way == Way::Nonsense ? QVariantList{"yes"} : QVariantList{response, results});
    }
    void onClose(const QString& path)
    {
        m_start = QDBusMessage();
        if (path != m_session)
            return;
        --openSessions;
        m_session.clear();
    }
    QVariant remote() const
    {
        QLocalSocket connection;
        connection.connectToServer(socket);
        const int nothing = STDERR_FILENO;
        return QVariant::fromValue(
            QDBusUnixFileDescriptor(socket.isEmpty() ? nothing : int(connection.socketDescriptor())));
    }

    const PrivateBus& m_bus;
    QString m_name;
    QString m_client;
    QString m_session;
    QDBusMessage m_start;
    int m_times = 0;
    int m_tokens = 0;
};
