#include "system/WindowsSession.h"

#include <utility>

namespace {

constexpr quint32 kEndSession = 0x16, kPowerBroadcast = 0x218, kSessionChange = 0x2B1;
// Parameters of a power broadcast.
constexpr quint64 kSuspend = 4, kResumeCritical = 6, kResumeSuspend = 7, kResumeAutomatic = 0x12;
// Parameters of a session change.
constexpr quint64 kLock = 7, kUnlock = 8;
constexpr quint32 kDisplayOff = 0;

} // namespace

WindowsSession::News WindowsSession::hear(quint32 message, quint64 wParam)
{
    switch (message) {
    case kPowerBroadcast:
        if (wParam == kSuspend)
            return std::exchange(m_isAsleep, true) ? News::None : News::AboutToSleep;
        if (wParam == kResumeAutomatic || wParam == kResumeSuspend || wParam == kResumeCritical)
            return std::exchange(m_isAsleep, false) ? News::Resumed : News::None;
        return News::None;
    case kSessionChange:
        return wParam == kLock || wParam == kUnlock ? setLocked(wParam == kLock) : News::None;
    case kEndSession: // zero: somebody has refused it
        return wParam == 0 || std::exchange(m_hasEnded, true) ? News::None : News::Ends;
    default:
        return News::None;
    }
}

WindowsSession::News WindowsSession::hearDisplay(quint32 state)
{
    m_isDisplayOff = state == kDisplayOff;
    return screenNews();
}

WindowsSession::News WindowsSession::setLocked(bool isLocked)
{
    m_isLocked = isLocked;
    return screenNews();
}

WindowsSession::News WindowsSession::screenNews()
{
    const bool isOff = m_isLocked || m_isDisplayOff;
    if (std::exchange(m_isScreenOff, isOff) == isOff)
        return News::None;
    return isOff ? News::ScreenOff : News::ScreenOn;
}
