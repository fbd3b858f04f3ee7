#include "hotkey/RefusingHotkeys.h"

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    return std::make_unique<RefusingHotkeys>(QStringLiteral("this system has no keys to take"));
}
