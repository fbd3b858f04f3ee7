#include "StripMeter.h"

#include <algorithm>

namespace {
constexpr double kWindowMs = 2000;
} // namespace

void StripMeter::add(const StripFrame& frame)
{
    ++m_frames;
    if (frame.colors != m_last)
        ++m_changes;
    m_last = frame.colors;
    m_isBlack = std::all_of(m_last.cbegin(), m_last.cend(), [](LV_RGB c) { return c == LV_RGB{}; });
    m_times.push_back(frame.lastByteMs);
    while (m_times.back() - m_times.front() > kWindowMs)
        m_times.pop_front();
}

double StripMeter::framesPerSecond(double nowMs) const
{
    const auto first = std::upper_bound(m_times.begin(), m_times.end(), nowMs - kWindowMs);
    const auto count = std::distance(first, m_times.end());
    if (count < 2)
        return static_cast<double>(count) * 1000 / kWindowMs;
    return static_cast<double>(count - 1) * 1000 / (m_times.back() - *first);
}
