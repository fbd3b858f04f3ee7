#pragma once

#include <QString>

/// Writes ColorMap_3.png to ColorMap_8.png: patterns of light without a seam in either direction.
/// False when a file cannot be written.
bool writeColorMapPictures(const QString& folder);
