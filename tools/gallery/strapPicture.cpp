#include "strapPicture.h"

#include "effects/IColorStrapManager.h"

#include <QLinearGradient>
#include <QPainter>
#include <array>
#include <cmath>

namespace {

constexpr int kLeds = 60;
constexpr int kPitch = 15;      // pixels from LED to LED
constexpr int kHeight = 52;     // of one strip
constexpr int kLabelWidth = 48; // names and numbers
constexpr double kMonitorGamma = 2.2;

using Light = std::array<double, 3>; ///< red, green, blue; 1.0 is what an LED gives at most

/// One colour an LED, taken from the gradient as the effects take it.
QVector<Light> lightsOf(const ColorStrap& strap, double gamma)
{
    QImage row(kLeds, 1, QImage::Format_RGB888);
    QLinearGradient gradient(0, 0, kLeds, 0);
    for (const KeyColor& keyColor : strap.keyColors)
        gradient.setColorAt(keyColor.key, keyColor.color);
    gradient.setColorAt(0, strap.endsColor);
    gradient.setColorAt(1, strap.endsColor);
    QPainter(&row).fillRect(row.rect(), gradient);
    QVector<Light> lights;
    for (int i = 0; i < kLeds; ++i) {
        const QColor color = row.pixelColor(i, 0);
        lights.append(
            {std::pow(color.redF(), gamma), std::pow(color.greenF(), gamma), std::pow(color.blueF(), gamma)});
    }
    return lights;
}

double bell(double distance, double sigma)
{
    return std::exp(-distance * distance / (2 * sigma * sigma));
}

/// What the eye gets from an amount of light: film that saturates softly, then the monitor's own curve.
int exposed(double light)
{
    return qRound(255 * std::pow(1 - std::exp(-light), 1 / kMonitorGamma));
}

/// A row of bright dots, and the wide wash of light on the wall around them.
void paintStrip(QImage& picture, int top, const QVector<Light>& lights)
{
    constexpr double kDot = 3;
    constexpr double kWash = 16;
    for (int x = 0; x < kLeds * kPitch; ++x) {
        Light dot{};
        Light wash{};
        for (int i = 0; i < kLeds; ++i) {
            const double distance = x + 0.5 - (i + 0.5) * kPitch;
            for (std::size_t c = 0; c < dot.size(); ++c) {
                dot[c] += lights[i][c] * bell(distance, kDot);
                wash[c] += lights[i][c] * bell(distance, kWash) * kPitch / kWash;
            }
        }
        for (int y = 0; y < kHeight; ++y) {
            const double off = y + 0.5 - kHeight / 2.0;
            const auto at = [&](std::size_t c) {
                return exposed(1.6 * dot[c] * bell(off, kDot) + 0.4 * wash[c] * bell(off, kWash * 0.6));
            };
            picture.setPixel(kLabelWidth + x, top + y, qRgb(at(0), at(1), at(2)));
        }
    }
}

} // namespace

QImage strapPicture(IColorStrapManager& straps)
{
    const int count = straps.strapCount();
    QImage picture(kLabelWidth + kLeds * kPitch, 2 * kHeight * count, QImage::Format_RGB32);
    picture.fill(Qt::black);
    for (int i = 0; i < count; ++i) {
        const ColorStrap strap = straps.strap(i);
        const int top = 2 * kHeight * i;
        paintStrip(picture, top, lightsOf(strap, 1));
        paintStrip(picture, top + kHeight, lightsOf(strap, kMonitorGamma));
        QPainter painter(&picture);
        painter.setPen(Qt::gray);
        painter.drawText(QRect(0, top, kLabelWidth, 2 * kHeight), Qt::AlignCenter, strap.name);
    }
    return picture;
}
