#pragma once

#include "Color.h"

#include <QString>

constexpr int kFirstColorMap = 3;
constexpr int kLastColorMap = 8;

/// The colour of the map `number` at u along the strip and v in time; both repeat after 1.0.
Color colorMapColor(int number, double u, double v);

/// Draws ColorMap_3.png to ColorMap_8.png into the folder. False when a file cannot be written.
bool writeColorMapPictures(const QString& folder);
