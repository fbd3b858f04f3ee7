#pragma once

#include <QImage>

class IColorStrapManager;

/// Every gradient of the list as a strip of LEDs before a dark wall, one below the other: the upper half of
/// each as the LEDs show it by themselves, the lower half after the gamma that monitors have. Light adds up
/// as in a room, because a gradient that looks well as a print may be muddy as light.
QImage strapPicture(IColorStrapManager& straps);
