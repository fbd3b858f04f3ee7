#include "Lens.h"

#include <QPainterPath>
#include <QRadialGradient>

namespace {

constexpr QPointF kMiddle(50, 50);

} // namespace

Lens::Lens(int pixels)
    : m_image(pixels, pixels, QImage::Format_ARGB32_Premultiplied)
{
    m_image.fill(Qt::transparent);
    m_painter.begin(&m_image);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    m_painter.scale(pixels / 100.0, pixels / 100.0);
    QRadialGradient glass(kMiddle - QPointF(0, 8), kRadius * 1.1);
    glass.setColorAt(0, QColor(0x34, 0x37, 0x42));
    glass.setColorAt(1, QColor(0x17, 0x18, 0x1d));
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(glass);
    m_painter.drawEllipse(kMiddle, kRadius, kRadius);
    QPainterPath inside;
    inside.addEllipse(kMiddle, kRadius - 0.6, kRadius - 0.6);
    m_painter.setClipPath(inside);
}

void Lens::shine(const QPointF& at, double radius, const QColor& color, double strength)
{
    QRadialGradient light(at, radius);
    for (int i = 0; i <= 8; ++i) {
        const double t = i / 8.0;
        QColor faded = color;
        faded.setAlphaF(
            std::min(1.0, strength * (std::exp(-4 * t * t) - std::exp(-4.0)) / (1 - std::exp(-4.0))));
        light.setColorAt(t, faded);
    }
    m_painter.save();
    m_painter.setCompositionMode(QPainter::CompositionMode_Screen);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(light);
    m_painter.drawEllipse(at, radius, radius);
    m_painter.restore();
}

void Lens::tube(const QPainterPath& path, double width, const QColor& color)
{
    const auto stroke = [&](double times, const QColor& ink, double alpha) {
        QColor faded = ink;
        faded.setAlphaF(alpha);
        m_painter.strokePath(path, QPen(faded, width * times, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    };
    for (const double halo : {3.4, 2.8, 2.2, 1.7})
        stroke(halo, color, 0.10);
    stroke(1, color, 1);
    stroke(0.36, blend(color, Qt::white, 0.75), 1);
}

QImage Lens::finished()
{
    m_painter.resetTransform();
    m_painter.scale(m_image.width() / 100.0, m_image.width() / 100.0);
    m_painter.setClipping(false);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(QColor(0x14, 0x15, 0x19), 2));
    m_painter.drawEllipse(kMiddle, kRadius - 1, kRadius - 1);
    m_painter.end();
    return m_image;
}

QColor blend(const QColor& a, const QColor& b, double t)
{
    return QColor::fromRgbF(a.redF() + (b.redF() - a.redF()) * t, a.greenF() + (b.greenF() - a.greenF()) * t,
                            a.blueF() + (b.blueF() - a.blueF()) * t);
}

QColor toColor(const Color& color)
{
    return QColor::fromRgb(toRgb(color));
}
