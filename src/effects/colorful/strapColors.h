#pragma once

#include "controllers/LV_RGB.h"
#include "effects/IColorStrapManager.h"

#include <QBrush>
#include <QVector>

/// The strap as a gradient: the ends' colour at 0.0, the key colours between, the ends' colour at 1.0.
QGradientStops strapStops(const ColorStrap& strap);

/// One colour a pixel of the gradient laid out over `width` pixels, which must be above 0.
QVector<LV_RGB> gradientColors(const QGradientStops& stops, int width);

/// The same of a strap; nothing for one without a valid ends' colour or without key colours.
QVector<LV_RGB> strapColors(const ColorStrap& strap, int width);
