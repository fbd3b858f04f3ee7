#include "hotkey/HotkeySession_x11.h"
#include "hotkey/RefusingHotkeys.h"
#include "hotkey/X11Hotkeys_x11.h"

#include <QGuiApplication>

QString obstacleToKeyGrabs(const QString& platform, const QProcessEnvironment& environment)
{
    if (!environment.value("WAYLAND_DISPLAY").isEmpty() || environment.value("XDG_SESSION_TYPE") == "wayland")
        return QStringLiteral("a Wayland desktop does not let programs take keys");
    if (platform != "xcb")
        return QStringLiteral("there is no X server to take keys from");
    return {};
}

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    // The first that can serve this session. The desktop's portal for shortcuts belongs before the refusal.
    QString obstacle =
        obstacleToKeyGrabs(QGuiApplication::platformName(), QProcessEnvironment::systemEnvironment());
    if (obstacle.isEmpty()) {
        if (std::unique_ptr<QHotkeyPrivate> grabs = X11Hotkeys::create())
            return grabs;
        obstacle = QStringLiteral("the X server does not tell of its keyboard");
    }
    return std::make_unique<RefusingHotkeys>(obstacle);
}
