#pragma once

#include <QtGlobal>

/// The common gain of a music effect and the slider that sets it: two straight pieces with 1.0 in the middle.
namespace StrengthSlider {

constexpr int kMin = 1;
constexpr int kMiddle = 100;
constexpr int kMax = 200;

/// 0.505 to 4.0 for the whole slider.
constexpr double strengthOf(int value)
{
    return value < kMiddle ? value * 0.005 + 0.5 : value * 0.03 - 2.0;
}

/// The slider's place; what it cannot reach lies at its end.
inline int valueOf(double strength)
{
    // Lets what the slider gave find its own place again, in spite of rounding.
    constexpr double kRounding = 1e-6;
    const double value = strength < 1.0 ? (strength - 0.5) / 0.005 : (strength + 2.0) / 0.03;
    return static_cast<int>(qBound(double(kMin), value + kRounding, double(kMax)));
}

} // namespace StrengthSlider
