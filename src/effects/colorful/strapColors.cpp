#include "effects/colorful/strapColors.h"

#include "effects/rgb.h"

#include <QImage>
#include <QPainter>

QGradientStops strapStops(const ColorStrap& strap)
{
    QGradientStops stops{{0.0, strap.endsColor}};
    for (const KeyColor& key : strap.keyColors) {
        if (key.key > 0.0 && key.key < 1.0) // at 0 and 1 it is the ends' colour that shows
            stops.append({key.key, key.color});
    }
    stops.append({1.0, strap.endsColor});
    return stops;
}

QVector<LV_RGB> gradientColors(const QGradientStops& stops, int width)
{
    QLinearGradient gradient(0, 0, width, 0);
    for (const QGradientStop& stop : stops) // one by one: they need not be sorted
        gradient.setColorAt(stop.first, stop.second);
    QImage image(width, 1, QImage::Format_RGB888);
    QPainter(&image).fillRect(image.rect(), gradient);

    QVector<LV_RGB> colors(width);
    for (int x = 0; x < width; ++x)
        colors[x] = toLedColor(image.pixel(x, 0));
    return colors;
}

QVector<LV_RGB> strapColors(const ColorStrap& strap, int width)
{
    if (!strap.endsColor.isValid() || strap.keyColors.isEmpty())
        return {};
    return gradientColors(strapStops(strap), width);
}
