#pragma once

#include <QString>

/// Draws every model of LVController.json in `configFolder`, with its LEDs where its map has them, into
/// `imageFolder`/productIcons and `imageFolder`/products; also the general pictures, which bear the first
/// four characters of a model, and the program's fallback picture. False when a file cannot be read or
/// written.
bool writeProductPictures(const QString& configFolder, const QString& imageFolder,
                          const QString& fallbackIcon);
