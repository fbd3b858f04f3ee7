#include "glyphPictures.h"

#include <QImage>
#include <QPainter>
#include <QPointF>
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
const QColor kOnAccent(0x22, 0x22, 0x22);

QVector<Glyph> glyphs()
{
    return {
        {"arrowUp", 10, 1.5, kInk, {{{2, 6.5}, {5, 3.5}, {8, 6.5}}}},
        {"arrowDown", 10, 1.5, kInk, {{{2, 3.5}, {5, 6.5}, {8, 3.5}}}},
        {"check", 14, 2.0, kOnAccent, {{{3, 7.5}, {6, 10.5}, {11, 4}}}},
        {"quit", 16, 1.5, kInk, {{{4, 4}, {12, 12}}, {{12, 4}, {4, 12}}}},
    };
}

QImage draw(const Glyph& glyph, int density)
{
    QImage picture(glyph.size * density, glyph.size * density, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    painter.setPen(QPen(glyph.color, glyph.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const QVector<QPointF>& stroke : glyph.strokes)
        painter.drawPolyline(stroke.constData(), stroke.size());
    return picture;
}

} // namespace

bool writeGlyphPictures(const QString& folder)
{
    for (const Glyph& glyph : glyphs()) {
        for (int density = 1; density <= kDensities; ++density) {
            const QString suffix = density == 1 ? QString() : QStringLiteral("@%1x").arg(density);
            if (!draw(glyph, density)
                     .save(QStringLiteral("%1/%2%3.png").arg(folder, QLatin1String(glyph.name), suffix)))
                return false;
        }
    }
    return true;
}
