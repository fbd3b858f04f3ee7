#include "ui/BaseDialog.h"

#include <windows.h>
#include <windowsx.h>

// Answers for every window of the process while a dialog exists; the dialogs are modal, so nobody minds.
bool BaseDialog::nativeEventFilter(const QByteArray&, void* message, long* result)
{
    const MSG* msg = static_cast<MSG*>(message);
    if (msg->message == WM_NCCALCSIZE && msg->wParam == 1) {
        *result = 0;
        return true;
    }
    if (msg->message != WM_NCHITTEST)
        return false;

    RECT window;
    GetWindowRect(msg->hwnd, &window);
    const QPoint offset(GET_X_LPARAM(msg->lParam) - window.left, GET_Y_LPARAM(msg->lParam) - window.top);
    const double scale = GetDpiForWindow(reinterpret_cast<HWND>(winId())) / 96.0;
    if (!isCaption(offset, window.right - window.left, headerSize() * scale, layoutDirection()))
        return false;
    *result = HTCAPTION;
    return true;
}
