#include "system/ScreenCheck.h"

void checkScreen(QObject* context, const std::function<void(ScreenWay)>& then)
{
    QMetaObject::invokeMethod(
        context, [then] { then(ScreenWay::Direct); }, Qt::QueuedConnection);
}
