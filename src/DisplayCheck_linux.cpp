#include "DisplayCheck.h"

#include <QByteArray>
#include <xcb/xcb.h>

namespace {

constexpr char kPlatformVariable[] = "QT_QPA_PLATFORM";

bool isXServerReachable()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable;
}

} // namespace

bool choosePlatformWithoutDisplay()
{
    if (qEnvironmentVariableIsSet(kPlatformVariable) || isXServerReachable())
        return false;
    const bool hasWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    qputenv(kPlatformVariable, QByteArray(hasWayland ? "wayland;offscreen" : "offscreen"));
    return true;
}

void forgetChosenPlatform()
{
    qunsetenv(kPlatformVariable);
}
