#pragma once

#include "controllers/LedFrame.h"
#include "controllers/LineBudget.h"

#include <QByteArray>
#include <utility>

/// Which frames a line carries: one waits at most, and a newer one replaces it, with black as far as the
/// older one would have reached: nothing stays lit behind a strip that was made shorter. Times as
/// LineBudget's.
class FramePacer
{
public:
    /// True when it replaces a frame that the line could not take in time.
    bool offer(const QByteArray& frame)
    {
        const int reach = LedFrame::statedCount(m_waiting);
        return !std::exchange(m_waiting, LedFrame::reaching(frame, reach)).isEmpty();
    }
    bool isWaiting() const { return !m_waiting.isEmpty(); }
    /// How long the frame has to wait; 0: take it now.
    qint64 delayUs(qint64 nowUs) const { return m_line.delayUs(nowUs, m_waiting.size()); }
    /// The frame, which counts as sent.
    QByteArray take(qint64 nowUs)
    {
        m_line.sent(nowUs, m_waiting.size());
        return std::exchange(m_waiting, QByteArray());
    }
    /// How long the line has work with what was sent and with the frame that waits, where that one came too
    /// early; 0: it came in time, give or take the line's margin.
    qint64 earlyUs(qint64 nowUs) const
    {
        const qint64 costUs = m_line.costUs(m_waiting.size());
        const qint64 backlogUs = m_line.backlogUs(nowUs);
        return backlogUs > costUs / 20 ? backlogUs + costUs : 0;
    }
    /// How long the line is still busy with what was sent.
    qint64 backlogUs(qint64 nowUs) const { return m_line.backlogUs(nowUs); }

private:
    LineBudget m_line;
    QByteArray m_waiting;
};
