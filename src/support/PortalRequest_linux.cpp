#include "support/PortalRequest_linux.h"

#include "support/Portal_linux.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDebug>
#include <limits>

namespace {
constexpr int kNoBusTimeout = std::numeric_limits<int>::max(); ///< ours counts
}

PortalRequest::PortalRequest(const QString& interface, const QString& method, const QVariantList& arguments,
                             const QVariantMap& options, Patience patience, QObject* parent)
    : QObject(parent)
    , m_method(interface.section(QLatin1Char('.'), -1) + QLatin1Char('.') + method)
    , m_isForUser(patience.forUser)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        Portal::close(Portal::kRequest, m_handle); // what comes too late is not to be carried out
        finish(Outcome::Gone, QStringLiteral("no answer in time"));
    });
    m_patience.start(patience.answerMs);

    auto* watcher =
        new QDBusServiceWatcher(Portal::kService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner) {
                if (!oldOwner.isEmpty())
                    finish(Outcome::Gone, QStringLiteral("the portal is gone"));
            });
    Portal::introduce();

    const QString token = Portal::newToken();
    m_handle = Portal::handleOf(QStringLiteral("request"), token);
    // From whatever path, because portals of old choose their own.
    bus.connect({}, {}, Portal::kRequest, QStringLiteral("Response"), this, SLOT(onResponse(QDBusMessage)));
    QVariantMap named = options;
    named.insert(QStringLiteral("handle_token"), token);
    QDBusMessage message = Portal::call(interface, method);
    message.setArguments(arguments + QVariantList{named});
    auto* reply = new QDBusPendingCallWatcher(bus.asyncCall(message, kNoBusTimeout), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, &PortalRequest::onReply);
}

PortalRequest::~PortalRequest()
{
    if (!m_isOver)
        Portal::close(Portal::kRequest, m_handle);
}

PortalRequest::Outcome PortalRequest::outcomeOf(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoReply: // also of the bus, when the one who was called goes
        return Outcome::Gone;
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownProperty:
    case QDBusError::NoServer:
    case QDBusError::Disconnected:
        return Outcome::Missing;
    default:
        return error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn")) ? Outcome::Missing
                                                                                          : Outcome::Failed;
    }
}

void PortalRequest::onReply(QDBusPendingCallWatcher* reply)
{
    const QDBusPendingReply<QDBusObjectPath> handle = *reply;
    reply->deleteLater();
    if (handle.isError()) {
        finish(outcomeOf(handle.error()), handle.error().message());
        return;
    }
    if (m_isForUser)
        m_patience.stop();
    m_handle = handle.value().path();
}

void PortalRequest::onResponse(const QDBusMessage& message)
{
    constexpr uint kGranted = 0;
    constexpr uint kRefused = 1;
    // Only the portal knows the path, so that whoever sends from there counts.
    if (message.path() != m_handle)
        return;
    const QVariantList arguments = message.arguments();
    if (message.signature() != QLatin1String("ua{sv}"))
        finish(Outcome::Failed, QStringLiteral("a response of no sense"));
    else if (const uint response = arguments.at(0).toUInt(); response == kGranted)
        finish(Outcome::Granted, {}, qdbus_cast<QVariantMap>(arguments.at(1)));
    else if (response == kRefused)
        finish(Outcome::Refused, QStringLiteral("refused"));
    else
        finish(Outcome::Failed, QStringLiteral("ended by the portal"));
}

void PortalRequest::finish(Outcome outcome, const QString& reason, const QVariantMap& results)
{
    if (m_isOver)
        return;
    m_patience.stop();
    if (!reason.isEmpty())
        qWarning().noquote() << "[Portal]:" << m_method << "did not succeed:" << reason;
    m_isOver = true;
    emit finished(outcome, results);
}
