#include "hotkey/HotkeySession_linux.h"
#include "hotkey/PortalHotkeys_linux.h"
#include "hotkey/RefusingHotkeys.h"
#include "hotkey/X11Hotkeys_x11.h"

#include <QDBusConnection>
#include <QGuiApplication>

bool isWaylandSession(const QProcessEnvironment& environment)
{
    return !environment.value("WAYLAND_DISPLAY").isEmpty() ||
           environment.value("XDG_SESSION_TYPE") == "wayland";
}

QString obstacleToKeyGrabs(const QString& platform, const QProcessEnvironment& environment)
{
    if (isWaylandSession(environment))
        return QStringLiteral("a Wayland desktop does not let programs take keys");
    if (platform != "xcb")
        return QStringLiteral("there is no X server to take keys from");
    return {};
}

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    // The first that can serve this session. Whether the portal can is known later, from its answers.
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString obstacle = obstacleToKeyGrabs(QGuiApplication::platformName(), environment);
    if (obstacle.isEmpty()) {
        if (std::unique_ptr<QHotkeyPrivate> grabs = X11Hotkeys::create())
            return grabs;
        obstacle = QStringLiteral("the X server does not tell of its keyboard");
    }
    if (isWaylandSession(environment) && QDBusConnection::sessionBus().isConnected())
        return std::make_unique<PortalHotkeys>();
    return std::make_unique<RefusingHotkeys>(obstacle);
}
