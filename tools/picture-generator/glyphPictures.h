#pragma once

#include <QString>

/// Draws the small signs of the style sheet and of buttons into the folder, each at one, two and three times
/// its size. False when a file cannot be written.
bool writeGlyphPictures(const QString& folder);
