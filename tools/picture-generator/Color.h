#pragma once

#include <QRgb>
#include <QVector>
#include <algorithm>
#include <cmath>

constexpr double kTau = 6.283185307179586;

/// A colour as it is shown, 0.0 to 1.0 a component; sums of light may go beyond.
struct Color
{
    double r = 0;
    double g = 0;
    double b = 0;
};

inline Color operator+(const Color& a, const Color& b)
{
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}
inline Color operator*(const Color& c, double k)
{
    return {c.r * k, c.g * k, c.b * k};
}
inline Color mix(const Color& a, const Color& b, double t)
{
    return a * (1 - t) + b * t;
}
inline double smooth(double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}
inline double wrap(double t)
{
    return t - std::floor(t);
}

inline QRgb toRgb(const Color& c)
{
    const auto byte = [](double v) { return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255)); };
    return qRgb(byte(c.r), byte(c.g), byte(c.b));
}

/// Evenly spaced stops from the first at 0 to the last at 1.
inline Color gradient(const QVector<Color>& stops, double t)
{
    const double at = std::clamp(t, 0.0, 1.0) * (stops.size() - 1);
    const int i = std::min(static_cast<int>(at), stops.size() - 2);
    return mix(stops[i], stops[i + 1], smooth(at - i));
}

/// Evenly spaced stops on a circle: after the last comes the first.
inline Color cycle(const QVector<Color>& stops, double t)
{
    const double at = wrap(t) * stops.size();
    const int i = std::min(static_cast<int>(at), stops.size() - 1);
    return mix(stops[i], stops[(i + 1) % stops.size()], smooth(at - i));
}
