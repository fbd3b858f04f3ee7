#include "furniture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

const QColor kEdge(58, 62, 74);

QLinearGradient shade(const QRectF& rect, const QColor& top, const QColor& bottom)
{
    QLinearGradient result(rect.topLeft(), rect.bottomLeft());
    result.setColorAt(0, top);
    result.setColorAt(1, bottom);
    return result;
}

void drawBox(QPainter& painter, const QRectF& rect, double radius, const QColor& top, const QColor& bottom)
{
    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(shade(rect, top, bottom));
    painter.drawRoundedRect(rect, radius, radius);
}

} // namespace

QImage roomGround(const QSize& size, double floor)
{
    QImage ground(size, QImage::Format_RGB32);
    ground.fill(QColor(24, 24, 28));
    QPainter painter(&ground);
    if (floor > 0) {
        const QRectF desk(0, floor, size.width(), size.height() - floor);
        painter.fillRect(desk, shade(desk, QColor(30, 28, 32), QColor(20, 20, 23)));
        painter.fillRect(QRectF(0, floor, size.width(), 1.5), QColor(56, 54, 62));
    }
    return ground;
}

void drawMonitorBody(QPainter& painter, const QRectF& rect, double foot)
{
    const double x = rect.center().x();
    const QRectF neck(x - 19, rect.bottom() - 4, 38, foot - rect.bottom());
    QLinearGradient round(neck.topLeft(), neck.topRight());
    round.setColorAt(0, QColor(62, 64, 76));
    round.setColorAt(0.5, QColor(34, 35, 43));
    round.setColorAt(1, QColor(62, 64, 76));
    painter.setPen(Qt::NoPen);
    painter.setBrush(round);
    painter.drawRect(neck);
    drawBox(painter, QRectF(x - 82, foot - 7, 164, 9), 4, QColor(58, 60, 71), QColor(30, 31, 38));
    drawBox(painter, rect, 8, QColor(28, 29, 35), QColor(12, 12, 15));
}

void drawPanel(QPainter& painter, const QRectF& rect)
{
    drawBox(painter, rect, 12, QColor(20, 21, 26), QColor(11, 11, 14));
}

void drawShelf(QPainter& painter, const QRectF& rect)
{
    drawBox(painter, rect, 3, QColor(70, 60, 56), QColor(38, 33, 33));
}

void drawPlant(QPainter& painter, const QPointF& foot, double scale)
{
    painter.save();
    painter.translate(foot);
    painter.scale(scale, scale);
    painter.setPen(Qt::NoPen);
    for (int i = -4; i <= 4; ++i) {
        painter.save();
        painter.translate(0, -52);
        painter.rotate(i * 17);
        const double length = 96 - 7 * std::abs(i) + (i % 2 == 0 ? 0 : 12);
        QPainterPath leaf(QPointF(0, 0));
        leaf.cubicTo({-17, -length * 0.45}, {-9, -length * 0.85}, {0, -length});
        leaf.cubicTo({9, -length * 0.85}, {17, -length * 0.45}, {0, 0});
        const QColor green = i % 2 == 0 ? QColor(28, 62, 52) : QColor(20, 46, 42);
        painter.setBrush(green);
        painter.drawPath(leaf);
        painter.setPen(QPen(green.lighter(150), 1.2));
        painter.drawLine(QPointF(0, -4), QPointF(0, -length * 0.86));
        painter.setPen(Qt::NoPen);
        painter.restore();
    }
    QPainterPath pot(QPointF(-32, -58));
    pot.lineTo(32, -58);
    pot.lineTo(24, 0);
    pot.lineTo(-24, 0);
    pot.closeSubpath();
    painter.setBrush(shade(QRectF(-32, -58, 64, 58), QColor(74, 70, 78), QColor(40, 38, 45)));
    painter.drawPath(pot);
    painter.restore();
}

void drawSpeaker(QPainter& painter, const QPointF& foot, double scale)
{
    painter.save();
    painter.translate(foot);
    painter.scale(scale, scale);
    drawBox(painter, QRectF(-36, -118, 72, 118), 8, QColor(46, 47, 56), QColor(24, 25, 30));
    painter.setBrush(QColor(18, 18, 22));
    painter.setPen(QPen(QColor(78, 81, 94), 2));
    painter.drawEllipse(QPointF(0, -88), 13, 13);
    painter.drawEllipse(QPointF(0, -42), 26, 26);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(52, 54, 64));
    painter.drawEllipse(QPointF(0, -88), 4.5, 4.5);
    painter.drawEllipse(QPointF(0, -42), 9, 9);
    painter.restore();
}

void drawBooks(QPainter& painter, const QPointF& foot)
{
    const struct
    {
        double x, width, height;
        QColor color;
    } books[] = {{0, 17, 74, QColor(78, 58, 100)},
                 {19, 13, 64, QColor(42, 72, 98)},
                 {34, 19, 82, QColor(96, 56, 62)},
                 {55, 12, 70, QColor(58, 62, 74)}};
    for (const auto& book : books) {
        const QRectF rect(foot.x() + book.x, foot.y() - book.height, book.width, book.height);
        drawBox(painter, rect, 2, book.color, book.color.darker(170));
        painter.fillRect(QRectF(rect.x() + 2, rect.y() + 10, rect.width() - 4, 2), book.color.lighter(140));
    }
}

void drawKeyboard(QPainter& painter, const QRectF& rect)
{
    QPainterPath body(rect.topLeft() + QPointF(10, 0));
    body.lineTo(rect.topRight() - QPointF(10, 0));
    body.lineTo(rect.bottomRight());
    body.lineTo(rect.bottomLeft());
    body.closeSubpath();
    painter.setPen(QPen(kEdge, 1));
    painter.setBrush(shade(rect, QColor(40, 41, 49), QColor(26, 27, 32)));
    painter.drawPath(body);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(62, 64, 76));
    for (int row = 0; row < 3; ++row) {
        const double inset = 14 - row * 3;
        const double pitch = (rect.width() - 2 * inset) / 15;
        for (int key = 0; key < 15; ++key) {
            if (row == 2 && key > 4 && key < 10)
                continue;
            painter.drawRoundedRect(
                QRectF(rect.x() + inset + key * pitch + 1, rect.y() + 4 + row * 8, pitch - 2.4, 5.6), 1.2,
                1.2);
        }
    }
    const double pitch = (rect.width() - 16) / 15;
    painter.drawRoundedRect(QRectF(rect.x() + 8 + 5 * pitch + 1, rect.y() + 20, 5 * pitch - 2.4, 5.6), 1.2,
                            1.2);
}

void drawMouse(QPainter& painter, const QPointF& middle)
{
    drawBox(painter, QRectF(middle.x() - 13, middle.y() - 16, 26, 32), 12, QColor(48, 50, 60),
            QColor(28, 29, 35));
    painter.setPen(QPen(QColor(84, 87, 102), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(middle - QPointF(0, 10), middle - QPointF(0, 4));
}

void drawRidge(QPainter& painter, const QVector<QPointF>& points, const QColor& color)
{
    QPainterPath ridge(points.first());
    for (int i = 1; i + 1 < points.size(); ++i)
        ridge.quadTo(points[i], (points[i] + points[i + 1]) / 2);
    ridge.lineTo(points.last());
    ridge.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(ridge);
}
