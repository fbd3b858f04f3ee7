#pragma once

#include <QString>

/// Draws the program's own signs into the folder: icon.png for windows and tray, logo.png for the title bar.
/// False when a file cannot be written.
bool writeProgramPictures(const QString& folder);

/// Draws the program's icon for the desktop's menus into an icon theme's folder: PNG of all usual sizes, and
/// SVG. False when a file cannot be written.
bool writeThemeIcons(const QString& theme);

/// Draws the program's icon of all sizes Windows asks for into one .ico file. False when it cannot be
/// written.
bool writeWindowsIcon(const QString& path);
