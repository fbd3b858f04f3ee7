#include "system/Logind_linux.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDebug>

namespace {

const QString kService = QStringLiteral("org.freedesktop.login1");
const QString kManagerPath = QStringLiteral("/org/freedesktop/login1");
const QString kManager = QStringLiteral("org.freedesktop.login1.Manager");
const QString kSession = QStringLiteral("org.freedesktop.login1.Session");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kLockedHint = QStringLiteral("LockedHint");
/// Stands still while the machine sleeps, as every steady clock does.
constexpr int kStillAsleepMs = 2000;

bool isReply(const QDBusMessage& message)
{
    return message.type() == QDBusMessage::ReplyMessage && !message.arguments().isEmpty();
}

} // namespace

Logind::Logind(const QDBusConnection& bus, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
{
    auto* watcher = new QDBusServiceWatcher(kService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& before, const QString& now) {
                if (!before.isEmpty())
                    onGone();
                if (!now.isEmpty())
                    onThere();
            });
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(onGone()));
    m_bus.connect(kService, kManagerPath, kManager, QStringLiteral("PrepareForSleep"), this,
                  SLOT(onPrepareForSleep(bool)));
    m_bus.connect(kService, kManagerPath, kManager, QStringLiteral("PrepareForShutdown"), this,
                  SLOT(onPrepareForShutdown(bool)));
    m_stillAsleep.setInterval(kStillAsleepMs);
    connect(&m_stillAsleep, &QTimer::timeout, this, &Logind::askWhetherStillAsleep);
    onThere();
}

void Logind::release()
{
    m_inhibitor = QDBusUnixFileDescriptor();
}

void Logind::onThere()
{
    takeInhibitor();
    findSession();
}

void Logind::onGone()
{
    // Nobody would tell of the end of either.
    release();
    setLocked(false);
    wake();
}

void Logind::takeInhibitor()
{
    const QVariantList arguments{QStringLiteral("sleep:shutdown"), QCoreApplication::applicationName(),
                                 QStringLiteral("Switching the lights off"), QStringLiteral("delay")};
    callManager(QStringLiteral("Inhibit"), arguments, [this](const QDBusMessage& reply) {
        if (!isReply(reply))
            qInfo().noquote() << "[SessionWatch]: Sleep will not wait for the lights:"
                              << reply.errorMessage();
        else if (!m_isAsleep) // else it comes too late for this one, and there is another for the next
            m_inhibitor = reply.arguments().constFirst().value<QDBusUnixFileDescriptor>();
    });
}

void Logind::onPrepareForSleep(bool begins)
{
    if (!begins)
        return wake();
    if (m_isAsleep)
        return;
    m_isAsleep = true;
    ++m_sleeps;
    m_stillAsleep.start();
    emit aboutToSleep();
}

void Logind::askWhetherStillAsleep()
{
    askProperty(kManagerPath, kManager, QStringLiteral("PreparingForSleep"),
                [this, asked = m_sleeps](const QVariant& isAsleep) {
                    if (isAsleep != false || asked != m_sleeps || !m_isAsleep)
                        return;
                    qInfo() << "[SessionWatch]: The sleep has ended without a word";
                    wake();
                });
}

void Logind::wake()
{
    if (!m_isAsleep)
        return;
    m_isAsleep = false;
    m_stillAsleep.stop();
    takeInhibitor();
    if (!m_session.isEmpty())
        askLocked(); // it may have been unlocked unheard
    emit resumed();
}

void Logind::onPrepareForShutdown(bool begins)
{
    if (begins)
        emit aboutToShutDown();
}

/// The caller's session, or where it runs outside of one, as desktops start programs, the user's on the seat.
void Logind::findSession()
{
    const auto byPid = [this] {
        callManager(QStringLiteral("GetSessionByPID"),
                    {static_cast<uint>(QCoreApplication::applicationPid())},
                    [this](const QDBusMessage& reply) {
                        if (isReply(reply))
                            watchSession(reply.arguments().constFirst().value<QDBusObjectPath>().path());
                    });
    };
    callManager(QStringLiteral("GetSession"), {QStringLiteral("auto")},
                [this, byPid](const QDBusMessage& reply) {
                    if (!isReply(reply))
                        return byPid(); // an older manager does not know that word
                    watchSession(reply.arguments().constFirst().value<QDBusObjectPath>().path());
                });
}

void Logind::watchSession(const QString& path)
{
    m_session = path; // connecting a second time changes nothing
    m_bus.connect(kService, path, kProperties, QStringLiteral("PropertiesChanged"), this,
                  SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    // Both are wishes, which a desktop without a locker, or one that keeps its state to itself, does not
    // follow with the other: what they have come to is asked for.
    for (const char* wish : {"Lock", "Unlock"})
        m_bus.connect(kService, path, kSession, QLatin1String(wish), this, SLOT(askLocked()));
    askLocked();
}

void Logind::askLocked()
{
    askProperty(m_session, kSession, kLockedHint,
                [this](const QVariant& locked) { setLocked(locked.toBool()); });
}

void Logind::onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                 const QStringList& invalid)
{
    if (interface != kSession)
        return;
    if (changed.contains(kLockedHint))
        setLocked(changed.value(kLockedHint).toBool());
    else if (invalid.contains(kLockedHint))
        askLocked();
}

void Logind::setLocked(bool locked)
{
    if (std::exchange(m_isLocked, locked) != locked)
        emit lockedChanged();
}

void Logind::callManager(const QString& method, const QVariantList& arguments, const Reply& then)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, kManagerPath, kManager, method);
    message.setArguments(arguments);
    call(message, then);
}

/// Without an answer nothing is called.
void Logind::askProperty(const QString& path, const QString& interface, const QString& name,
                         const std::function<void(const QVariant&)>& then)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, path, kProperties, QStringLiteral("Get"));
    message.setArguments({interface, name});
    call(message, [then](const QDBusMessage& reply) {
        if (isReply(reply))
            then(reply.arguments().constFirst().value<QDBusVariant>().variant());
    });
}

void Logind::call(QDBusMessage message, const Reply& then)
{
    message.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, then] {
        watcher->deleteLater();
        then(watcher->reply());
    });
}
