#include "effectIcons.h"

#include "Lens.h"

#include <QConicalGradient>
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

void drawMeters(Lens& lens)
{
    // Level meters of lamps, from green to red.
    const int lit[] = {4, 7, 5};
    constexpr int kLamps = 7;
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    lens.shine({50, 62}, 34, QColor::fromHsvF(1 / 3.0, 1, 1), 0.3);
    for (int meter = 0; meter < 3; ++meter) {
        for (int lamp = 0; lamp < kLamps; ++lamp) {
            const double rise = lamp / (kLamps - 1.0);
            const QRectF place(50 + (meter - 1) * 15.5 - 5.6, 67.5 - lamp * 6.6, 11.2, 4.6);
            painter.setBrush(lamp < lit[meter] ? QColor::fromHsvF((1 - rise * rise) * 0.36, 0.85, 1)
                                               : blend(kDimLight, Qt::black, 0.35));
            painter.drawRoundedRect(place, 1.8, 1.8);
        }
    }
}

void drawBreath(Lens& lens)
{
    // A light that swells, in the colours of the mood.
    const QColor violet(0x7a, 0x3c, 0xff);
    lens.shine({50, 50}, 40, violet, 0.55);
    QPainter& painter = lens.painter();
    for (int ring = 3; ring >= 1; --ring) {
        painter.setOpacity(1.05 - ring * 0.28);
        QPainterPath circle;
        circle.addEllipse(QPointF(50, 50), 12.5 + ring * 5.6, 12.5 + ring * 5.6);
        painter.strokePath(circle, QPen(blend(kWarmLight, violet, ring / 3.0), 2.6 - ring * 0.4));
    }
    painter.setOpacity(1);
    QLinearGradient body(QPointF(40, 38), QPointF(60, 62));
    body.setColorAt(0, QColor(0xff, 0x9a, 0xb0));
    body.setColorAt(0.45, kWarmLight);
    body.setColorAt(1, violet);
    painter.setPen(Qt::NoPen);
    painter.setBrush(body);
    painter.drawEllipse(QPointF(50, 50), 12.5, 12.5);
}

void drawGauge(Lens& lens)
{
    // The louder, the further along the gradient.
    const QPointF hub(50, 57);
    constexpr double kReach = 23;
    QConicalGradient scale(hub, 0);
    scale.setColorAt(0, QColor(0xff, 0x2a, 0x2a));
    scale.setColorAt(0.25, QColor(0xc0, 0x3c, 0xe8));
    scale.setColorAt(0.5, QColor(0x1e, 0x5a, 0xff));
    lens.shine(hub - QPointF(0, 14), 34, QColor(0xc0, 0x3c, 0xe8), 0.45);
    QPainterPath arc;
    arc.arcMoveTo(QRectF(hub.x() - kReach, hub.y() - kReach, 2 * kReach, 2 * kReach), 180);
    arc.arcTo(QRectF(hub.x() - kReach, hub.y() - kReach, 2 * kReach, 2 * kReach), 180, -180);
    lens.painter().strokePath(arc, QPen(QBrush(scale), 8.5, Qt::SolidLine, Qt::FlatCap));
    QPainterPath needle(hub);
    needle.lineTo(hub + QPointF(std::sin(0.62), -std::cos(0.62)) * 20);
    lens.painter().strokePath(needle, QPen(kPaleLight, 3.4, Qt::SolidLine, Qt::RoundCap));
    lens.painter().setPen(Qt::NoPen);
    lens.painter().setBrush(kPaleLight);
    lens.painter().drawEllipse(hub, 4.6, 4.6);
}

void drawMirroredBands(Lens& lens)
{
    // Each column of lamps is a band, and both sides are mirrors of each other.
    const int heights[] = {0, 3, 2, 4, 6}; // by the distance from the middle
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    lens.shine({50, 60}, 36, kCoolLight, 0.35);
    for (int column = -4; column <= 4; ++column) {
        for (int lamp = 0; lamp < heights[std::abs(column)]; ++lamp) {
            painter.setBrush(blend(kCoolLight, kWarmLight, lamp / 5.0));
            painter.drawEllipse(QPointF(50 + column * 6.5, 65 - lamp * 6), 2.5, 2.5);
        }
    }
    painter.strokePath(upright(50, 32, 68), QPen(kDimLight, 1.6, Qt::DashLine, Qt::RoundCap));
}
