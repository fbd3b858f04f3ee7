#pragma once

#include "hotkey/KeyGrab_x11.h"
#include "hotkey/QHotkeyPrivate.h"

#include <QTimer>
#include <vector>

/// Takes keys by grabs on the root window, through the toolkit's own connection. A native shortcut is the
/// plain symbol of the key (KeySymbols_x11.h) and the modifier bits of X11: the keys that bear the symbol are
/// looked up when grabbing, and again when the keyboard or the layout in use has changed. Where no key bears
/// it any more the last one stays; where none ever did, the place of the symbol on a US keyboard counts.
class X11Hotkeys : public QHotkeyPrivate
{
public:
    /// Null where the server has no keyboard extension.
    static std::unique_ptr<X11Hotkeys> create();

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override;
    quint32 nativeKeypadKeycode(Qt::Key keycode, bool& ok) override;
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override;
    bool registerShortcut(QHotkey::NativeShortcut shortcut) override;
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

private:
    using KeyCode = KeyboardMap::KeyCode;
    struct Taken
    {
        QHotkey::NativeShortcut shortcut;
        KeyGrab grab;
    };
    struct Held
    {
        KeyCode key = 0;
        QHotkey::NativeShortcut shortcut;
        bool isReleased = false; ///< as far as the last event of the key tells: it may be repeating
        quint32 releaseTime = 0; ///< of the server's clock, in ms
    };

    X11Hotkeys(KeyboardMap map, quint8 keyboardEvent);

    void setMap(KeyboardMap map);
    KeyboardMap::Keys placeOf(xkb_keysym_t symbol) const;
    bool take(const QHotkey::NativeShortcut& shortcut, const KeyGrab& grab);
    void renew();

    bool onPress(KeyCode key, quint16 state, quint32 time);
    bool onRelease(KeyCode key, quint32 time);
    void onKeyboardEvent(const quint8* event);
    void endReleased();
    std::vector<Held>::iterator held(KeyCode key);

    const quint8 m_keyboardEvent; ///< code of the keyboard extension's events
    KeyboardMap m_map;
    quint16 m_locks = 0;
    std::vector<Taken> m_taken; ///< in the order of registration
    std::vector<Held> m_held;   ///< until the key is up, even where the shortcut is given up before
    QTimer m_releaseTimer;
    QTimer m_renewalTimer;
};
