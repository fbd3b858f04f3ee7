#include "effectIconPictures.h"

#include "Lens.h"
#include "effectIcons.h"

namespace {

constexpr int kSide = 200; // twice the size on screen: all of them are decoded at the start

struct Icon
{
    const char* name;
    void (*draw)(Lens& lens);
};

constexpr Icon kCompiled[]{
    {"id_effect_colorful_flowingEffect", drawWaves},
    {"id_effect_colorful_moodShadow", drawHeart},
    {"id_effect_colorful_ColorMap_3", drawAurora},
    {"id_effect_colorful_ColorMap_4", drawOcean},
    {"id_effect_colorful_ColorMap_5", drawVolcano},
    {"id_effect_colorful_ColorMap_6", drawSunset},
    {"id_effect_colorful_ColorMap_7", drawNeon},
    {"id_effect_colorful_ColorMap_8", drawFireflies},
    {"fullScreen", drawFullScreen},
    {"05-fpng", drawTopHalf},
    {"06-fpng", drawBottomHalf},
    {"07-fpng", drawLeftHalf},
    {"08-fpng", drawRightHalf},
    {"04-fpng", drawCinema},
    {"id_effect_dynamicMusic_mode_1", drawBars},
    {"id_effect_dynamicMusic_mode_2", drawNotes},
    {"id_effect_dynamicMusic_mode_3", drawCentreBars},
    {"id_effect_dynamicMusic_mode_4", drawRing},
    {"id_effect_singleColor", drawDrop},
    {"id_effect_colorful", drawRainbow},
    {"id_effect_screenSync", drawFullScreen},
    {"id_effect_dynamicMusic", drawNotes},
    {"id_effect_graphics", drawPixels},
    {"id_effect_marquee", drawMarquee},
};

constexpr Icon kBeside[]{
    {"id_effect_marquee_marquee", drawMarquee},
    {"id_effect_singleColor_singleColor1", drawDrop},
    {"id_effect_graphics_graphics", drawPixels},
};

bool write(const QString& folder, const Icon& icon)
{
    Lens lens(kSide);
    icon.draw(lens);
    return lens.finished()
        .convertToFormat(QImage::Format_ARGB32)
        .save(QStringLiteral("%1/icons/%2.png").arg(folder, QLatin1String(icon.name)));
}

} // namespace

bool writeEffectIcons(const QString& imageFolder, const QString& compiledFolder)
{
    return std::all_of(std::begin(kCompiled), std::end(kCompiled),
                       [&](const Icon& icon) { return write(compiledFolder, icon); }) &&
           std::all_of(std::begin(kBeside), std::end(kBeside),
                       [&](const Icon& icon) { return write(imageFolder, icon); });
}
