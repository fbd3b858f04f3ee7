#include "controllers/ColorPipeline.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kOne = 256.0; ///< one level
constexpr double kMost = 255.0 * kOne;
constexpr int kLedSum = 3 * 255; ///< of the bytes of a white LED

/// Toward zero, low eight bits; 0 for what no integer holds, because settings may be any number.
std::uint8_t truncateToByte(double value)
{
    if (!(value > -2147483648.0 && value < 2147483648.0))
        return 0;
    return static_cast<std::uint8_t>(static_cast<std::int32_t>(value));
}

/// Brightness, then gamma, each of which leaves a byte. In levels.
double classicLevel(int raw, float brightness, float gama)
{
    const float scaled = static_cast<float>(raw) * brightness; // single precision, as the devices expect
    const double dimmed = truncateToByte(static_cast<double>(scaled));
    const double base = dimmed * 0.00390625; // by 256, not 255
    return truncateToByte(std::pow(base, static_cast<double>(gama)) * 256.0);
}

/// Gamma, then brightness, in light and without rounding between them.
double linearLevel(int raw, float brightness, float gama)
{
    if (raw == 0)
        return 0.0;
    const double exponent = ColorCorrection::kLinearGamma * static_cast<double>(gama);
    return std::pow(raw / 255.0, exponent) * static_cast<double>(brightness) * 255.0;
}

std::uint16_t toFixed(double level)
{
    const double fixed = std::round(level * kOne);
    return fixed > 0.0 ? static_cast<std::uint16_t>(std::min(fixed, kMost)) : 0; // 0 for no number as well
}

std::uint8_t rounded(std::uint32_t fixed)
{
    return static_cast<std::uint8_t>((fixed + 128) >> 8);
}

} // namespace

void ColorPipeline::prepare(float brightness, float gama, const ColorCorrection& correction)
{
    if (m_isReady && m_brightness == brightness && m_gama == gama && m_correction == correction)
        return;
    const std::array<double, 3> white{correction.whiteRed, correction.whiteGreen, correction.whiteBlue};
    const auto level = correction.pipeline == ColorCorrection::Pipeline::Linear ? linearLevel : classicLevel;
    for (std::size_t raw = 0; raw < 256; ++raw) {
        const double light = level(static_cast<int>(raw), brightness, gama);
        for (std::size_t channel = 0; channel < 3; ++channel)
            m_tables[channel][raw] = toFixed(light * white[channel]);
    }
    const double strongest = *std::max_element(white.begin(), white.end());
    for (std::size_t channel = 0; channel < 3; ++channel)
        m_tint[channel] = strongest > 0.0 ? white[channel] / strongest : 0.0;
    const bool isLit = strongest > 0.0 && brightness > 0.0F;
    m_least = isLit ? static_cast<std::uint32_t>(correction.minLight) << 8 : 0;
    m_correction = correction;
    m_brightness = brightness;
    m_gama = gama;
    m_isReady = true;
}

QVector<LV_RGB> ColorPipeline::apply(const QVector<LV_RGB>& picture, int nbLeds)
{
    QVector<LV_RGB> out(picture.size());
    qint64 bytes = 0;
    qint64 light = 0; // the same before rounding
    LV_RGB* led = out.data();
    for (const LV_RGB& raw : picture) {
        const Levels levels = levelsOf(raw);
        *led = {rounded(levels[0]), rounded(levels[1]), rounded(levels[2])};
        bytes += led->red + led->green + led->blue;
        light += levels[0] + levels[1] + levels[2];
        ++led;
    }
    const qint64 budget = byteBudget(std::max(nbLeds, picture.size()));
    m_isLimited = m_correction.powerLimitMa > 0 && bytes > budget;
    if (!m_isLimited)
        return out;
    // One factor for all keeps the hues; rounding down keeps the sum within the budget. In 65536ths.
    const auto factor = static_cast<std::uint64_t>(std::min<qint64>((budget << 24) / light, 1 << 16));
    const auto held = [factor](std::uint32_t fixed) {
        return static_cast<std::uint8_t>((fixed * factor) >> 24);
    };
    led = out.data();
    for (const LV_RGB& raw : picture) {
        const Levels levels = levelsOf(raw);
        *led++ = {held(levels[0]), held(levels[1]), held(levels[2])};
    }
    return out;
}

ColorPipeline::Levels ColorPipeline::levelsOf(const LV_RGB& raw) const
{
    Levels levels{m_tables[0][raw.red], m_tables[1][raw.green], m_tables[2][raw.blue]};
    if (std::max({levels[0], levels[1], levels[2]}) < m_least)
        raise(levels);
    return levels;
}

/// The same white light on top of each channel, so much that the first of them reaches the least: the
/// differences that make the hue stay, and noise is not amplified as by a factor.
void ColorPipeline::raise(Levels& levels) const
{
    double missing = kMost;
    for (std::size_t channel = 0; channel < 3; ++channel)
        if (m_tint[channel] > 0.0)
            missing = std::min(missing, (m_least - levels[channel]) / m_tint[channel]);
    for (std::size_t channel = 0; channel < 3; ++channel)
        levels[channel] += static_cast<std::uint32_t>(std::lround(missing * m_tint[channel]));
}

/// A picture has an entry for each LED, also where the hardware drives several as one unit: every entry
/// counts once, whatever `ledPerUnit` says.
qint64 ColorPipeline::byteBudget(int nbLeds) const
{
    const qint64 milliAmps = m_correction.powerLimitMa - qint64(nbLeds) * kIdleMilliAmps;
    return std::max<qint64>(milliAmps, 0) * kLedSum / std::max(m_correction.ledMilliAmps, 1);
}
