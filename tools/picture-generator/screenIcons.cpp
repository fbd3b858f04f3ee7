#include "effectIcons.h"

#include "Lens.h"

#include <QLinearGradient>
#include <QPainterPath>

namespace {

const QRectF kScreen(29, 32, 42, 27);

/// The light on the wall along the lit part of the screen.
void lightWall(Lens& lens, const QRectF& lit)
{
    constexpr int kSpots = 9;
    for (int i = 0; i <= kSpots; ++i) {
        const double x = lit.left() + lit.width() * i / kSpots;
        const QColor color = blend(kWarmLight, kCoolLight, (x - kScreen.left()) / kScreen.width());
        if (lit.top() == kScreen.top())
            lens.shine({x, lit.top()}, 15, color, 0.36);
        if (lit.bottom() == kScreen.bottom())
            lens.shine({x, lit.bottom()}, 15, color, 0.36);
    }
    for (int i = 0; i <= kSpots; ++i) {
        const double y = lit.top() + lit.height() * i / kSpots;
        if (lit.left() == kScreen.left())
            lens.shine({lit.left(), y}, 15, kWarmLight, 0.36);
        if (lit.right() == kScreen.right())
            lens.shine({lit.right(), y}, 15, kCoolLight, 0.36);
    }
}

void drawMonitor(Lens& lens, const QRectF& lit)
{
    lightWall(lens, lit);
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(kPaleLight);
    painter.drawRect(QRectF(47, 60, 6, 7));
    painter.drawRoundedRect(QRectF(39, 66, 22, 4), 2, 2);
    painter.drawRoundedRect(kScreen.adjusted(-3.4, -3.4, 3.4, 3.4), 5, 5);
    painter.setBrush(QColor(0x22, 0x24, 0x2b));
    painter.drawRoundedRect(kScreen, 2, 2);
    QLinearGradient light(kScreen.topLeft(), kScreen.topRight());
    light.setColorAt(0, kWarmLight);
    light.setColorAt(0.5, QColor(0x8a, 0x4d, 0xff));
    light.setColorAt(1, kCoolLight);
    QPainterPath screen;
    screen.addRoundedRect(kScreen, 2, 2);
    QPainterPath part;
    part.addRect(lit);
    painter.fillPath(screen.intersected(part), light);
}

} // namespace

void drawFullScreen(Lens& lens)
{
    drawMonitor(lens, kScreen);
}

void drawTopHalf(Lens& lens)
{
    drawMonitor(lens, {kScreen.left(), kScreen.top(), kScreen.width(), kScreen.height() / 2});
}

void drawBottomHalf(Lens& lens)
{
    drawMonitor(lens, {kScreen.left(), kScreen.center().y(), kScreen.width(), kScreen.height() / 2});
}

void drawLeftHalf(Lens& lens)
{
    drawMonitor(lens, {kScreen.left(), kScreen.top(), kScreen.width() / 2, kScreen.height()});
}

void drawRightHalf(Lens& lens)
{
    drawMonitor(lens, {kScreen.center().x(), kScreen.top(), kScreen.width() / 2, kScreen.height()});
}

void drawCinema(Lens& lens)
{
    drawMonitor(lens, kScreen);
    // The bars above and below a film, and the sign that it plays.
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x14, 0x15, 0x1a));
    painter.drawRect(QRectF(kScreen.left(), kScreen.top(), kScreen.width(), 5));
    painter.drawRect(QRectF(kScreen.left(), kScreen.bottom() - 5, kScreen.width(), 5));
    QPainterPath play(QPointF(47, 40.5));
    play.lineTo(56, 45.5);
    play.lineTo(47, 50.5);
    play.closeSubpath();
    painter.setBrush(kPaleLight);
    painter.setPen(QPen(kPaleLight, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(play);
}
