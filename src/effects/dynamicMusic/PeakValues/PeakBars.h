#pragma once

#include "controllers/LV_RGB.h"

#include <QVector>

/// A piece of the strip that shows a bar. `start` and `stop` count LEDs from 1, to PeakBars::kFarthest on
/// either side.
struct PeakSegment
{
    int id = 0;
    int start = 0;
    int stop = 0;
    int direction = 0; ///< 1 grows from `start`, any other from `stop`
};

/// From one peak, 0 to 1, to colours. Nothing here writes beyond the list of colours.
namespace PeakBars {

/// Beyond any strip; the length of a segment still is a number.
constexpr int kFarthest = 0xFFFF + 1;

enum class Paint { Nothing, Bands, Walk, WholeStrip };

/// What tells the variants of the peak effect apart.
struct Variant
{
    Paint paint = Paint::Nothing;
    int palette = 0;       ///< 1 to 3, for Paint::Bands
    bool rotating = false; ///< the palette moves on by one colour a second
    double floor = 0.4;    ///< what is lit keeps this much of its brightness
};

/// By the number in the catalogue, 1 to 8; any other draws nothing.
Variant variantOf(int number);

/// Entry `k`, 0 to 9, of the variant's palette. `seconds` is the clock that rotates it.
LV_RGB paletteColor(const Variant& variant, int k, qint64 seconds);

/// A bar in the ten colours of the palette.
void drawBands(QVector<LV_RGB>& colors, const PeakSegment& segment, float peak, const Variant& variant,
               qint64 seconds);
/// A bar in one colour.
void drawPlain(QVector<LV_RGB>& colors, const PeakSegment& segment, float peak, LV_RGB color);
/// Brightness by the peak in whole percent, but not below `floor`.
void dim(QVector<LV_RGB>& colors, float peak, double floor);

} // namespace PeakBars
