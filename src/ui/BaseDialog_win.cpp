#include "ui/BaseDialog.h"

#include <windows.h>
#include <windowsx.h>

// Hears the messages of all windows of the process and answers for its own.
bool BaseDialog::nativeEventFilter(const QByteArray&, void* message, long* result)
{
    const MSG* msg = static_cast<MSG*>(message);
    // Not winId(), which would make the window from within its own making. What was posted wants no result.
    if (result == nullptr || msg->hwnd != reinterpret_cast<HWND>(internalWinId()))
        return false;
    if (msg->message == WM_NCCALCSIZE && msg->wParam == 1) {
        *result = 0;
        return true;
    }
    if (msg->message != WM_NCHITTEST)
        return false;

    RECT window;
    GetWindowRect(msg->hwnd, &window);
    const QPoint offset(GET_X_LPARAM(msg->lParam) - window.left, GET_Y_LPARAM(msg->lParam) - window.top);
    const double scale = GetDpiForWindow(msg->hwnd) / 96.0;
    if (!isCaption(offset, window.right - window.left, headerSize() * scale, layoutDirection()))
        return false;
    *result = HTCAPTION;
    return true;
}
