#pragma once

#include <QString>
#include <xkbcommon/xkbcommon.h>

/// The one symbol that stands for all which mean the same key: upper and lower case, the keypad with and
/// without Num lock, an accent that waits for its letter and the accent itself.
xkb_keysym_t plainSymbol(xkb_keysym_t symbol);

/// The plain symbol of a Qt::Key, which may carry Qt::KeypadModifier; XKB_KEY_NoSymbol where X11 has none.
xkb_keysym_t symbolOfKey(int key);

/// The Qt::Key of a plain symbol, with Qt::KeypadModifier where only that tells it apart; Qt::Key_unknown
/// where the toolkit has none.
int keyOfSymbol(xkb_keysym_t plain);

/// The text from which the toolkit and symbolOfKey() find the plain symbol again; empty where there is none.
QString keyNameOfSymbol(xkb_keysym_t plain);
