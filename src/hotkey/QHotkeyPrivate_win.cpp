#include "hotkey/QHotkeyPrivate.h"
#include "hotkey/WindowsKeys.h"

#include <QTimer>
#include <algorithm>

#include <windows.h>

namespace {

constexpr int kPollMs = 50;
constexpr UINT kNoRepeat = 0x4000; ///< MOD_NOREPEAT

QString textOf(DWORD code)
{
    wchar_t* buffer = nullptr;
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                       FORMAT_MESSAGE_IGNORE_INSERTS,
                   nullptr, code, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    const QString text = buffer ? QString::fromWCharArray(buffer).trimmed() : QString::number(code);
    LocalFree(buffer);
    return text;
}

} // namespace

/// Shortcuts of the GUI thread's message queue. Windows tells of a key that goes down only, so those held are
/// polled until they are up.
class QHotkeyPrivateWin : public QHotkeyPrivate
{
public:
    QHotkeyPrivateWin()
    {
        m_pollTimer.setInterval(kPollMs);
        connect(&m_pollTimer, &QTimer::timeout, this, &QHotkeyPrivateWin::pollHeld);
    }

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override { return virtualKey(keycode, ok); }

    quint32 nativeKeypadKeycode(Qt::Key keycode, bool& ok) override
    {
        return virtualKey(keycode | static_cast<int>(Qt::KeypadModifier), ok);
    }

    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override
    {
        ok = true;
        return WindowsKeys::modifiers(modifiers);
    }

    bool registerShortcut(QHotkey::NativeShortcut shortcut) override
    {
        return RegisterHotKey(nullptr, WindowsKeys::shortcutId(shortcut.key, shortcut.modifier),
                              shortcut.modifier + kNoRepeat, shortcut.key) ||
               refuse();
    }

    bool unregisterShortcut(QHotkey::NativeShortcut shortcut) override
    {
        return UnregisterHotKey(nullptr, WindowsKeys::shortcutId(shortcut.key, shortcut.modifier)) ||
               refuse();
    }

    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        const auto* msg = static_cast<const MSG*>(message);
        if (msg && msg->message == WM_HOTKEY && isNew(msg->lParam)) {
            const QHotkey::NativeShortcut shortcut(HIWORD(msg->lParam), LOWORD(msg->lParam));
            activateShortcut(shortcut);
            if (m_held.isEmpty())
                m_pollTimer.start();
            m_held.append(shortcut);
        }
        return false;
    }

private:
    static quint32 virtualKey(int key, bool& ok)
    {
        const auto keyOfCharacter = [](ushort c) { return VkKeyScanW(static_cast<wchar_t>(c)); };
        return WindowsKeys::virtualKey(key, keyOfCharacter, ok);
    }

    bool refuse()
    {
        const DWORD code = GetLastError();
        error = textOf(code);
        trouble = code == ERROR_HOTKEY_ALREADY_REGISTERED ? HotkeyTrouble::Taken : HotkeyTrouble::NotAllowed;
        return false;
    }

    /// The dispatcher and the window procedure may both show the filter one and the same message.
    bool isNew(LPARAM combination)
    {
        const LONG time = GetMessageTime();
        const bool isSame = m_hasSeen && combination == m_seen && time == m_seenAt;
        m_hasSeen = true;
        m_seen = combination;
        m_seenAt = time;
        return !isSame;
    }

    void pollHeld()
    {
        const auto isUp = [this](QHotkey::NativeShortcut shortcut) {
            if (GetAsyncKeyState(static_cast<int>(shortcut.key)) < 0)
                return false;
            releaseShortcut(shortcut);
            return true;
        };
        m_held.erase(std::remove_if(m_held.begin(), m_held.end(), isUp), m_held.end());
        if (m_held.isEmpty())
            m_pollTimer.stop();
    }

    QTimer m_pollTimer;
    QVector<QHotkey::NativeShortcut> m_held;
    bool m_hasSeen = false;
    LPARAM m_seen = 0;
    LONG m_seenAt = 0;
};

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    return std::make_unique<QHotkeyPrivateWin>();
}
