#pragma once

#include <QString>

class QKeyEvent;

/// The text by which the pressed key can be made a hotkey: the key's own symbol in the present layout,
/// whatever modifiers are held ("2", "Ö", "NUM+4", "PGUP"). QKeySequence parses it back to that key. Empty
/// where no hotkey can be made of the key, such as a modifier or a lock. On the GUI thread.
QString hotkeyKeyName(const QKeyEvent& event);

/// The rule behind it: the system's name in capitals where that parses back, else the toolkit's own text for
/// `key`, a Qt::Key which may carry Qt::KeypadModifier; empty where neither does. A name of one character
/// is the key's own symbol and counts even where `key` is what the modifiers have made of it.
QString parseableKeyName(const QString& systemName, int key);
