#pragma once

#include <QtGlobal>

/// What Windows' messages about power and session come to, each of which may arrive more than once. A plain
/// value, the same on every system.
class WindowsSession
{
public:
    enum class News { None, AboutToSleep, Resumed, ScreenOff, ScreenOn, Ends };

    /// A message that the system sends to its windows.
    News hear(quint32 message, quint64 wParam);
    /// The state of the console's display: 0 off, 1 on, 2 dimmed.
    News hearDisplay(quint32 state);
    /// What the system says when asked.
    News setLocked(bool isLocked);

    bool isScreenOff() const { return m_isScreenOff; }

private:
    News screenNews();

    bool m_isAsleep = false;
    bool m_isLocked = false;
    bool m_isDisplayOff = false;
    bool m_isScreenOff = false; ///< as it was told
    bool m_hasEnded = false;
};
