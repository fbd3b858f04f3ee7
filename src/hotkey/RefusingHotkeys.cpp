#include "hotkey/RefusingHotkeys.h"

RefusingHotkeys::RefusingHotkeys(QString reason)
{
    error = std::move(reason);
    trouble = HotkeyTrouble::NotAllowed;
    qCWarning(logHotkey).noquote() << "No shortcut can be taken:" << error;
}

// Every combination counts as one that could be had elsewhere, so that the refusal is that of the desktop.
quint32 RefusingHotkeys::nativeKeycode(Qt::Key keycode, bool& ok)
{
    ok = true;
    return static_cast<quint32>(keycode);
}

quint32 RefusingHotkeys::nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok)
{
    ok = true;
    return static_cast<quint32>(modifiers);
}

bool RefusingHotkeys::registerShortcut(QHotkey::NativeShortcut)
{
    return false;
}

bool RefusingHotkeys::unregisterShortcut(QHotkey::NativeShortcut)
{
    return false;
}

bool RefusingHotkeys::nativeEventFilter(const QByteArray&, void*, long*)
{
    return false;
}
