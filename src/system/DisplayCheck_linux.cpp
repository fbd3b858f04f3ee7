#include "system/DisplayCheck.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>
#include <QWindow>
#include <memory>
#include <xcb/xcb.h>

namespace {

constexpr char kPlatformVariable[] = "QT_QPA_PLATFORM";
constexpr char kOpenGlVariable[] = "QT_XCB_GL_INTEGRATION";
constexpr int kPatienceMs = 5000;

void (*actionAtBreak)() = nullptr;
QtMessageHandler handlerBefore = nullptr;

/// The toolkit's last words are all that tells of the end, on whichever thread reads from the desktop.
void hearLastWords(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    handlerBefore(type, context, text);
    if (type != QtWarningMsg || !text.startsWith(QLatin1String("The Wayland connection ")))
        return;
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || app->thread() == QThread::currentThread())
        return actionAtBreak();
    const auto done = std::make_shared<QSemaphore>();
    const auto act = [done] {
        actionAtBreak();
        done->release();
    };
    QMetaObject::invokeMethod(app, act, Qt::QueuedConnection);
    done->tryAcquire(1, kPatienceMs); // a main thread that hangs does not keep the process
}

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
    const bool hasWayland =
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    qputenv(kPlatformVariable, QByteArray(hasWayland ? "wayland;offscreen" : "offscreen"));
    return true;
}

void forgetChosenPlatform()
{
    qunsetenv(kPlatformVariable);
}

void callWhenDisplayBreaks(void (*action)())
{
    actionAtBreak = action;
    handlerBefore = qInstallMessageHandler(nullptr); // known before another thread may speak
    qInstallMessageHandler(hearLastWords);
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
