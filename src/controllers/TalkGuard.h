#pragma once

#include <QtGlobal>

/// How much of what a device says is read: twenty chunks a second, more than a finger presses a button. The
/// rest stays on its side, so that it fills neither memory, log nor the main thread's queue. Times are
/// milliseconds of any steady clock.
class TalkGuard
{
public:
    static constexpr int kWindowMs = 1000;
    static constexpr int kChunksPerWindow = 20;

    /// 0: read now, which counts as a chunk; else when to ask again.
    int delayMs(qint64 nowMs)
    {
        if (nowMs >= m_windowEndMs) {
            m_windowEndMs = nowMs + kWindowMs;
            m_chunks = 0;
        }
        if (m_chunks == kChunksPerWindow)
            return static_cast<int>(m_windowEndMs - nowMs);
        ++m_chunks;
        return 0;
    }

private:
    qint64 m_windowEndMs = 0;
    int m_chunks = 0;
};
