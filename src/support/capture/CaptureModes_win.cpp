#include "support/capture/CaptureModes.h"

#include "support/capture/DxgiGrabber.h"
#include "support/capture/ThreadedCaptureBackend.h"

QList<CaptureMode> captureModes()
{
    return {
        {QStringLiteral("Desktop duplication"),
         [] { return std::make_unique<ThreadedCaptureBackend>(std::make_shared<DxgiGrabber>()); }},
    };
}
