#include "support/Portal_linux.h"
#include "support/ThreadStart.h"
#include "system/DisplayCheck.h"
#include "system/ScreenCheck.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

namespace {

constexpr int kPatienceMs = 5000;

bool isWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

/// Without one the bus library might start a bus.
bool hasBus()
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           (!folder.isEmpty() && QFile::exists(folder + QStringLiteral("/bus")));
}

ScreenWay wayOf(const QDBusPendingReply<QDBusVariant>& version)
{
    if (!version.isError())
        return ScreenWay::Portal;
    const QDBusError::ErrorType error = version.error().type();
    const bool isSlow = error == QDBusError::NoReply || error == QDBusError::TimedOut;
    return isSlow || error == QDBusError::Timeout ? ScreenWay::PortalSilent : ScreenWay::NoPortal;
}

/// On a thread of its own: a server that takes the connection and says no more holds up who asks.
void checkDisplay(QObject* context, const std::function<void(ScreenWay)>& then)
{
    const auto isReachable = std::make_shared<std::atomic<bool>>(false);
    QThread* thread = QThread::create([isReachable] { *isReachable = isDisplayReachable(); });
    auto* patience = new QTimer(context);
    QObject::connect(patience, &QTimer::timeout, context, [patience, isReachable, then] {
        patience->disconnect();
        patience->deleteLater();
        then(*isReachable ? ScreenWay::Direct : ScreenWay::NoDisplay);
    });
    QObject::connect(thread, &QThread::finished, patience, [patience] { patience->start(0); });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    patience->setSingleShot(true);
    patience->start(kPatienceMs);
    if (!startThread(*thread)) {
        delete thread;
        *isReachable = true; // nothing speaks against it
        patience->start(0);
    }
}

} // namespace

void checkScreen(QObject* context, const std::function<void(ScreenWay)>& then)
{
    if (!isWayland())
        return checkDisplay(context, then);
    if (!hasBus()) {
        QMetaObject::invokeMethod(
            context, [then] { then(ScreenWay::NoPortal); }, Qt::QueuedConnection);
        return;
    }
    QDBusMessage question =
        Portal::call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.freedesktop.portal.ScreenCast") << QStringLiteral("version");
    auto* reply =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question, kPatienceMs), context);
    QObject::connect(reply, &QDBusPendingCallWatcher::finished, context, [reply, then] {
        reply->deleteLater();
        then(wayOf(*reply));
    });
}
