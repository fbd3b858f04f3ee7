#include "effects/dynamicMusic/Mode1/LevelMeter.h"

#include "effects/dynamicMusic/Mode1/Fragment.h"
#include "effects/rgb.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace LevelMeter {

namespace {

constexpr int kHistory = 10;
constexpr double kGreenHue = 0.3333333333333333;

double enhanced(const Fragment& fragment, const SoundChannel& channel, double quiet)
{
    const auto level = bandLevel(channel, static_cast<float>(fragment.minFrequency),
                                 static_cast<float>(fragment.maxFrequency));
    const double spread =
        quiet > 0.0 ? bounded((static_cast<double>(level) - quiet) * kFullScale / (kFullScale - quiet))
                    : static_cast<double>(level);
    return bounded((spread + fragment.dbEnhance) * fragment.mulEnhance);
}

} // namespace

double bounded(double level)
{
    return level > 0.0 ? std::min(level, kFullScale) : 0.0; // in this form NaN gives 0
}

float bandLevel(const SoundChannel& channel, float low, float high)
{
    const auto begin = channel.spectrums.cbegin();
    const auto end = channel.spectrums.cend();
    const auto first = std::lower_bound(
        begin, end, low, [](const Spectrum& point, float hertz) { return point.frequency < hertz; });
    if (first == end)
        return 0.0F;
    const auto last = std::upper_bound(
        first, end, high, [](float hertz, const Spectrum& point) { return hertz < point.frequency; });
    float level = first->level;
    for (auto point = first; point < last; ++point) {
        if (point->level > level || std::isnan(level))
            level = point->level;
    }
    return level;
}

double heard(const Fragment& fragment, const QVector<SoundChannel>& channels, double quiet)
{
    if (channels.isEmpty())
        return 0.0;
    const SoundChannel& left = channels.first();
    const SoundChannel& right = channels.size() > 1 ? channels.at(1) : left;
    switch (fragment.soundChannel) {
    case Fragment::Left:
        return enhanced(fragment, left, quiet);
    case Fragment::Right:
        return enhanced(fragment, right, quiet);
    default:
        return std::max(enhanced(fragment, left, quiet), enhanced(fragment, right, quiet));
    }
}

double smooth(QList<double>& history, double value)
{
    history.append(value);
    if (history.size() > kHistory)
        history.removeFirst();
    const double mean = std::accumulate(history.cbegin(), history.cend(), 0.0) / history.size();
    return std::max(value, mean);
}

LV_RGB meterColor(int lit, int i)
{
    const double t = static_cast<double>(i) / lit;
    const double towardsRed = std::min(1.0, std::sin(t / 3.0) * 10.0 * t * t);
    return toLedColor(QColor::fromHsvF(kGreenHue - towardsRed * kGreenHue, 1.0, 1.0, 1.0));
}

QVector<LV_RGB> colors(const Fragment& fragment, double level)
{
    const int count = fragment.count();
    QVector<LV_RGB> result(count);
    const double height = bounded(level);
    int lit = static_cast<int>(height / kFullScale * count);
    if (count == 1 && height > 0.0)
        lit = 1;
    for (int i = 0; i < lit; ++i) {
        if (fragment.dir == 0)
            result[i] = meterColor(lit, i);
        else if (fragment.dir == 1)
            result[count - i - 1] = meterColor(lit, i);
    }
    return result;
}

} // namespace LevelMeter
