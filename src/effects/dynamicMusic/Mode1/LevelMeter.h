#pragma once

#include "controllers/LV_RGB.h"
#include "support/audio/SoundChannel.h"

#include <QList>
#include <QVector>

struct Fragment;

/// From a spectrum to the colours of one meter. Levels are 0 to 80.
namespace LevelMeter {

constexpr double kFullScale = 80.0;

/// Into the range of levels; what is no number counts as silence.
double bounded(double level);
/// The loudest point from `low` to `high` hertz; a band without a point takes the next one above it, and
/// beyond the last point there is silence.
float bandLevel(const SoundChannel& channel, float low, float high);
/// The level that a fragment hears, enhanced. One channel alone serves for both; no channel is silence. What
/// is not above `quiet`, below 80, is silence as well, and the rest is spread over the whole scale.
double heard(const Fragment& fragment, const QVector<SoundChannel>& channels, double quiet = 0.0);
/// Rises at once and falls with the mean of the last ten levels, which it keeps in `history`.
double smooth(QList<double>& history, double value);

/// Colour `i` of `lit`: from green at the foot towards red.
LV_RGB meterColor(int lit, int i);
/// The whole meter, one colour per LED.
QVector<LV_RGB> colors(const Fragment& fragment, double level);

} // namespace LevelMeter
