#include "matrixPictures.h"

#include "Color.h"

#include <QImage>
#include <QPointF>

namespace {

constexpr int kColumns = 23;
constexpr int kRows = 11;
constexpr int kTailParts = 36;
constexpr double kTailLength = 0.34; // of the round

/// Slow cold waves that leave dark gaps between them. All repeats after 1.0 of t.
Color night(double x, double y, double t)
{
    const double swirl = std::sin(kTau * (x * 0.055 + t)) + std::sin(kTau * (y * 0.09 + x * 0.03 - t)) +
                         std::sin(kTau * (std::hypot(x - 11, (y - 5) * 1.4) * 0.075 - 2 * t));
    const QVector<Color> sea{
        {0.0, 0.02, 0.30}, {0.0, 0.22, 0.75}, {0.0, 0.62, 0.60}, {0.20, 0.0, 0.70}, {0.42, 0.0, 0.62}};
    const double light = smooth((swirl + 2.0) / 3.6);
    return cycle(sea, 0.5 + 0.16 * swirl + t) * (0.05 + 0.80 * light * light);
}

/// The ball's way, a figure of eight that lies in the matrix.
QPointF wayOfBall(double t)
{
    return {11 + 9.3 * std::sin(kTau * t), 5 + 3.7 * std::sin(2 * kTau * t)};
}

double spot(double x, double y, const QPointF& at, double radius)
{
    const double dx = (x - at.x()) / radius;
    const double dy = (y - at.y()) / radius;
    return std::exp(-dx * dx - dy * dy);
}

/// A ball of fire with a tail that cools down behind it.
Color pixel(double x, double y, double t)
{
    const QVector<Color> heat{{1.0, 0.72, 0.10}, {1.0, 0.30, 0.0}, {0.95, 0.0, 0.18}, {0.45, 0.0, 0.45}};
    Color tail;
    double cover = 0;
    for (int i = kTailParts; i > 0; --i) {
        const double age = double(i) / kTailParts;
        const double strength = spot(x, y, wayOfBall(t - age * kTailLength), 1.35 - 0.6 * age) * (1 - age);
        tail = mix(tail, gradient(heat, age), std::min(strength * 1.1, 1.0));
        cover = std::max(cover, strength);
    }
    const double ball = spot(x, y, wayOfBall(t), 1.7);
    const Color behind = night(x, y, t) * (1 - smooth(cover * 2.2)) + tail;
    return mix(behind, Color{1.0, 0.85, 0.42}, std::min(1.25 * ball, 1.0)) +
           Color{0.9, 0.9, 0.9} * std::pow(ball, 5);
}

} // namespace

bool writeMatrixPictures(const QString& folder)
{
    QImage picture(kColumns, kRows, QImage::Format_RGB32);
    for (int number = 1; number <= kMatrixPictures; ++number) {
        const double t = double(number - 1) / kMatrixPictures;
        for (int y = 0; y < kRows; ++y) {
            for (int x = 0; x < kColumns; ++x)
                picture.setPixel(x, y, toRgb(pixel(x, y, t)));
        }
        if (!picture.save(QStringLiteral("%1/%2.png").arg(folder).arg(number)))
            return false;
    }
    return true;
}
