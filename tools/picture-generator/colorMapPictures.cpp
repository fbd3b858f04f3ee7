#include "colorMapPictures.h"

#include "Color.h"

#include <QImage>
#include <cstdint>

namespace {

constexpr int kWidth = 360;  // along the strip
constexpr int kHeight = 300; // time: ten seconds at the middle speed

double hashed(int x, int y, int seed)
{
    auto h = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U +
             static_cast<std::uint32_t>(seed) * 2246822519U;
    h = (h ^ (h >> 13U)) * 1274126177U;
    h = (h ^ (h >> 16U)) * 2654435761U;
    return (h ^ (h >> 15U)) / 4294967296.0;
}

/// Smooth noise, 0.0 to 1.0, that repeats after 1.0 in both directions, with nx by ny cells in between.
double noise(double u, double v, int nx, int ny, int seed)
{
    const double x = wrap(u) * nx;
    const double y = wrap(v) * ny;
    const int ix = static_cast<int>(x) % nx;
    const int iy = static_cast<int>(y) % ny;
    const double fx = smooth(x - std::floor(x));
    const double fy = smooth(y - std::floor(y));
    const auto at = [=](int dx, int dy) { return hashed((ix + dx) % nx, (iy + dy) % ny, seed); };
    const double top = at(0, 0) * (1 - fx) + at(1, 0) * fx;
    const double bottom = at(0, 1) * (1 - fx) + at(1, 1) * fx;
    return top * (1 - fy) + bottom * fy;
}

/// Three octaves of it, stretched to use the whole range.
double clouds(double u, double v, int nx, int ny, int seed)
{
    const double sum = noise(u, v, nx, ny, seed) * 0.57 + noise(u, v, nx * 2, ny * 2, seed + 1) * 0.28 +
                       noise(u, v, nx * 4, ny * 4, seed + 2) * 0.15;
    return smooth((sum - 0.18) / 0.64);
}

/// A soft spot around 0 on a circle of length 1.
double bump(double distance, double width)
{
    const double d = std::abs(wrap(distance + 0.5) - 0.5) / width;
    return std::exp(-d * d);
}

/// Curtains of green, teal and violet that sway over a night sky.
Color aurora(double u, double v)
{
    Color light = Color{0.0, 0.012, 0.09} + Color{0.05, 0.0, 0.16} * clouds(u, v, 3, 3, 40);
    const Color tints[] = {
        {0.0, 1.0, 0.30}, {0.0, 0.75, 0.85}, {0.52, 0.0, 1.0}, {0.05, 1.0, 0.12}, {0.85, 0.0, 0.62}};
    for (int k = 0; k < 5; ++k) {
        const double sway = 0.07 * std::sin(kTau * (v + k * 0.37)) +
                            0.035 * std::sin(kTau * (2 * v + k * 0.61)) +
                            0.05 * (noise(u, v, 4, 5, 50 + k) - 0.5);
        const double breath = 0.25 + 0.75 * clouds(k * 0.2, v + k * 0.17, 3, 4, 60 + k);
        const double folds = 0.55 + 0.45 * noise(u, v, 22, 6, 70 + k);
        light = light + tints[k] * (bump(u - k * 0.2 - 0.1 - sway, 0.085) * breath * folds);
    }
    // Where curtains overlap their sum would be pale.
    const double white = std::min({light.r, light.g, light.b});
    return (light + Color{-white, -white, -white} * 0.85) * 1.3;
}

/// Long swells from deep blue to turquoise with bright crests.
Color ocean(double u, double v)
{
    const double drift = 0.16 * (clouds(u, v, 4, 4, 80) - 0.5);
    const double swell = 0.5 + 0.5 * std::sin(kTau * (2 * u + 2 * v + 2 * drift));
    const double chop = 0.5 + 0.5 * std::sin(kTau * (5 * u + 3 * v - 5 * drift));
    const double height = 0.56 * swell + 0.17 * chop + 0.27 * clouds(u, v, 6, 5, 83);
    const QVector<Color> depths{
        {0.0, 0.0, 0.26}, {0.0, 0.06, 0.62}, {0.0, 0.25, 1.0}, {0.0, 0.66, 0.90}, {0.0, 1.0, 0.70}};
    const double crest = smooth((height - 0.80) / 0.16);
    return mix(gradient(depths, (height - 0.08) / 0.8), Color{0.35, 1.0, 0.95}, crest * 0.8);
}

/// Slow molten rock: glowing veins between dark red plates.
Color lava(double u, double v)
{
    const double wu = u + 0.10 * (noise(u, v, 5, 5, 90) - 0.5);
    const double wv = v + 0.12 * (noise(u, v, 5, 5, 91) - 0.5);
    const auto ridge = [wu, wv](int nx, int ny, int seed) {
        return 1 - std::abs(2 * noise(wu, wv, nx, ny, seed) - 1);
    };
    const double veins = std::pow(0.68 * ridge(5, 4, 92) + 0.32 * ridge(11, 9, 93), 2.2);
    const double heat = clouds(wu, wv, 4, 3, 96);
    const QVector<Color> fire{{0.10, 0.0, 0.0}, {0.45, 0.0, 0.0}, {0.90, 0.03, 0.0},
                              {1.0, 0.17, 0.0}, {1.0, 0.38, 0.0}, {1.0, 0.68, 0.03}};
    return gradient(fire, 0.05 + 0.75 * veins + 0.32 * heat);
}

/// The whole evening sky, from amber to indigo and back.
Color sunset(double u, double v)
{
    const double lift = 0.10 * std::sin(kTau * (u + v)) + 0.06 * std::sin(kTau * (2 * u - v)) +
                        0.10 * (clouds(u, v, 4, 3, 100) - 0.5);
    const QVector<Color> sky{{1.0, 0.50, 0.0},  {1.0, 0.20, 0.02}, {1.0, 0.0, 0.16},
                             {0.84, 0.0, 0.50}, {0.44, 0.0, 0.82}, {0.12, 0.0, 0.66},
                             {0.40, 0.0, 0.56}, {0.92, 0.0, 0.24}, {1.0, 0.28, 0.0}};
    return cycle(sky, u + v + lift);
}

/// Neon tubes: clear bands of candy colours with a dark rim, running along the strip.
Color neon(double u, double v)
{
    const QVector<Color> tubes{{1.0, 0.0, 0.42}, {0.62, 0.0, 1.0}, {0.0, 0.62, 1.0},
                               {0.0, 1.0, 0.55}, {1.0, 0.80, 0.0}, {1.0, 0.16, 0.0}};
    const double bend = 0.03 * std::sin(kTau * (v + u)) + 0.02 * std::sin(kTau * (2 * v - 3 * u));
    const double at = wrap(u - 2 * v + bend) * tubes.size();
    const int i = std::min(static_cast<int>(at), tubes.size() - 1);
    const double across = std::abs(at - i - 0.5) * 2; // 0 in the middle of a tube, 1 at its rim
    const double shine = 0.10 + 0.90 * smooth((1.0 - across) / 0.55);
    const double pulse = 0.82 + 0.18 * std::sin(kTau * (4 * v + i / 6.0));
    return tubes[i] * (shine * pulse);
}

/// Fireflies that light up and fade over moss and leaves.
Color fireflies(double u, double v)
{
    const double leaves = clouds(u, v, 6, 3, 110);
    Color light = gradient({{0.0, 0.05, 0.03}, {0.0, 0.20, 0.06}, {0.0, 0.42, 0.06}}, leaves);
    for (int k = 0; k < 34; ++k) {
        const double du = u - hashed(k, 1, 120) - 0.02 * std::sin(kTau * (v + hashed(k, 2, 120)));
        const double dv = v - hashed(k, 3, 120);
        const double size = 0.010 + 0.012 * hashed(k, 4, 120);
        const Color tint = mix(Color{0.55, 1.0, 0.0}, Color{1.0, 0.72, 0.0}, hashed(k, 5, 120));
        const double glow = bump(du, size) + 0.35 * bump(du, size * 3.2);
        light = light + tint * (glow * bump(dv, 0.045 + 0.05 * hashed(k, 6, 120)));
    }
    return light;
}

bool write(const QString& path, int number)
{
    QImage picture(kWidth, kHeight, QImage::Format_RGB888);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x)
            picture.setPixel(x, y, toRgb(colorMapColor(number, double(x) / kWidth, double(y) / kHeight)));
    }
    return picture.save(path);
}

} // namespace

Color colorMapColor(int number, double u, double v)
{
    static constexpr Color (*kPatterns[])(double, double) = {aurora, ocean, lava, sunset, neon, fireflies};
    return kPatterns[number - kFirstColorMap](u, v);
}

bool writeColorMapPictures(const QString& folder)
{
    for (int number = kFirstColorMap; number <= kLastColorMap; ++number) {
        if (!write(QStringLiteral("%1/ColorMap_%2.png").arg(folder).arg(number), number))
            return false;
    }
    return true;
}
