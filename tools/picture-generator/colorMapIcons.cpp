#include "effectIcons.h"

#include "Lens.h"
#include "colorMapPictures.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QVector>

namespace {

double brightness(const Color& c)
{
    return 0.3 * c.r + 0.6 * c.g + 0.1 * c.b;
}

/// `count` colours that stand for the map, from dark to bright.
QVector<QColor> paletteOf(int map, int count)
{
    QVector<Color> samples;
    for (int y = 0; y < 24; ++y) {
        for (int x = 0; x < 24; ++x)
            samples.append(colorMapColor(map, x / 24.0, y / 24.0));
    }
    std::sort(samples.begin(), samples.end(),
              [](const Color& a, const Color& b) { return brightness(a) < brightness(b); });
    QVector<QColor> palette;
    for (int i = 0; i < count; ++i)
        palette.append(toColor(samples[i * (samples.size() - 1) / (count - 1)]));
    return palette;
}

QPainterPath closed(const QVector<QPointF>& points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(points));
    path.closeSubpath();
    return path;
}

} // namespace

void drawAurora(Lens& lens)
{
    lens.fill([](double x, double y) {
        Color light = mix({0.02, 0.03, 0.13}, {0.03, 0.08, 0.20}, (y + 1) / 2);
        for (int layer = 0; layer < 2; ++layer) {
            const double foot = (layer == 0 ? 0.30 : -0.06) + 0.17 * std::sin(3.1 * x + 1.1 + 2.0 * layer);
            const double above = foot - y;
            const double fade = above < 0 ? std::exp(-above * above / 0.006) : std::exp(-above / 0.42);
            const double folds = 0.72 + 0.28 * std::sin(17 * x + 5 * std::sin(2.3 * x + layer) + layer);
            // The green curtain of the map in front, the teal and violet one behind it.
            Color tint = layer == 0 ? colorMapColor(3, 0.66 + 0.10 * x, 0.98)
                                    : colorMapColor(3, 0.32 + 0.16 * x, 0.12);
            tint = tint * (1 / std::max({tint.r, tint.g, tint.b, 0.2}));
            light = light + tint * (fade * folds * (layer == 0 ? 0.95 : 0.6));
        }
        return light;
    });
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xff, 0xff, 210));
    for (const QPointF& star : {QPointF(33, 27), QPointF(62, 21), QPointF(72, 35), QPointF(46, 20)})
        painter.drawEllipse(star, 0.9, 0.9);
    painter.setBrush(QColor(0x16, 0x1b, 0x2e));
    painter.drawPath(
        closed({{10, 90}, {10, 74}, {30, 62}, {41, 69}, {60, 58}, {76, 70}, {90, 64}, {90, 90}}));
    painter.setBrush(QColor(0x08, 0x0a, 0x12));
    painter.drawPath(
        closed({{10, 92}, {24, 75}, {34, 69}, {46, 78}, {56, 73}, {70, 80}, {90, 74}, {90, 92}}));
}

void drawOcean(Lens& lens)
{
    const QVector<QColor> depths = paletteOf(4, 6);
    lens.fill([](double, double y) { return mix({0.01, 0.03, 0.14}, {0.02, 0.13, 0.36}, (y + 1) / 1.6); });
    lens.shine({60, 30}, 26, depths.last(), 0.35);
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xe8, 0xfb, 0xff));
    painter.drawEllipse(QPointF(61, 30), 6.5, 6.5);
    for (int layer = 0; layer < 4; ++layer) {
        const double level = 45 + layer * 9;
        QPainterPath wave(QPointF(10, 95));
        QPainterPath crest;
        for (int x = 10; x <= 90; ++x) {
            const double at = kTau * (x / 38.0 + layer * 0.37);
            const double y = level + 3.6 * std::sin(at) + 1.1 * std::sin(2 * at + 0.8);
            wave.lineTo(x, y);
            x > 10 ? crest.lineTo(x, y) : crest.moveTo(x, y);
        }
        wave.lineTo(90, 95);
        QLinearGradient water(QPointF(0, level - 5), QPointF(0, level + 20));
        water.setColorAt(0, depths[4 - layer]);
        water.setColorAt(1, depths[std::max(0, 3 - layer)].darker(115));
        painter.fillPath(wave, water);
        painter.strokePath(crest, QPen(blend(depths[5], Qt::white, 0.35), 1.5));
    }
}

void drawVolcano(Lens& lens)
{
    const QVector<QColor> fire = paletteOf(5, 6);
    const QColor hot = blend(fire[5], QColor(255, 226, 110), 0.5);
    lens.fill([](double, double y) {
        return mix({0.13, 0.01, 0.07}, {1.0, 0.22, 0.03}, smooth((y + 1) / 1.6));
    });
    lens.shine({50, 40}, 28, fire[5], 0.8);
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    // What it throws up falls to both sides.
    for (const QPointF& fall :
         {QPointF(-17, 6), QPointF(-8, -4), QPointF(0, -7), QPointF(8, -4), QPointF(17, 6)}) {
        QPainterPath flight(QPointF(50 + fall.x() * 0.25, 42));
        flight.quadTo({50 + fall.x() * 0.55, 24 + fall.y()}, {50 + fall.x(), 29 + fall.y()});
        painter.strokePath(flight, QPen(hot, 2.6, Qt::SolidLine, Qt::RoundCap));
    }
    QPainterPath cone(QPointF(2, 88));
    cone.cubicTo({20, 80}, {33, 64}, {40, 45});
    cone.lineTo(60, 45);
    cone.cubicTo({67, 64}, {80, 80}, {98, 88});
    painter.fillPath(cone, QColor(0x25, 0x0c, 0x18));
    // Lava runs over the brim.
    QPainterPath lava(QPointF(40, 45));
    lava.quadTo({50, 40}, {60, 45});
    lava.cubicTo({61, 48}, {62.5, 51}, {63.5, 54});
    lava.cubicTo({64.5, 58}, {60, 59}, {58.5, 55.5});
    lava.cubicTo({57, 52.5}, {54.5, 53.5}, {54.5, 57});
    lava.cubicTo({54.5, 69}, {47.5, 69}, {47, 60});
    lava.cubicTo({46.5, 54.5}, {43.8, 54}, {42.5, 57});
    lava.cubicTo({40.5, 61.5}, {35, 60}, {36, 55});
    lava.cubicTo({37.5, 51.5}, {39, 48}, {40, 45});
    QLinearGradient heat(QPointF(0, 42), QPointF(0, 68));
    heat.setColorAt(0, hot);
    heat.setColorAt(0.5, fire[5]);
    heat.setColorAt(1, fire[4]);
    painter.fillPath(lava, heat);
}

void drawSunset(Lens& lens)
{
    // From indigo down to amber, as the map has them along the strip.
    const auto sky = [](double t) { return colorMapColor(6, 0.53 - 0.53 * t, 0); };
    lens.fill([&sky](double x, double y) {
        constexpr double kHorizon = 0.30;
        if (y < kHorizon)
            return sky(smooth((y + 1) / (1 + kHorizon) * 0.95));
        const double below = (y - kHorizon) / (1 - kHorizon);
        const Color water = mix(sky(0.62), sky(0.05), smooth(below * 1.1)) * 0.45;
        const double path = std::exp(-x * x / (0.05 + 0.08 * below)) * (1 - below);
        const double glitter = smooth(2.2 * std::sin(below * 26) + 0.9);
        return water + Color{1.0, 0.62, 0.18} * (path * glitter);
    });
    QPainter& painter = lens.painter();
    lens.shine({50, 60}, 30, QColor(255, 170, 40), 0.55);
    painter.save();
    painter.setClipRect(QRectF(0, 0, 100, 50 + Lens::kRadius * 0.30), Qt::IntersectClip);
    QLinearGradient sun(QPointF(0, 42), QPointF(0, 62));
    sun.setColorAt(0, QColor(255, 246, 196));
    sun.setColorAt(1, QColor(255, 205, 80));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sun);
    painter.drawEllipse(QPointF(50, 57), 14.5, 14.5);
    painter.restore();
}

void drawNeon(Lens& lens)
{
    lens.fill([](double x, double y) {
        return mix({0.12, 0.04, 0.20}, {0.03, 0.02, 0.07}, std::hypot(x, y));
    });
    const struct
    {
        double x, y, length;
    } tubes[] = {{26, 51, 13}, {36, 58, 27}, {47, 68, 36}, {54, 66, 34}, {66, 59, 24}, {75, 50, 11}};
    for (int i = 0; i < 6; ++i) {
        const auto& tube = tubes[i];
        // The middle of each tube of the map.
        Color tint = colorMapColor(7, (i + 0.5) / 6, 0);
        tint = tint * (1 / std::max({tint.r, tint.g, tint.b}));
        QPainterPath path(QPointF(tube.x - 3, tube.y));
        path.lineTo(tube.x - 3 + tube.length * 0.34, tube.y - tube.length * 0.94);
        lens.tube(path, 4.6, toColor(tint));
    }
}

void drawFireflies(Lens& lens)
{
    const QVector<QColor> leaves = paletteOf(8, 8);
    lens.fill([](double x, double y) {
        return mix({0.02, 0.16, 0.12}, {0.0, 0.04, 0.06}, smooth(std::hypot(x, y - 0.25)));
    });
    QPainter& painter = lens.painter();
    painter.setPen(Qt::NoPen);
    const struct
    {
        double foot, tipX, tipY, width;
        int shade;
    } blades[] = {{30, 18, 52, 5, 4}, {66, 82, 50, 5, 4}, {46, 36, 47, 5, 3},
                  {57, 62, 44, 5, 4}, {36, 28, 62, 6, 2}, {52, 49, 58, 6, 2},
                  {70, 73, 60, 6, 2}, {60, 70, 66, 6, 1}, {42, 40, 68, 6, 1}};
    for (const auto& blade : blades) {
        QPainterPath path(QPointF(blade.foot - blade.width, 92));
        path.quadTo({blade.foot - blade.width * 0.6, 70}, {blade.tipX, blade.tipY});
        path.quadTo({blade.foot + blade.width * 0.6, 72}, {blade.foot + blade.width, 92});
        painter.fillPath(path, leaves[blade.shade].darker(150 - 10 * blade.shade));
    }
    const struct
    {
        QPointF at;
        double size;
    } flies[] = {{{50, 33}, 3.2}, {{32, 41}, 2.4}, {{68, 37}, 2.8}, {{42, 52}, 2.0}, {{61, 54}, 2.4},
                 {{29, 60}, 1.7}, {{73, 55}, 1.7}, {{52, 67}, 2.0}, {{58, 22}, 1.6}};
    for (const auto& fly : flies) {
        lens.shine(fly.at, fly.size * 5, QColor(190, 255, 40), 0.8);
        painter.setBrush(QColor(240, 255, 150));
        painter.drawEllipse(fly.at, fly.size, fly.size);
    }
}
