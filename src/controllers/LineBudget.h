#pragma once

#include <QtGlobal>

/// Keeps account of what a serial line has yet to carry. The operating system cannot tell: its buffers take
/// seconds of line time in one go. A token bucket with room for one and a half frames, kept as the time at
/// which the line falls silent. Times are microseconds of any steady clock, handed in by the caller.
class LineBudget
{
public:
    /// 115200 baud with start and stop bit is 11520 bytes a second; the margin lets the line catch up.
    static constexpr double kBytesPerSecond = 11520.0 * 0.95;

    explicit LineBudget(double bytesPerSecond = kBytesPerSecond)
        : m_usPerByte(1e6 / bytesPerSecond)
    {
    }

    /// How long the line is busy with that many bytes.
    qint64 costUs(int bytes) const { return static_cast<qint64>(bytes * m_usPerByte); }
    /// How long a frame of that size has to wait; 0: the line can take it now.
    qint64 delayUs(qint64 nowUs, int bytes) const
    {
        return qMax<qint64>(0, backlogUs(nowUs) - costUs(bytes) / 2);
    }
    /// How long the line is still busy with what was sent.
    qint64 backlogUs(qint64 nowUs) const { return qMax<qint64>(0, m_silentAtUs - nowUs); }
    void sent(qint64 nowUs, int bytes) { m_silentAtUs = qMax(nowUs, m_silentAtUs) + costUs(bytes); }

private:
    double m_usPerByte;
    qint64 m_silentAtUs = 0;
};
