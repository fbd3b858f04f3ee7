#pragma once

#include "controllers/ControlOptions.h"

#include <QJsonObject>
#include <QPointF>
#include <QString>
#include <QVector>

/// Where the LEDs of a device stand, seen from in front of the screen: (0, 0) top left, (1, 1) bottom right.
struct StripPlaces
{
    QVector<QPointF> points;  ///< index = LED number counted from 0
    double aspect = 16.0 / 9; ///< width by height of what they stand on
};

/// A layout is the effect's own (its properties "LEDMap" and "screenSize", or none), else follows from the
/// effect or the device: a matrix in its rows, half a screen along its edge, the way of the model's shipped
/// layout, or a line along the bottom. A strip that runs mirrored stands mirrored, so that a picture for it
/// looks on these places as it does on the screen; a matrix is what it is. No operation fails.
StripPlaces stripPlaces(const ControlOptions& device, const QString& effectId, const QJsonObject& layout,
                        const QJsonObject& shippedLayout);
