#pragma once

#include <QtGlobal>

/// Holds the peak of a level of 0 to 80: a higher one is taken at once, a lower one is reached in a straight
/// fall that takes the whole time from full scale, and from half of it half the time.
class PeakDecayFilter
{
public:
    explicit PeakDecayFilter(double seconds = 0.5)
        : m_decayMs(static_cast<qint64>(seconds * 1000.0))
    {
    }

    /// What is shown for a level at this time, a steady one in milliseconds. Levels outside the scale are
    /// bounded; what is no number counts as silence, and never comes out.
    double filter(double value, qint64 nowMs = steadyMs());

private:
    static qint64 steadyMs();

    qint64 m_decayMs;
    double m_peak = 0.0;
    qint64 m_peakTimeMs = steadyMs();
};
