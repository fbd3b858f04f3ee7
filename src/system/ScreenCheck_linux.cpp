#include "support/Portal_linux.h"
#include "system/DisplayCheck.h"
#include "system/ScreenCheck.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>

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

} // namespace

void checkScreen(QObject* context, const std::function<void(ScreenWay)>& then)
{
    if (!isWayland() || !hasBus()) {
        const ScreenWay other = isDisplayReachable() ? ScreenWay::Direct : ScreenWay::NoDisplay;
        const ScreenWay way = isWayland() ? ScreenWay::NoPortal : other;
        QMetaObject::invokeMethod(
            context, [then, way] { then(way); }, Qt::QueuedConnection);
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
