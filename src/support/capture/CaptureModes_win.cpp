#include "support/capture/CaptureModes.h"

#include "support/capture/DxgiGrabber.h"

QList<CaptureMode> captureModes()
{
    return {[] { return std::make_shared<DxgiGrabber>(); }};
}
