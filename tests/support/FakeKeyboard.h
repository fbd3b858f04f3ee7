#pragma once

#include "hotkey/QHotkeyPrivate.h"

#include <QSet>

/// The desktop's keyboard, which outlives the application. Another program may hold keys of it; Help cannot
/// be mapped, and Backtab is the key of Tab. Keys are told without the modifiers, which are always kHeld. To
/// be included once in a program: it is the platform there.
class FakeKeyboard : public QHotkeyPrivate
{
public:
    using Shortcut = QHotkey::NativeShortcut;
    static constexpr int kHeld = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;

    FakeKeyboard() { s_current = this; }
    ~FakeKeyboard() override { s_current = nullptr; }

    static Shortcut shortcut(int key) { return {quint32(key), quint32(kHeld)}; }
    static void set(const QSet<int>& taken, const QSet<int>& missing = {}, bool isAllowed = true)
    {
        std::tie(s_taken, s_missing, s_isAllowed) = std::tie(taken, missing, isAllowed);
    }
    static bool holds(int key) { return s_ours.contains(shortcut(key)); }
    void press(int key) { activateShortcut(shortcut(key)); }
    void release(int key) { releaseShortcut(shortcut(key)); }
    /// To another program.
    void lose(int key)
    {
        trouble = HotkeyTrouble::Taken;
        s_ours.remove(shortcut(key));
        loseShortcut(shortcut(key));
    }

    void give(int key, const QString& keys, HotkeyTrouble why) { setDesktopKeys(shortcut(key), keys, why); }
    void allowQuestions() override { ++questionsAllowed; }

    int questionsAllowed = 0;
    static inline FakeKeyboard* s_current = nullptr;
    static inline QSet<Shortcut> s_ours; ///< registered

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override
    {
        ok = keycode != Qt::Key_Help;
        return keycode == Qt::Key_Backtab ? Qt::Key_Tab : keycode;
    }
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override
    {
        ok = true;
        return modifiers;
    }
    bool registerShortcut(Shortcut shortcut) override
    {
        error = QStringLiteral("somebody has it");
        trouble = s_missing.contains(int(shortcut.key)) ? HotkeyTrouble::NoSuchKey
                  : s_isAllowed                         ? HotkeyTrouble::Taken
                                                        : HotkeyTrouble::NotAllowed;
        if (trouble != HotkeyTrouble::Taken || s_taken.contains(int(shortcut.key)) ||
            s_ours.contains(shortcut))
            return false;
        s_ours += shortcut;
        return true;
    }
    bool unregisterShortcut(Shortcut shortcut) override
    {
        error = QStringLiteral("it is not there");
        return s_ours.remove(shortcut);
    }
    bool nativeEventFilter(const QByteArray&, void*, long*) override { return false; }

private:
    static inline QSet<int> s_taken, s_missing;
    static inline bool s_isAllowed = true;
};

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    return std::make_unique<FakeKeyboard>();
}
