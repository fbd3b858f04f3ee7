#include "support/capture/CaptureModes.h"

#include "support/capture/CaptureBackend.h"

QList<CaptureMode> captureModes()
{
    return {};
}
