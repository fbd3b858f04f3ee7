#include "glyphPictures.h"

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QTransform>
#include <QVector>

namespace {

constexpr int kDensities = 3;

/// Strokes on a square of `size` units.
struct Glyph
{
    const char* name;
    int size;
    double width;
    QColor color;
    QVector<QVector<QPointF>> strokes;
};

const QColor kInk(0xc4, 0xc4, 0xc4);
const QColor kAccent(0xff, 0xd9, 0x08);
const QColor kOnAccent(0x22, 0x22, 0x22);

/// Degrees from three o'clock on, clockwise where the end is smaller.
QVector<QPointF> arc(QPointF centre, double radius, int from, int to)
{
    constexpr int kStep = 5;
    QVector<QPointF> points;
    for (int degrees = from; from < to ? degrees <= to : degrees >= to; degrees += from < to ? kStep : -kStep)
        points.append(centre + QLineF::fromPolar(radius, degrees).p2());
    return points;
}

QVector<Glyph> glyphs()
{
    return {
        {"arrowUp", 10, 1.5, kInk, {{{2, 6.5}, {5, 3.5}, {8, 6.5}}}},
        {"arrowDown", 10, 1.5, kInk, {{{2, 3.5}, {5, 6.5}, {8, 3.5}}}},
        {"check", 14, 2.0, kOnAccent, {{{3, 7.5}, {6, 10.5}, {11, 4}}}},
        {"quit", 16, 1.5, kInk, {{{4, 4}, {12, 12}}, {{12, 4}, {4, 12}}}},
        {"warning",
         16,
         1.5,
         kAccent,
         {{{8, 2.25}, {14, 13.25}, {2, 13.25}, {8, 2.25}}, {{8, 6.5}, {8, 9}}, {{8, 11}, {8, 11.01}}}},
        {"minimise", 16, 1.5, kInk, {{{3.75, 8}, {12.25, 8}}}},
        {"information",
         36,
         3,
         kAccent,
         {arc({18, 18}, 15, 0, 360), {{18, 17}, {18, 25}}, {{18, 11}, {18, 11.01}}}},
        {"question",
         36,
         3,
         kAccent,
         {arc({18, 18}, 15, 0, 360),
          arc({18, 14.5}, 4, 180, -70) + QVector<QPointF>{{18, 20.5}},
          {{18, 25.5}, {18, 25.51}}}},
        {"trouble",
         36,
         3,
         kAccent,
         {{{18, 4}, {33, 31}, {3, 31}, {18, 4}}, {{18, 14}, {18, 21}}, {{18, 26}, {18, 26.01}}}},
    };
}

QImage emptyPicture(int side)
{
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    return picture;
}

QImage draw(const Glyph& glyph, int density)
{
    QImage picture = emptyPicture(glyph.size * density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    painter.setPen(QPen(glyph.color, glyph.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QVector<QPointF>& stroke : glyph.strokes)
        painter.drawPolyline(stroke.constData(), stroke.size());
    return picture;
}

/// A gear of eight teeth on 20 units.
QImage drawGear(int density)
{
    QImage picture = emptyPicture(20 * density);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    painter.translate(10, 10);
    QPainterPath gear;
    gear.addEllipse(QPointF(0, 0), 6.2, 6.2);
    QPainterPath tooth(QPointF(-2.1, -5.4));
    tooth.lineTo(-1.35, -8.4);
    tooth.lineTo(1.35, -8.4);
    tooth.lineTo(2.1, -5.4);
    tooth.closeSubpath();
    for (int i = 0; i < 8; ++i)
        gear = gear.united(QTransform().rotate(45.0 * i).map(tooth));
    QPainterPath hole;
    hole.addEllipse(QPointF(0, 0), 2.9, 2.9);
    painter.setPen(QPen(kInk, 0.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(kInk);
    painter.drawPath(gear.subtracted(hole));
    return picture;
}

QString pathOf(const QString& folder, const char* name, int density)
{
    const QString suffix = density == 1 ? QString() : QStringLiteral("@%1x").arg(density);
    return QStringLiteral("%1/%2%3.png").arg(folder, QLatin1String(name), suffix);
}

} // namespace

bool writeGlyphPictures(const QString& folder)
{
    for (int density = 1; density <= kDensities; ++density) {
        for (const Glyph& glyph : glyphs()) {
            if (!draw(glyph, density).save(pathOf(folder, glyph.name, density)))
                return false;
        }
        if (!drawGear(density).save(pathOf(folder, "settings", density)))
            return false;
    }
    return true;
}
