#pragma once

#include <QElapsedTimer>
#include <QtGlobal>
#include <optional>

/// Whether there is anything to work out at a step of a screen effect. Everything that its picture depends on
/// but the frame itself is told by disturb(). Once a second all is worked out anyway.
class Stillness
{
public:
    static constexpr int kLookMs = 1000;

    /// The next steps have something to do.
    void disturb() { m_frame.reset(); }
    /// At a step with the capture's frame of that number, where `isSettled` says that the same frame again
    /// would show the same.
    bool hasWork(quint64 frame, bool isSettled)
    {
        const bool isStill = m_frame == frame && isSettled;
        m_frame = frame;
        m_stillSteps = isStill ? m_stillSteps + 1 : 0;
        if (isStill && m_sinceWork.isValid() && m_sinceWork.elapsed() < kLookMs - kSlackMs)
            return false;
        m_sinceWork.start();
        return true;
    }
    bool mayRest() const { return m_stillSteps >= kStepsBeforeRest; }

private:
    static constexpr int kSlackMs = 50;
    static constexpr int kStepsBeforeRest = 3;

    std::optional<quint64> m_frame;
    int m_stillSteps = 0;
    QElapsedTimer m_sinceWork;
};
