#include "ui/MainWindow.h"

#include <QScreen>

#include <windows.h>

#include <dwmapi.h>
#include <windowsx.h>

namespace {

constexpr int kShadowMargin = 10;

LRESULT hitOf(WindowRegion region)
{
    switch (region) {
    case WindowRegion::Caption:
        return HTCAPTION;
    case WindowRegion::Left:
        return HTLEFT;
    case WindowRegion::Right:
        return HTRIGHT;
    case WindowRegion::Top:
        return HTTOP;
    case WindowRegion::Bottom:
        return HTBOTTOM;
    case WindowRegion::TopLeft:
        return HTTOPLEFT;
    case WindowRegion::TopRight:
        return HTTOPRIGHT;
    case WindowRegion::BottomLeft:
        return HTBOTTOMLEFT;
    case WindowRegion::BottomRight:
        return HTBOTTOMRIGHT;
    case WindowRegion::None:
        break;
    }
    return HTNOWHERE;
}

} // namespace

std::unique_ptr<QObject> MainWindow::makeFrame()
{
    // Gives the window without a border the shadow of the system.
    const MARGINS margins{kShadowMargin, kShadowMargin, kShadowMargin, kShadowMargin};
    DwmExtendFrameIntoClientArea(reinterpret_cast<HWND>(winId()), &margins);
    return nullptr;
}

bool MainWindow::canMinimise()
{
    return true;
}

bool MainWindow::canBeRaised()
{
    return true;
}

bool MainWindow::nativeEvent(const QByteArray& eventType, void* message, long* result)
{
    const MSG* msg = static_cast<MSG*>(message);
    if (msg->message == WM_NCCALCSIZE && msg->wParam == 1) {
        *result = 0; // the system's frame takes no room
        return true;
    }
    // Not winId(), which would make the window from within its own making.
    if (msg->message == WM_NCHITTEST && msg->hwnd == reinterpret_cast<HWND>(internalWinId())) {
        const QPoint physical(GET_X_LPARAM(msg->lParam), GET_Y_LPARAM(msg->lParam));
        const QPoint global =
            logicalPosition(physical, screen()->geometry().topLeft(), screen()->devicePixelRatio());
        const WindowRegion region = regionAt(mapFromGlobal(global));
        if (region == WindowRegion::None)
            return false;
        *result = static_cast<long>(hitOf(region));
        return true;
    }
    return QWidget::nativeEvent(eventType, message, result);
}
