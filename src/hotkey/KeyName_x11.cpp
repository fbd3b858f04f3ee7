#include "hotkey/KeyName.h"

#include <QKeyEvent>

QString hotkeyKeyName(const QKeyEvent& event)
{
    return parseableKeyName({}, event.key() | static_cast<int>(event.modifiers() & Qt::KeypadModifier));
}
