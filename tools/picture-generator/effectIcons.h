#pragma once

class Lens;

// What each effect's icon shows. Units: 100 to the side of the icon, see Lens.

// colorMapIcons.cpp: scenes in the colours of the maps themselves
void drawAurora(Lens& lens);
void drawOcean(Lens& lens);
void drawVolcano(Lens& lens);
void drawSunset(Lens& lens);
void drawNeon(Lens& lens);
void drawFireflies(Lens& lens);

// colorIcons.cpp
void drawDrop(Lens& lens);
void drawRainbow(Lens& lens);
void drawWaves(Lens& lens);
void drawHeart(Lens& lens);
void drawMarquee(Lens& lens);
void drawPixels(Lens& lens);

// screenIcons.cpp
void drawFullScreen(Lens& lens);
void drawTopHalf(Lens& lens);
void drawBottomHalf(Lens& lens);
void drawLeftHalf(Lens& lens);
void drawRightHalf(Lens& lens);
void drawCinema(Lens& lens);

// musicIcons.cpp
void drawBars(Lens& lens);
void drawNotes(Lens& lens);
void drawCentreBars(Lens& lens);
void drawRing(Lens& lens);
void drawMeters(Lens& lens);
void drawBreath(Lens& lens);
void drawGauge(Lens& lens);
void drawMirroredBands(Lens& lens);
