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
    const bool begins = m_shouldSnap || static_cast<std::size_t>(colors.size()) != m_leds.size() ||
                        (seconds > kGapS && !m_isSettled) || isBlack(colors) || isCut(colors);
    const double elapsed = m_isSettled ? std::min(seconds, kTickS) : seconds;
    const auto dt = static_cast<float>(std::max(elapsed, 0.0));
    m_shouldSnap = false;
    m_leds.resize(static_cast<std::size_t>(colors.size()));
    bool isSettled = true;
    auto* color = colors.data();
    for (Led& led : m_leds) {
        if (begins)
            led = {Channel(color->red), Channel(color->green), Channel(color->blue)};
        else
            isSettled &= follow(led, *color, dt);
        ++color;
    }
    m_isSettled = isSettled;
}

bool ColorSmoother::follow(Led& led, LV_RGB& color, float seconds) const
{
    std::uint8_t* const bytes[]{&color.red, &color.green, &color.blue};
    // One time constant for all three, so that a colour does not turn on its way.
    float distance = 0.0F;
    for (std::size_t i = 0; i < led.size(); ++i) {
        led[i].aim(*bytes[i], seconds);
        distance = std::max(distance, std::abs(led[i].difference()));
    }
    const float tau = m_mode == Mode::Calm ? kSlowS : timeConstant(distance);
    const float share = seconds / (seconds + tau);
    int awayFromTarget = 0;
    for (std::size_t i = 0; i < led.size(); ++i) {
        led[i].follow(share);
        *bytes[i] = led[i].shown;
        awayFromTarget |= led[i].shown ^ led[i].target;
    }
    return awayFromTarget == 0;
}

void ColorSmoother::Channel::aim(std::uint8_t wanted, float seconds)
{
    if (wanted == target) {
        targetAge += seconds;
        return;
    }
    target = wanted;
    targetAge = 0.0F;
    const int away = std::abs(target - shown);
    if (away > 1)
        lasting = kLastingS;
    else
        lasting = away == 0 ? kLastingNoiseS : std::max(lasting, kLastingNearS);
}

void ColorSmoother::Channel::follow(float share)
{
    const float distance = std::abs(difference());
    if (distance >= kDeadBand)
        level += share * difference();
    if (distance < 1.0F && targetAge >= lasting)
        level = shown = target;
    else if (std::abs(level - static_cast<float>(shown)) > kDeadBand)
        shown = static_cast<std::uint8_t>(std::lround(level));
}

bool ColorSmoother::isCut(const QVector<LV_RGB>& colors) const
{
    if (m_mode != Mode::Responsive || colors.isEmpty())
        return false;
    std::array<float, 3> moved{};
    for (int i = 0; i < colors.size(); ++i) {
        const Led& led = m_leds[static_cast<std::size_t>(i)];
        moved[0] += static_cast<float>(colors[i].red) - led[0].level;
        moved[1] += static_cast<float>(colors[i].green) - led[1].level;
        moved[2] += static_cast<float>(colors[i].blue) - led[2].level;
    }
    return std::any_of(moved.begin(), moved.end(),
                       [&](float sum) { return std::abs(sum) > kCut * static_cast<float>(colors.size()); });
}
