#pragma once

#include "controllers/LV_RGB.h"

#include <QVector>
#include <QtGlobal>

/// Colours a strip whose hardware drives `ledPerUnit` LEDs as one. `colorAt(i)` is asked once a unit, with
/// the unit's first LED. The last LED of a unit is the first of the next, which overwrites it: with three
/// LEDs a unit they start at 0, 2, 4. Any `ledPerUnit` ends: 1, 0 and below go LED by LED.
template <typename ColorAt>
void paintUnits(QVector<LV_RGB>& colors, int ledPerUnit, ColorAt&& colorAt)
{
    const qint64 size = colors.size();
    qint64 i = 0;
    while (i < size) {
        const LV_RGB color = colorAt(static_cast<int>(i));
        const qint64 end = qMin(i + ledPerUnit, size);
        colors[static_cast<int>(i)] = color;
        for (qint64 k = i + 1; k < end; ++k)
            colors[static_cast<int>(k)] = color;
        i = end > i + 1 ? end - 1 : i + 1;
    }
}
