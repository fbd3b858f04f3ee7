#pragma once

#include <QtGlobal>

#include <qnamespace.h>

/// The numbers by which Windows knows keys and shortcuts. Plain functions, the same on every system.
namespace WindowsKeys {

/// VkKeyScanW: the virtual key of a character in the low byte; -1 where the keyboard layout has none.
using KeyOfCharacter = short (*)(ushort character);

/// The virtual key code of a Qt::Key, which may carry Qt::KeypadModifier. `ok` is false where there is none.
quint32 virtualKey(int key, KeyOfCharacter keyOfCharacter, bool& ok);

/// The MOD_ values; modifiers that Windows does not tell apart are left out.
quint32 modifiers(Qt::KeyboardModifiers modifiers);

/// The number under which a shortcut is registered, from the range for applications. Different for all
/// virtual keys, which fit into a byte.
int shortcutId(quint32 key, quint32 modifier);

} // namespace WindowsKeys
