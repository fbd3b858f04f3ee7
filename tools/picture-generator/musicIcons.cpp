#include "effectIcons.h"

#include "Lens.h"

#include <QLinearGradient>
#include <QPainterPath>

namespace {

QPainterPath upright(double x, double top, double bottom)
{
    QPainterPath path(QPointF(x, top));
    path.lineTo(x, bottom);
    return path;
}

} // namespace

void drawBars(Lens& lens)
{
    const double heights[] = {22, 38, 29, 46, 19};
    constexpr double kFloor = 71;
    QLinearGradient light(QPointF(0, kFloor), QPointF(0, 27));
    light.setColorAt(0, kCoolLight);
    light.setColorAt(0.55, QColor(0x8a, 0x4d, 0xff));
    light.setColorAt(1, kWarmLight);
    lens.shine({50, 60}, 34, kCoolLight, 0.4);
    for (int i = 0; i < 5; ++i) {
        const double x = 50 + (i - 2) * 10.4;
        const QPen pen(QBrush(light), 7, Qt::SolidLine, Qt::RoundCap);
        lens.painter().strokePath(upright(x, kFloor - heights[i] + 6, kFloor - 3), pen);
    }
}

void drawNotes(Lens& lens)
{
    lens.shine({42, 62}, 24, kWarmLight, 0.6);
    lens.shine({62, 56}, 24, kCoolLight, 0.6);
    QLinearGradient light(QPointF(34, 0), QPointF(68, 0));
    light.setColorAt(0, kWarmLight);
    light.setColorAt(1, kCoolLight);
    QPainter& painter = lens.painter();
    painter.translate(50, 50);
    painter.scale(1.16, 1.16);
    painter.translate(-51, -50);
    QPainterPath stems;
    stems.setFillRule(Qt::WindingFill);
    stems.addRect(QRectF(43.2, 36, 4.2, 29));
    stems.addRect(QRectF(63.2, 31, 4.2, 29));
    QPainterPath beam(QPointF(43.2, 34));
    beam.lineTo(67.4, 28);
    beam.lineTo(67.4, 37.5);
    beam.lineTo(43.2, 43.5);
    beam.closeSubpath();
    painter.fillPath(stems, light);
    painter.fillPath(beam, light);
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    for (const QPointF& head : {QPointF(40, 65.5), QPointF(60, 60.5)}) {
        QTransform tilt;
        tilt.translate(head.x(), head.y());
        tilt.rotate(-20);
        QPainterPath oval;
        oval.addEllipse(QPointF(0, 0), 7.8, 6.2);
        painter.drawPath(tilt.map(oval));
    }
}

void drawCentreBars(Lens& lens)
{
    const double heights[] = {44, 32, 19, 7};
    lens.shine({50, 50}, 30, kWarmLight, 0.45);
    for (int i = -3; i <= 3; ++i) {
        const double half = heights[std::abs(i)] / 2;
        const QColor color = blend(kWarmLight, kCoolLight, std::abs(i) / 3.0);
        lens.painter().strokePath(upright(50 + i * 8.8, 50 - half, 50 + half),
                                  QPen(color, 6, Qt::SolidLine, Qt::RoundCap));
    }
}

void drawRing(Lens& lens)
{
    constexpr int kRays = 20;
    lens.shine({50, 50}, 34, QColor(0x8a, 0x4d, 0xff), 0.4);
    for (int i = 0; i < kRays; ++i) {
        const double angle = kTau * i / kRays;
        const double beat = 0.5 + 0.5 * std::sin(3 * angle + 0.6);
        const double reach = 20 + 11 * beat;
        const QPointF out(std::sin(angle), -std::cos(angle));
        QPainterPath ray(QPointF(50, 50) + out * 15.5);
        ray.lineTo(QPointF(50, 50) + out * reach);
        lens.painter().strokePath(
            ray, QPen(blend(kCoolLight, kWarmLight, beat), 3.6, Qt::SolidLine, Qt::RoundCap));
    }
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(kPaleLight);
    painter.drawEllipse(QPointF(50, 50), 7.5, 7.5);
}
