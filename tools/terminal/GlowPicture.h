#pragma once

#include "controllers/LV_RGB.h"

#include <QPointF>
#include <QRectF>
#include <QVector>

class TerminalCanvas;

/// LEDs as soft lights that run into each other. The geometry is worked out once, so that a frame costs
/// only a weighted sum.
class GlowPicture
{
public:
    /// Where the LEDs are, in pixels of the canvas, and how far their light reaches. Pixels inside `shade`
    /// stay dark.
    GlowPicture(int width, int height, const QVector<QPointF>& leds, double reach, const QRectF& shade);

    /// Adds the light to a ground. LEDs without a colour are dark.
    void paint(const QVector<LV_RGB>& colors, LV_RGB ground, TerminalCanvas& canvas) const;

private:
    struct Light
    {
        int led;
        float weight;
    };
    struct Pixel
    {
        int x, y;
        QVector<Light> lights;
    };
    QVector<Pixel> m_pixels;
};
