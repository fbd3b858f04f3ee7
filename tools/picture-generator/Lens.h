#pragma once

#include "Color.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>

/// The dark round glass that every effect icon is drawn on, in a square of 100 by 100 units. It leaves the
/// rim of the light disc below it free, which shows whether the effect is chosen.
class Lens
{
public:
    static constexpr double kRadius = 36;

    /// `pixels`: the side of the picture.
    explicit Lens(int pixels);
    Lens(const Lens&) = delete;
    Lens& operator=(const Lens&) = delete;

    /// Paints in units; what is outside the glass is cut off.
    QPainter& painter() { return m_painter; }

    /// Fills the glass; x and y run from -1 to 1, y downwards.
    template <typename Shade>
    void fill(Shade shade)
    {
        const int side = m_image.width();
        QImage ground(side, side, QImage::Format_RGB32);
        for (int row = 0; row < side; ++row) {
            for (int column = 0; column < side; ++column)
                ground.setPixel(column, row, toRgb(shade(place(column), place(row))));
        }
        m_painter.drawImage(QRectF(0, 0, 100, 100), ground);
    }

    /// A spot of light that adds to what is below it.
    void shine(const QPointF& at, double radius, const QColor& color, double strength);
    /// A line of light: a wide faint halo, the colour, and a pale core.
    void tube(const QPainterPath& path, double width, const QColor& color);

    /// The finished icon with the edge of the glass on top.
    QImage finished();

private:
    double place(int pixel) const { return ((pixel + 0.5) * 100 / m_image.width() - 50) / kRadius; }

    QImage m_image;
    QPainter m_painter;
};

/// The lights of all icons that have no colours of their own.
const QColor kCoolLight(0x1e, 0xb4, 0xff);
const QColor kWarmLight(0xff, 0x3d, 0x8b);
const QColor kSunLight(0xff, 0xd9, 0x08);
const QColor kPaleLight(0xf4, 0xf6, 0xfa);
const QColor kDimLight(0x5a, 0x5e, 0x6b);

QColor blend(const QColor& a, const QColor& b, double t);
QColor toColor(const Color& color);
