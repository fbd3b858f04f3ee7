#include "ui/MainWindow.h"

#include <QScreen>
#include <QWindow>
#include <utility>

#include <windows.h>

#include <dwmapi.h>
#include <shellapi.h>
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

QRect toRect(const RECT& rect)
{
    return QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

/// Where the task bar hides on this monitor.
Qt::Edges hiddenBars(const RECT& monitor)
{
    constexpr std::pair<UINT, Qt::Edge> kEdges[] = {{ABE_LEFT, Qt::LeftEdge},
                                                    {ABE_TOP, Qt::TopEdge},
                                                    {ABE_RIGHT, Qt::RightEdge},
                                                    {ABE_BOTTOM, Qt::BottomEdge}};
    Qt::Edges hidden;
    for (const auto& [edge, qtEdge] : kEdges) {
        APPBARDATA bar = {};
        bar.cbSize = sizeof bar;
        bar.uEdge = edge;
        bar.rc = monitor;
        if (SHAppBarMessage(ABM_GETAUTOHIDEBAREX, &bar) != 0)
            hidden |= qtEdge;
    }
    return hidden;
}

/// The system lets a maximised window's frame, which is ours to draw on, jut out over the screen.
void keepOnScreen(RECT& client)
{
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromRect(&client, MONITOR_DEFAULTTONEAREST), &monitor))
        return;
    const QRect shown =
        maximisedClient(toRect(client), toRect(monitor.rcWork), hiddenBars(monitor.rcMonitor));
    client = {shown.left(), shown.top(), shown.left() + shown.width(), shown.top() + shown.height()};
}

/// Gives the window without a border what the system asks of one that it maximises, snaps to the edges of the
/// screen, minimises from the task bar and puts a shadow around.
class WindowFrame : public QObject
{
public:
    explicit WindowFrame(MainWindow& window)
        : m_handle(reinterpret_cast<HWND>(window.winId()))
    {
        constexpr LONG_PTR kStyle = WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
        SetWindowLongPtrW(m_handle, GWL_STYLE, GetWindowLongPtrW(m_handle, GWL_STYLE) | kStyle);
        const MARGINS margins{kShadowMargin, kShadowMargin, kShadowMargin, kShadowMargin};
        DwmExtendFrameIntoClientArea(m_handle, &margins);
        // On another screen the toolkit reckons with the room that such a frame takes elsewhere.
        connect(window.windowHandle(), &QWindow::screenChanged, this, [this] { measureAgain(); });
        measureAgain();
    }

private:
    void measureAgain()
    {
        SetWindowPos(m_handle, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOOWNERZORDER |
                         SWP_NOACTIVATE);
    }

    const HWND m_handle;
};

} // namespace

std::unique_ptr<QObject> MainWindow::makeFrame()
{
    return std::make_unique<WindowFrame>(*this);
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
        if (IsZoomed(msg->hwnd))
            keepOnScreen(reinterpret_cast<NCCALCSIZE_PARAMS*>(msg->lParam)->rgrc[0]);
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
