#include "system/DisplayCheck.h"

#include <QByteArray>
#include <QWindow>
#include <xcb/xcb.h>

namespace {

constexpr char kPlatformVariable[] = "QT_QPA_PLATFORM";
constexpr char kOpenGlVariable[] = "QT_XCB_GL_INTEGRATION";

} // namespace

bool isDisplayReachable()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable;
}

bool choosePlatformWithoutDisplay()
{
    if (qEnvironmentVariableIsSet(kPlatformVariable) || isDisplayReachable())
        return false;
    const bool hasWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    qputenv(kPlatformVariable, QByteArray(hasWayland ? "wayland;offscreen" : "offscreen"));
    return true;
}

void forgetChosenPlatform()
{
    qunsetenv(kPlatformVariable);
}

bool chooseNoOpenGl()
{
    return !qEnvironmentVariableIsSet(kOpenGlVariable) && qputenv(kOpenGlVariable, "none");
}

void forgetNoOpenGl()
{
    // The toolkit reads the choice with the first window that could be drawn with it.
    QWindow window;
    window.setSurfaceType(QSurface::RasterGLSurface);
    window.create();
    qunsetenv(kOpenGlVariable);
}
