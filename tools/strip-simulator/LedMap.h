#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QVector>

/// Where a model's LEDs sit on a small picture of the screen.
struct LedMap
{
    QSize canvas;
    QVector<QPoint> leds; ///< index: LED counted from 0

    bool isValid() const { return !canvas.isEmpty() && !leds.isEmpty(); }
    /// Whether all LEDs run along the border, as behind a screen.
    bool isFrame() const;

    /// An invalid map when there is none at the path.
    static LedMap load(const QString& path);
};
