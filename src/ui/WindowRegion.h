#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

/// What a point of the frameless main window does when it is pressed.
enum class WindowRegion {
    None,
    Caption,
    Left,
    Right,
    Top,
    Bottom,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight
};

/// The region of a point, all in logical pixels from the window's top left. `buttons` lie on the title bar
/// and are no part of the caption. The comparisons at the corners are asymmetric on purpose.
WindowRegion windowRegionAt(QPoint position, QSize window, int titleHeight, int borderWidth,
                            const QVector<QRect>& buttons);
