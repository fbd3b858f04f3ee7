#include "ui/BaseDialog.h"

// The header is dragged by mouse events here.
bool BaseDialog::nativeEventFilter(const QByteArray&, void*, long*)
{
    return false;
}
