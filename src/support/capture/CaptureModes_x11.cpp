#include "support/capture/CaptureModes.h"

#include "support/capture/ThreadedCaptureBackend.h"
#include "support/capture/X11Grabber.h"

namespace {
std::unique_ptr<CaptureBackend> createX11()
{
    const QByteArray display = qgetenv("DISPLAY");
    if (display.isEmpty())
        return nullptr;
    return std::make_unique<ThreadedCaptureBackend>(std::make_shared<X11Grabber>(display));
}
} // namespace

QList<CaptureMode> captureModes()
{
    return {
        {QStringLiteral("X11"), createX11},
    };
}
