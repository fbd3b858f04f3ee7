#pragma once

#include "Color.h"

#include <QImage>
#include <QPointF>
#include <QVector>

/// Light that adds up in floating point and is shown as on film: it saturates towards white, never clips.
class Glow
{
public:
    explicit Glow(const QSize& size);

    /// A soft spot; sigma in pixels.
    void add(const QPointF& at, double sigma, const Color& color);
    /// Adds a mirror image below the line y, faded with the distance from it.
    void reflect(double y, double strength);
    /// The picture below with the light on top of it.
    QImage over(const QImage& ground) const;

private:
    QSize m_size;
    QVector<Color> m_light;
};
