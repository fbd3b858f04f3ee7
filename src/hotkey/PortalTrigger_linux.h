#pragma once

#include "hotkey/QHotkey.h"

/// The shortcut in the portal's spelling, such as "CTRL+ALT+SHIFT+F10". Its key is a plain symbol
/// (KeySymbols_x11.h), its modifiers are Qt's.
QString portalTrigger(const QHotkey::NativeShortcut& shortcut);

/// Whether the desktop's words for the keys that it has given ("Press <Control><Alt>F10", "Ctrl+Alt+F10")
/// mean those of the shortcut. Words that are not understood count as others.
bool meansSameKeys(const QString& description, const QHotkey::NativeShortcut& shortcut);
