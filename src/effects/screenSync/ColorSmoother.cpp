#include "effects/screenSync/ColorSmoother.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr float kSlowS = 0.150F;
constexpr float kFastS = 0.005F;
/// Differences in levels between which the time constant falls from the slow one to the fast one.
constexpr float kSmall = 2.0F;
constexpr float kLarge = 12.0F;
/// The mean of a colour over the strip moves by more levels than this when the scene is cut.
constexpr float kCut = 24.0F;
/// A level that is nearer than this to where it should be stays, and so does what is shown of it.
constexpr float kDeadBand = 0.75F;
constexpr double kGapS = 0.5;
/// What counts of a pause in which nothing moved.
constexpr double kTickS = 0.08;
/// How long a target lasts before the rest of the way, less than a level, is made up: it is longer for the
/// level more or less that may be noise, and longest for what came and went.
constexpr float kLastingS = 0.4F;
constexpr float kLastingNearS = 0.9F;
constexpr float kLastingNoiseS = 2.0F;

float timeConstant(float difference)
{
    const float share = std::clamp((difference - kSmall) / (kLarge - kSmall), 0.0F, 1.0F);
    return kSlowS + share * (kFastS - kSlowS);
}

bool isBlack(const QVector<LV_RGB>& colors)
{
    return std::all_of(colors.begin(), colors.end(), [](const LV_RGB& color) { return color == LV_RGB{}; });
}

} // namespace

void ColorSmoother::setMode(Mode mode)
{
    if (mode == m_mode)
        return;
    m_mode = mode;
    m_isSettled = true;
    snap();
}

void ColorSmoother::step(QVector<LV_RGB>& colors, double seconds)
{
    static_assert(sizeof(LV_RGB) == 3, "read as bytes");
    if (m_mode == Mode::Off)
        return;
    const auto count = static_cast<std::size_t>(colors.size()) * sizeof(LV_RGB);
    const bool begins = m_shouldSnap || count != m_channels.size() || (seconds > kGapS && !m_isSettled) ||
                        isBlack(colors) || isCut(colors);
    const double elapsed = m_isSettled ? std::min(seconds, kTickS) : seconds;
    const auto dt = static_cast<float>(std::max(elapsed, 0.0));
    m_shouldSnap = false;
    m_isSettled = true;
    m_channels.resize(count);
    auto* bytes = reinterpret_cast<std::uint8_t*>(colors.data());
    for (std::size_t i = 0; i < count; ++i) {
        Channel& channel = m_channels[i];
        if (begins) {
            channel = {static_cast<float>(bytes[i]), 0.0F, 0.0F, bytes[i], bytes[i]};
            continue;
        }
        aim(channel, bytes[i], dt);
        follow(channel, dt);
        bytes[i] = channel.shown;
        m_isSettled = m_isSettled && channel.shown == channel.target;
    }
}

void ColorSmoother::aim(Channel& channel, std::uint8_t target, float seconds)
{
    if (target == channel.target) {
        channel.targetAge += seconds;
        return;
    }
    channel.target = target;
    channel.targetAge = 0.0F;
    const int away = std::abs(target - channel.shown);
    if (away > 1)
        channel.lasting = kLastingS;
    else
        channel.lasting = away == 0 ? kLastingNoiseS : std::max(channel.lasting, kLastingNearS);
}

void ColorSmoother::follow(Channel& channel, float seconds) const
{
    const float difference = static_cast<float>(channel.target) - channel.level;
    const float distance = std::abs(difference);
    if (distance >= kDeadBand) {
        const float tau = m_mode == Mode::Calm ? kSlowS : timeConstant(distance);
        channel.level += difference * seconds / (seconds + tau);
    }
    if (distance < 1.0F && channel.targetAge >= channel.lasting)
        channel.level = channel.shown = channel.target;
    else if (std::abs(channel.level - static_cast<float>(channel.shown)) > kDeadBand)
        channel.shown = static_cast<std::uint8_t>(std::lround(channel.level));
}

bool ColorSmoother::isCut(const QVector<LV_RGB>& colors) const
{
    if (m_mode != Mode::Responsive || colors.isEmpty())
        return false;
    std::array<float, 3> moved{};
    for (int i = 0; i < colors.size(); ++i) {
        const auto* channel = &m_channels[static_cast<std::size_t>(i) * moved.size()];
        moved[0] += static_cast<float>(colors[i].red) - channel[0].level;
        moved[1] += static_cast<float>(colors[i].green) - channel[1].level;
        moved[2] += static_cast<float>(colors[i].blue) - channel[2].level;
    }
    return std::any_of(moved.begin(), moved.end(),
                       [&](float sum) { return std::abs(sum) > kCut * static_cast<float>(colors.size()); });
}
