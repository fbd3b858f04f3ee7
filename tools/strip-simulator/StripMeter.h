#pragma once

#include "StripFrame.h"

#include <deque>

/// What can be told of a strip from its frames: the pace, whether the picture moves, whether it is dark.
class StripMeter
{
public:
    void add(const StripFrame& frame);

    /// Frames a second over the last two seconds.
    double framesPerSecond(double nowMs) const;
    qint64 frames() const { return m_frames; }
    /// Frames that differ from the one before.
    qint64 changes() const { return m_changes; }
    /// Whether the last frame had no light at all. False before the first one.
    bool isBlack() const { return m_isBlack; }

private:
    std::deque<double> m_times;
    QVector<LV_RGB> m_last;
    qint64 m_frames = 0;
    qint64 m_changes = 0;
    bool m_isBlack = false;
};
