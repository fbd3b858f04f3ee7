#include "support/capture/CaptureModes.h"

#include "support/capture/DxgiGrabber.h"

QList<CaptureMode> captureModes()
{
    return {{QStringLiteral("dxgi"), [] { return std::make_shared<DxgiGrabber>(); }, true,
             QT_TRANSLATE_NOOP("CaptureMode", "直接读取系统的桌面画面。")}};
}
