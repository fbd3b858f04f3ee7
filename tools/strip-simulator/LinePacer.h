#pragma once

#include <algorithm>

/// Tells how many bytes a serial line of a given rate has carried by now, so that a reader of a pty, which
/// would swallow anything at once, takes them no faster than that. Times are in milliseconds.
class LinePacer
{
public:
    explicit LinePacer(int bytesPerSecond)
        : m_bytesPerMs(bytesPerSecond / 1000.0)
    {
    }

    bool isPaced() const { return m_bytesPerMs > 0; }

    /// Bytes begin to flow on an idle line.
    void begin(double nowMs)
    {
        if (!m_busy)
            m_carriedUntilMs = nowMs;
        m_busy = true;
    }
    /// The line ran empty: idle time earns no credit.
    void idle() { m_busy = false; }
    bool isBusy() const { return m_busy; }

    /// What may be read now. Time lost by a sleeping reader is caught up, within limits.
    int available(double nowMs)
    {
        m_carriedUntilMs = std::max(m_carriedUntilMs, nowMs - kMostCatchUpMs);
        return static_cast<int>((nowMs - m_carriedUntilMs) * m_bytesPerMs);
    }
    void took(int bytes) { m_carriedUntilMs += bytes / m_bytesPerMs; }

private:
    static constexpr double kMostCatchUpMs = 50;
    double m_bytesPerMs;
    double m_carriedUntilMs = 0;
    bool m_busy = false;
};
