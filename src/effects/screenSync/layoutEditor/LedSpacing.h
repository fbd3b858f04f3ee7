#pragma once

#include <QPoint>
#include <QSize>
#include <QVector>

/// For each LED the distance to the nearest one on another cell: whole cells, the longer of the two
/// directions, and `limit` where there is none so near. All cells are inside the grid.
QVector<int> distancesToNearest(const QVector<QPoint>& cells, QSize grid, int limit);
