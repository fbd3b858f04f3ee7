#pragma once

#include "hotkey/QHotkeyPrivate.h"

/// Stands in where the desktop does not let programs take keys: refuses every shortcut, and says why.
class RefusingHotkeys : public QHotkeyPrivate
{
public:
    /// `reason` goes to the log.
    explicit RefusingHotkeys(QString reason);

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override;
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override;
    bool registerShortcut(QHotkey::NativeShortcut shortcut) override;
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;
};
