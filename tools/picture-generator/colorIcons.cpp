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
        for (int x = 8; x <= 92; ++x) {
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
    // Lamps around a sign; the run of light goes clockwise and has its head at the bottom right.
    constexpr int kLamps = 12;
    constexpr int kHead = 6;
    QPainterPath frame;
    frame.addRoundedRect(QRectF(24.5, 30.5, 51, 39), 12, 12);
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kLamps; ++i) {
        const QPointF at = frame.pointAtPercent(wrap((i + 0.5) / kLamps));
        const double lit = std::max(0.0, 1 - wrap(double(kHead - i) / kLamps) * kLamps / 9.5);
        const QColor color = blend(kCoolLight, kWarmLight, lit);
        lens.shine(at, 4 + 9 * lit, color, 0.8 * lit);
        painter.setBrush(blend(kDimLight, color, std::min(1.0, lit * 3)));
        painter.drawEllipse(at, 3.7 + 1.3 * lit, 3.7 + 1.3 * lit);
    }
    QPainterPath arrow(QPointF(-3.2, -6.4));
    arrow.lineTo(3.2, 0);
    arrow.lineTo(-3.2, 6.4);
    for (const double x : {45.5, 55.0})
        painter.strokePath(arrow.translated(x, 50),
                           QPen(x < 50 ? blend(kDimLight, kPaleLight, 0.35) : kPaleLight, 3.8, Qt::SolidLine,
                                Qt::RoundCap, Qt::RoundJoin));
}

void drawPixels(Lens& lens)
{
    // A face on a small matrix.
    const char* const rows[] = {"..#####..", ".#######.", "##.###.##", "##.###.##", "#########",
                                "##.###.##", "###...###", ".#######.", "..#####.."};
    constexpr double kPitch = 5.9;
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    lens.shine({50, 50}, 36, kSunLight, 0.22);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            if (rows[y][x] != '#')
                continue;
            const QPointF at(50 + (x - 4) * kPitch, 50 + (y - 4) * kPitch);
            painter.setBrush(blend(kSunLight, QColor(0xff, 0x8a, 0x1e), y / 14.0));
            painter.drawRoundedRect(QRectF(at.x() - 2.65, at.y() - 2.65, 5.3, 5.3), 0.9, 0.9);
        }
    }
}
