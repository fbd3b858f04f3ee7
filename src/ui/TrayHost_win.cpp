#include "ui/TrayHost.h"

// The task bar always has one; the toolkit adds the icon again when it was restarted.
std::unique_ptr<QObject> TrayHost::makeWatch()
{
    setAvailable(true);
    return nullptr;
}
