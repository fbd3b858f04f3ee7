#pragma once

#include <QString>

/// Writes the small signs of the style sheet and the dialogs (arrows, check mark, cross) into a folder, each
/// at one, two and three pixels a unit. False if a file cannot be written.
bool writeGlyphPictures(const QString& folder);
