#include "effects/screenSync/layoutEditor/LedSpacing.h"

#include <QRect>

QVector<int> distancesToNearest(const QVector<QPoint>& cells, QSize grid, int limit)
{
    QVector<bool> taken(grid.width() * grid.height(), false);
    for (const QPoint& cell : cells)
        taken[cell.y() * grid.width() + cell.x()] = true;
    const QRect area(QPoint(), grid);
    const auto isTaken = [&](int x, int y) { return area.contains(x, y) && taken[y * grid.width() + x]; };
    const auto isTakenAt = [&](QPoint centre, int distance) {
        for (int i = -distance; i <= distance; ++i) {
            if (isTaken(centre.x() + i, centre.y() - distance) ||
                isTaken(centre.x() + i, centre.y() + distance) ||
                isTaken(centre.x() - distance, centre.y() + i) ||
                isTaken(centre.x() + distance, centre.y() + i))
                return true;
        }
        return false;
    };
    QVector<int> distances;
    distances.reserve(cells.size());
    for (const QPoint& cell : cells) {
        int distance = 1;
        while (distance < limit && !isTakenAt(cell, distance))
            ++distance;
        distances.append(distance);
    }
    return distances;
}
