#pragma once

#include <QPoint>

/// How a number of LEDs is arranged: the big panel as a matrix, everything else as a line.
struct LightGrid
{
    int columns = 1;
    int rows = 1;

    static constexpr LightGrid of(int leds)
    {
        return leds == 23 * 11 ? LightGrid{23, 11} : LightGrid{leds > 0 ? leds : 1, 1};
    }
    /// Column and row of a LED, counted from the top left. The matrix is wired from the bottom left, each row
    /// back the way the one below came.
    QPoint cellOf(int led) const
    {
        const int row = led / columns;
        const int along = led % columns;
        return {row % 2 == 0 ? along : columns - 1 - along, rows - 1 - row};
    }
};
