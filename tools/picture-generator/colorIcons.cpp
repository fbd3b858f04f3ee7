#include "effectIcons.h"

#include "Lens.h"

#include <QConicalGradient>
#include <QLinearGradient>
#include <QPainterPath>

namespace {

QPainterPath heart(double scale)
{
    QPainterPath path(QPointF(50, 50 + 22 * scale));
    path.cubicTo({50 - 14 * scale, 50 + 11 * scale}, {50 - 25 * scale, 50 + 1 * scale},
                 {50 - 22 * scale, 50 - 11 * scale});
    path.cubicTo({50 - 19 * scale, 50 - 21 * scale}, {50 - 5 * scale, 50 - 22 * scale},
                 {50, 50 - 10 * scale});
    path.cubicTo({50 + 5 * scale, 50 - 22 * scale}, {50 + 19 * scale, 50 - 21 * scale},
                 {50 + 22 * scale, 50 - 11 * scale});
    path.cubicTo({50 + 25 * scale, 50 + 1 * scale}, {50 + 14 * scale, 50 + 11 * scale},
                 {50, 50 + 22 * scale});
    return path;
}

QColor rainbow(double t)
{
    return QColor::fromHsvF(wrap(t), 0.86, 1.0);
}

} // namespace

void drawDrop(Lens& lens)
{
    lens.shine({50, 54}, 34, kCoolLight, 0.6);
    QPainterPath drop(QPointF(50, 25));
    drop.cubicTo({54, 33}, {67, 44}, {67, 56});
    drop.cubicTo({67, 66}, {59, 73}, {50, 73});
    drop.cubicTo({41, 73}, {33, 66}, {33, 56});
    drop.cubicTo({33, 44}, {46, 33}, {50, 25});
    QLinearGradient body(QPointF(40, 30), QPointF(60, 74));
    body.setColorAt(0, blend(kCoolLight, Qt::white, 0.35));
    body.setColorAt(1, QColor(0x00, 0x84, 0xf0));
    lens.painter().fillPath(drop, body);
    QPainterPath highlight;
    highlight.arcMoveTo(QRectF(38.5, 45.5, 23, 22), 185);
    highlight.arcTo(QRectF(38.5, 45.5, 23, 22), 185, 65);
    lens.painter().strokePath(highlight, QPen(kPaleLight, 3.4, Qt::SolidLine, Qt::RoundCap));
}

void drawRainbow(Lens& lens)
{
    QConicalGradient wheel(QPointF(50, 50), 90);
    for (int i = 0; i <= 12; ++i)
        wheel.setColorAt(i / 12.0, rainbow(i / 12.0));
    QPainterPath ring;
    ring.addEllipse(QPointF(50, 50), 22, 22);
    for (int i = 0; i < 24; ++i)
        lens.shine(QPointF(50 + 22 * std::sin(kTau * i / 24), 50 - 22 * std::cos(kTau * i / 24)), 16,
                   rainbow(1 - i / 24.0), 0.22);
    lens.painter().strokePath(ring, QPen(QBrush(wheel), 11));
}

void drawWaves(Lens& lens)
{
    for (int band = 0; band < 5; ++band) {
        QPainterPath path;
        for (double x = 8; x <= 92; x += 1) {
            const double y = 29 + band * 10.5 + 6.5 * std::sin(kTau * (x / 46.0 + band * 0.07));
            x > 8 ? path.lineTo(x, y) : path.moveTo(x, y);
        }
        QLinearGradient flow(QPointF(14, 0), QPointF(86, 0));
        for (int i = 0; i <= 6; ++i)
            flow.setColorAt(i / 6.0, rainbow(0.93 + band * 0.16 + i * 0.045));
        QPainter& painter = lens.painter();
        for (const double halo : {13.0, 11.0, 9.0}) {
            painter.setOpacity(0.12);
            painter.strokePath(path, QPen(QBrush(flow), halo));
        }
        painter.setOpacity(1);
        painter.strokePath(path, QPen(QBrush(flow), 6.4, Qt::SolidLine, Qt::RoundCap));
    }
}

void drawHeart(Lens& lens)
{
    const QColor violet(0x7a, 0x3c, 0xff);
    lens.shine({50, 50}, 40, violet, 0.45);
    QPainter& painter = lens.painter();
    // Echoes that fade outwards, as a shadow that beats with it.
    for (const double scale : {1.42, 1.20}) {
        painter.setOpacity(scale > 1.3 ? 0.35 : 0.7);
        painter.strokePath(heart(scale), QPen(blend(kWarmLight, violet, scale > 1.3 ? 1 : 0.6), 2.2));
    }
    painter.setOpacity(1);
    QLinearGradient body(QPointF(34, 32), QPointF(64, 70));
    body.setColorAt(0, QColor(0xff, 0x6a, 0x8a));
    body.setColorAt(0.45, kWarmLight);
    body.setColorAt(1, violet);
    painter.fillPath(heart(0.98), body);
}

void drawMarquee(Lens& lens)
{
    constexpr int kDots = 12;
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kDots; ++i) {
        const QPointF at(50 + 23.5 * std::sin(kTau * i / kDots), 50 - 23.5 * std::cos(kTau * i / kDots));
        // The head of the run is at the top right, its tail behind it.
        const double tail = wrap((2.0 - i) / kDots) * kDots;
        const double lit = std::max(0.0, 1 - tail / 7);
        const QColor color = blend(kCoolLight, kWarmLight, lit);
        if (lit > 0)
            lens.shine(at, 5 + 8 * lit, color, 0.75 * lit);
        painter.setBrush(blend(kDimLight, color, std::min(1.0, lit * 1.6)));
        painter.drawEllipse(at, 2.6 + 1.9 * lit, 2.6 + 1.9 * lit);
    }
    QPainterPath arrow(QPointF(43.5, 41));
    arrow.lineTo(53.5, 50);
    arrow.lineTo(43.5, 59);
    painter.strokePath(arrow.translated(-3.5, 0),
                       QPen(kDimLight, 4.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.strokePath(arrow.translated(6, 0),
                       QPen(kPaleLight, 4.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void drawPixels(Lens& lens)
{
    // A landscape: s sun, m mountain, g ground.
    const char* const rows[] = {".......", "....ss.", "....ss.", ".m.....", "mmm..m.", "mmmmmmm", "ggggggg"};
    constexpr double kPitch = 7.0;
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    lens.shine({50 + kPitch * 1.5, 50 - kPitch * 1.5}, 20, kWarmLight, 0.6);
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 7; ++x) {
            const QPointF at(50 + (x - 3) * kPitch, 50 + (y - 3) * kPitch);
            QColor color = QColor(0x3a, 0x3e, 0x4a);
            if (rows[y][x] == 's')
                color = kWarmLight;
            else if (rows[y][x] == 'm')
                color = blend(kCoolLight, Qt::white, y == 3 ? 0.6 : 0.30 * (6 - y) / 2);
            else if (rows[y][x] == 'g')
                color = QColor(0x12, 0x7a, 0xd0);
            painter.setBrush(color);
            painter.drawRoundedRect(QRectF(at.x() - 2.8, at.y() - 2.8, 5.6, 5.6), 1.2, 1.2);
        }
    }
}
