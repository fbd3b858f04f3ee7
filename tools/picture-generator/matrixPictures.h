#pragma once

#include <QString>

constexpr int kMatrixPictures = 40;

/// Draws 1.png to 40.png into the folder, a loop for the matrix, a pixel an LED. False when a file cannot be
/// written.
bool writeMatrixPictures(const QString& folder);
