#include "hotkey/KeyName.h"

#include <QKeyEvent>
#include <qt_windows.h>

QString hotkeyKeyName(const QKeyEvent& event)
{
    wchar_t name[16] = {};
    const quint32 scanCode = event.nativeScanCode(); // with the bit of the extended keys in its place
    const int length = GetKeyNameTextW(static_cast<LONG>(scanCode << 16), name, 16);
    const QString text = length > 0 ? QString::fromWCharArray(name, length)
                                    : QStringLiteral("0x") + QString::number(scanCode, 16);
    return parseableKeyName(text, event.key() | static_cast<int>(event.modifiers() & Qt::KeypadModifier));
}
