#include "effects/dynamicMusic/PeakValues/PeakBars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace PeakBars {

namespace {

constexpr int kBands = 10;
using Palette = std::array<LV_RGB, kBands>;

// clang-format off
constexpr std::array<Palette, 3> kPalettes{{
    {{{41, 255, 217}, {43, 254, 89}, {174, 254, 41}, {250, 255, 38}, {255, 184, 38},
      {255, 100, 43}, {253, 62, 43}, {255, 42, 109}, {251, 34, 176}, {176, 32, 252}}},
    {{{11, 221, 10}, {11, 221, 10}, {136, 219, 39}, {136, 219, 39}, {136, 219, 39},
      {237, 200, 0}, {237, 200, 0}, {237, 200, 0}, {255, 0, 0}, {255, 0, 0}}},
    {{{252, 0, 64}, {197, 29, 253}, {28, 119, 253}, {4, 179, 252}, {9, 245, 253},
      {7, 253, 138}, {8, 251, 4}, {138, 252, 3}, {254, 248, 2}, {253, 105, 5}}},
}};

constexpr std::array<Variant, 8> kVariants{{
    {Paint::Bands, 1, false, 0.4},
    {Paint::Bands, 2, false, 0.4},
    {Paint::Bands, 3, false, 0.4},
    {Paint::Walk, 0, false, 0.4},
    {Paint::Bands, 1, true, 0.4},
    {Paint::Bands, 2, true, 0.4},
    {Paint::Bands, 3, true, 0.4},
    {Paint::WholeStrip, 0, false, 0.0},
}};
// clang-format on

int lengthOf(const PeakSegment& segment)
{
    return std::abs(segment.start - segment.stop);
}

/// Lights the `lit` first of the segment's LEDs, as the bar grows. A bar that grows from `start` leaves
/// `stop` out where `stopIncluded` is false.
template <typename ColorAt>
void drawBar(QVector<LV_RGB>& colors, const PeakSegment& segment, float peak, bool stopIncluded,
             ColorAt&& colorAt)
{
    const bool up = segment.direction == 1;
    const int places = segment.stop - segment.start + (up && !stopIncluded ? 0 : 1);
    const float lit = std::trunc(static_cast<float>(lengthOf(segment)) * peak);
    for (int n = 0; n < places && static_cast<float>(n) < lit; ++n) {
        const int led = (up ? segment.start + n : segment.stop - n) - 1;
        if (led >= 0 && led < colors.size())
            colors[led] = colorAt(n);
    }
}

int bandOf(int n, int length)
{
    const double height = static_cast<double>(n) / length;
    int k = 0;
    while (k < kBands - 1 && height >= (k + 1) / 10.0)
        ++k;
    return k;
}

std::uint8_t dimmed(std::uint8_t channel, double factor)
{
    return static_cast<std::uint8_t>(std::floor(std::min(255.0, channel * factor)));
}

} // namespace

Variant variantOf(int number)
{
    return number >= 1 && number <= static_cast<int>(kVariants.size())
               ? kVariants[static_cast<std::size_t>(number - 1)]
               : Variant();
}

LV_RGB paletteColor(const Variant& variant, int k, qint64 seconds)
{
    const Palette& palette = kPalettes[static_cast<std::size_t>(variant.palette - 1)];
    const qint64 entry = variant.rotating ? (seconds - k) % kBands : k;
    return palette[static_cast<std::size_t>(entry < 0 ? entry + kBands : entry)];
}

void drawBands(QVector<LV_RGB>& colors, const PeakSegment& segment, float peak, const Variant& variant,
               qint64 seconds)
{
    const int length = lengthOf(segment);
    drawBar(colors, segment, peak, false,
            [&](int n) { return paletteColor(variant, bandOf(n, length), seconds); });
}

void drawPlain(QVector<LV_RGB>& colors, const PeakSegment& segment, float peak, LV_RGB color)
{
    drawBar(colors, segment, peak, true, [color](int) { return color; });
}

void dim(QVector<LV_RGB>& colors, float peak, double floor)
{
    const double percent = std::trunc(static_cast<double>(peak) * 100.0);
    const double factor = std::max(percent / 100.0, floor);
    for (LV_RGB& color : colors)
        color = {dimmed(color.red, factor), dimmed(color.green, factor), dimmed(color.blue, factor)};
}

} // namespace PeakBars
