#include "effects/dynamicMusic/Mode3/PeakDecayFilter.h"

#include "effects/dynamicMusic/Mode1/LevelMeter.h"

#include <chrono>

qint64 PeakDecayFilter::steadyMs()
{
    // Not the time of day: set back by an hour it would hold the peak for an hour.
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

double PeakDecayFilter::filter(double value, qint64 nowMs)
{
    const double level = LevelMeter::bounded(value);
    const double fallMs = static_cast<double>(m_decayMs) * (m_peak / LevelMeter::kFullScale);
    const auto elapsedMs = static_cast<double>(nowMs - m_peakTimeMs);
    // At its very end the fall has reached 0; and without a peak there is no share of it to take.
    const double fallen = elapsedMs < fallMs ? (1.0 - elapsedMs / fallMs) * m_peak : 0.0;
    if (level < fallen)
        return fallen;
    m_peak = level;
    m_peakTimeMs = nowMs;
    return level;
}
