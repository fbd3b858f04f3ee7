#pragma once

#include "viewModels/HotkeyCombine.h"
#include "viewModels/HotkeyTrouble.h"

/// One hotkey action as the shortcut page shows it.
struct HotkeyModel
{
    QString id;
    HotkeyCombine combine;
    HotkeyTrouble trouble = HotkeyTrouble::None; ///< other than None: it does not work at present
    QString desktopKeys = {}; ///< those that work instead of the combination; empty where that does
};
