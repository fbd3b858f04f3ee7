#include "app/StripPlaces.h"

#include "effects/screenSync/LedMap.h"

#include <QJsonArray>
#include <QMap>
#include <QtMath>
#include <algorithm>

namespace {

// As far from the edge as shipped layouts are.
constexpr double kBesideX = 0.02;
constexpr double kBesideY = 0.04;

/// Where along the way that the strip takes along an edge LED `at` (0 to 1) stands.
using Edge = QPointF (*)(double at);

QPointF alongTop(double at)
{
    return {at, kBesideY};
}
QPointF alongBottom(double at)
{
    return {at, 1 - kBesideY};
}
QPointF upLeft(double at)
{
    return {kBesideX, 1 - at};
}
QPointF downRight(double at)
{
    return {1 - kBesideX, at};
}

Edge edgeOf(const QString& effectId)
{
    static const QMap<QString, Edge> edges{
        {QStringLiteral("id.effect.screenSync.topHalfScreen"), alongTop},
        {QStringLiteral("id.effect.screenSync.bottomHalfScreen"), alongBottom},
        {QStringLiteral("id.effect.screenSync.leftHalfScreen"), upLeft},
        {QStringLiteral("id.effect.screenSync.rightHalfScreen"), downRight}};
    return edges.value(effectId);
}

/// Columns and rows of the models that are a matrix; null for a strip.
QSize matrixOf(const QString& model)
{
    if (model == QLatin1String("LV0N03"))
        return {23, 11};
    return model == QLatin1String("LV0N02") ? QSize(16, 8) : QSize();
}

/// Wired from the bottom left, each row back the way the one below came.
QPointF cellOf(int led, const QSize& matrix)
{
    const int row = led / matrix.width();
    const int along = led % matrix.width();
    const int column = row % 2 == 0 ? along : matrix.width() - 1 - along;
    return {(column + 0.5) / matrix.width(), 1 - (row + 0.5) / matrix.height()};
}

StripPlaces placesOf(const LedMap& map)
{
    StripPlaces places;
    const QSizeF canvas(qMax(map.screenSize.width(), 1), qMax(map.screenSize.height(), 1));
    places.aspect = qBound(0.2, canvas.width() / canvas.height(), 5.0); // of a file that asks for anything
    for (const QPoint& point : map.points)
        places.points.append({qBound(0.0, (point.x() + 0.5) / canvas.width(), 1.0),
                              qBound(0.0, (point.y() + 0.5) / canvas.height(), 1.0)});
    return places;
}

LedMap effectMap(const QJsonObject& layout, int nbLeds)
{
    const QJsonObject size = layout["screenSize"].toObject();
    LedMap map{QSize(size["w"].toInt(), size["h"].toInt()), {}};
    const QJsonArray leds = layout["LEDMap"].toArray();
    map.points.resize(qMin(leds.size(), nbLeds));
    for (const QJsonValue& led : leds) {
        const int id = led["id"].toInt(-1);
        if (id >= 0 && id < map.points.size())
            map.points[id] = {led["x"].toInt(), led["y"].toInt()};
    }
    return map;
}

/// A strip of another length goes the same way.
QVector<QPointF> spread(const QVector<QPointF>& way, int nbLeds)
{
    if (way.size() == nbLeds)
        return way;
    QVector<QPointF> points;
    for (int i = 0; i < nbLeds; ++i) {
        const double at = double(i) * (way.size() - 1) / qMax(nbLeds - 1, 1);
        const int before = int(at);
        const QPointF& next = way[qMin(before + 1, way.size() - 1)];
        points.append(way[before] + (next - way[before]) * (at - before));
    }
    return points;
}

void mirror(QVector<QPointF>& points)
{
    for (QPointF& point : points)
        point.setX(1 - point.x());
}

} // namespace

StripPlaces stripPlaces(const ControlOptions& device, const QString& effectId, const QJsonObject& layout,
                        const QJsonObject& shippedLayout)
{
    const int nbLeds = static_cast<int>(device.nbLeds);
    const int shipped = shippedLayout["key_array"].toArray().size();
    const QSize matrix = matrixOf(device.model);
    Edge edge = edgeOf(effectId);
    StripPlaces places;
    if (!layout["LEDMap"].toArray().isEmpty()) {
        places = placesOf(effectMap(layout, nbLeds));
    } else if (!matrix.isEmpty() && nbLeds <= matrix.width() * matrix.height()) {
        places.aspect = double(matrix.width()) / matrix.height();
        for (int i = 0; i < nbLeds; ++i)
            places.points.append(cellOf(i, matrix));
        return places;
    } else if (!edge && shipped > 0) {
        LedMap map = LedMap::defaultGrid(shipped);
        map.apply(shippedLayout);
        places = placesOf(map);
        places.points = spread(places.points, nbLeds);
    } else {
        if (!edge)
            edge = alongBottom;
        for (int i = 0; i < nbLeds; ++i)
            places.points.append(edge((i + 0.5) / nbLeds));
    }
    if (device.installDirection == 1)
        mirror(places.points);
    return places;
}
