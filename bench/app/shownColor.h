#pragma once

#include "StripSimulator.h"

#include <QDeadlineTimer>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdlib>

constexpr int kNear = 25; ///< levels: what moves beside an LED colours it a little

inline bool isNear(LV_RGB a, LV_RGB b)
{
    return std::abs(a.red - b.red) <= kNear && std::abs(a.green - b.green) <= kNear &&
           std::abs(a.blue - b.blue) <= kNear;
}

/// When the first frame was complete most of whose LEDs show about this colour, in ms; 0 when none comes in
/// two seconds.
inline double shownAt(const StripSimulator& strip, LV_RGB color)
{
    for (QDeadlineTimer patience(2000); !patience.hasExpired(); QThread::msleep(5)) {
        for (const StripFrame& frame : strip.frames()) {
            const auto lit = std::count_if(frame.colors.begin(), frame.colors.end(),
                                           [&](LV_RGB each) { return isNear(each, color); });
            if (lit > frame.colors.size() / 2)
                return frame.lastByteMs;
        }
    }
    return 0;
}

/// Any phase of the effect's period. Where frames come all the time the phases are spread evenly, so that few
/// changes tell the percentiles.
inline void waitForPhase(StripSimulator& strip, int number, double slotMs)
{
    constexpr double kGolden = 0.618034;
    strip.clear();
    for (QDeadlineTimer patience(200); strip.counters().frames == 0 && !patience.hasExpired();)
        QThread::usleep(200);
    QThread::usleep(static_cast<unsigned long>(std::fmod(number * kGolden, 1.0) * slotMs * 1000));
}
