#include "support/capture/CaptureModes.h"

#include "support/capture/PipeWireGrabber_linux.h"
#include "support/capture/ScreenCastSession_linux.h"
#include "support/capture/X11Grabber.h"

namespace {

std::shared_ptr<ScreenGrabber> createX11()
{
    const QByteArray display = qgetenv("DISPLAY");
    return display.isEmpty() ? nullptr : std::make_shared<X11Grabber>(display);
}

std::shared_ptr<ScreenGrabber> createPortal()
{
    const auto feed = std::make_shared<ScreenCastFeed>();
    return std::make_shared<PipeWireGrabber>(feed, std::make_unique<ScreenCastSession>(feed));
}

/// There an X server shows the windows of the programs that speak to it, and nothing of the others.
bool isWayland()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

} // namespace

QList<CaptureMode> captureModes()
{
    const bool wayland = isWayland();
    return {{QStringLiteral("x11"), createX11, !wayland,
             QT_TRANSLATE_NOOP("CaptureMode", "直接读取 X11 桌面。在 Wayland 会话中只能看到部分程序。")},
            {QStringLiteral("portal"), createPortal, wayland,
             QT_TRANSLATE_NOOP("CaptureMode", "由桌面转交画面，首次使用时会征求您的同意。"),
             QStringLiteral("portal:")}};
}
