#include "support/capture/CaptureModes.h"

#include "support/capture/X11Grabber.h"

namespace {
std::shared_ptr<ScreenGrabber> createX11()
{
    const QByteArray display = qgetenv("DISPLAY");
    return display.isEmpty() ? nullptr : std::make_shared<X11Grabber>(display);
}
} // namespace

QList<CaptureMode> captureModes()
{
    return {createX11};
}
