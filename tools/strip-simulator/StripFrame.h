#pragma once

#include "controllers/LV_RGB.h"

#include <QMetaType>
#include <QVector>

/// One frame as it came over the line. The header's count is `colors.size()`.
struct StripFrame
{
    QVector<LV_RGB> colors;
    double firstByteMs = 0; ///< CLOCK_MONOTONIC, when the first byte of the header came
    double lastByteMs = 0;  ///< when the last colour byte came
    qint64 totalBytes = 0;  ///< received since plugging in, up to and including this frame's last byte
};
Q_DECLARE_METATYPE(StripFrame)

/// What a strip has seen since it was made, or since its last clear().
struct StripCounters
{
    qint64 frames = 0;
    qint64 probes = 0;
    qint64 bytes = 0;
    qint64 garbageBytes = 0;
    double longestGapMs = 0; ///< between the last bytes of two frames that follow each other
};
