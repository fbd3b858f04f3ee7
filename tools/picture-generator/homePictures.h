#pragma once

#include <QString>

/// Draws the pictures of the start page into the folder: product00_h.png, a screen that lights the wall
/// behind it, and product01_h.png, a matrix over a lit shelf. False when a file cannot be written.
bool writeHomePictures(const QString& folder);
