#include "Picture.h"

#include <QPainter>
#include <QRadialGradient>

#include <cmath>

namespace {

constexpr int kSmallWidth = 160;

/// A light on its way: angular speeds in radians a second, sizes in shares of the picture's width.
struct DriftingLight
{
    double speedX, speedY, phase, size, hue, hueSpeed, strength;
};
constexpr DriftingLight kLights[] = {
    {0.31, 0.23, 0.0, 0.52, 0.58, 0.011, 0.85},  {0.19, 0.37, 1.7, 0.46, 0.83, -0.013, 0.80},
    {0.27, 0.17, 3.1, 0.42, 0.42, 0.017, 0.70},  {0.41, 0.29, 4.4, 0.38, 0.05, 0.007, 0.75},
    {0.23, 0.43, 5.6, 0.34, 0.13, -0.019, 0.60}, {0.37, 0.13, 2.4, 0.48, 0.70, 0.009, 0.70},
};

double turn(double hue)
{
    return hue - std::floor(hue);
}

} // namespace

void DriftingLights::paint(QPainter& painter, const QRect& area, double seconds)
{
    const QSize size(kSmallWidth, std::max(kSmallWidth * area.height() / std::max(area.width(), 1), 1));
    if (m_small.size() != size)
        m_small = QImage(size, QImage::Format_RGB32);
    m_small.fill(QColor(4, 5, 16));

    QPainter small(&m_small);
    small.setCompositionMode(QPainter::CompositionMode_Plus);
    small.setPen(Qt::NoPen);
    for (const DriftingLight& light : kLights) {
        // The way crosses the border, so that the edges of the screen are visited as well.
        const QPointF centre(size.width() * (0.5 + 0.55 * std::sin(light.speedX * seconds + light.phase)),
                             size.height() *
                                 (0.5 + 0.55 * std::cos(light.speedY * seconds + 2 * light.phase)));
        const double breath = 0.85 + 0.15 * std::sin(0.5 * seconds + light.phase);
        QRadialGradient gradient(centre, light.size * size.width() * breath);
        for (const double at : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0}) {
            const double glow = light.strength * std::pow(std::cos(at * M_PI / 2), 2);
            gradient.setColorAt(at, QColor::fromHsvF(turn(light.hue + light.hueSpeed * seconds), 0.92, glow));
        }
        small.fillRect(m_small.rect(), gradient);
    }
    small.end();

    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(area, m_small);
}

void SolidFields::paint(QPainter& painter, const QRect& area, double /*seconds*/)
{
    if (m_colors.size() < 4) {
        painter.fillRect(area, m_colors.value(0));
        return;
    }
    const int middleX = area.width() / 2;
    const int middleY = area.height() / 2;
    painter.fillRect(0, 0, middleX, middleY, m_colors[0]);
    painter.fillRect(middleX, 0, area.width() - middleX, middleY, m_colors[1]);
    painter.fillRect(0, middleY, middleX, area.height() - middleY, m_colors[2]);
    painter.fillRect(middleX, middleY, area.width() - middleX, area.height() - middleY, m_colors[3]);
}
