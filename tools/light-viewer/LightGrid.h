#pragma once

#include <QPoint>

/// How a number of LEDs is arranged: the big panel as a matrix, row by row, everything else as a line.
struct LightGrid
{
    int columns = 1;
    int rows = 1;

    static constexpr LightGrid of(int leds)
    {
        return leds == 23 * 11 ? LightGrid{23, 11} : LightGrid{leds > 0 ? leds : 1, 1};
    }
    /// Column and row of a LED.
    QPoint cellOf(int led) const { return {led % columns, led / columns}; }
};
