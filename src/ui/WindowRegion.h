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

/// The window's edges that a drag in this region moves; none for the caption.
Qt::Edges edgesOf(WindowRegion region);

/// Where a window that stood at `start` comes to stand when its edges, without edges the whole of it, are
/// dragged over a distance. It never gets smaller than `minimum`: the opposite edge stays in its place.
QRect draggedGeometry(const QRect& start, Qt::Edges edges, QPoint distance, QSize minimum);

/// How large a window of this size opens: with a margin on each side of a screen that it would cover.
QSize openingSize(QSize window, QSize available);

/// A window that does not lie inside its screen gets 80 % of it, but not less than `minimum`, centred.
QRect fittedGeometry(const QRect& window, const QRect& screen, QSize minimum);

/// A point in the system's pixels as a point in logical ones. The corner of a screen is the same in both.
QPoint logicalPosition(QPoint physical, QPoint screenTopLeft, double pixelRatio);

/// What a maximised window shows: no more than the work area, into which its frame juts out of it, without
/// the strips at edges where a hidden task bar waits for the pointer. All in the system's pixels.
QRect maximisedClient(const QRect& window, const QRect& workArea, Qt::Edges hiddenBars);
