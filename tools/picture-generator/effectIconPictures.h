#pragma once

#include <QString>

/// Draws the effects' and groups' icons: those of the catalogue into `compiledFolder`/icons, those that are
/// looked up by the effect's id into `imageFolder`/icons. False when a file cannot be written.
bool writeEffectIcons(const QString& imageFolder, const QString& compiledFolder);
