#include "effectIconPictures.h"

#include "Lens.h"
#include "effectIcons.h"

namespace {

// All of them are decoded at the start: twice the size on screen for the buttons of the effects is enough.
constexpr int kEffectSide = 200;
constexpr int kGroupSide = 100;

struct Icon
{
    const char* name;
    void (*draw)(Lens& lens);
};

constexpr Icon kOfCatalogue[]{
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
    {"id_effect_dynamicMusic_musicMode_1", drawMeters},
    {"id_effect_dynamicMusic_musicMode_2", drawBreath},
    {"id_effect_dynamicMusic_musicMode_3", drawGauge},
    {"id_effect_dynamicMusic_musicMode_4", drawMirroredBands},
};

constexpr Icon kOfGroups[]{
    {"id_effect_singleColor", drawDrop},      {"id_effect_colorful", drawRainbow},
    {"id_effect_screenSync", drawFullScreen}, {"id_effect_dynamicMusic", drawNotes},
    {"id_effect_graphics", drawPixels},       {"id_effect_marquee", drawMarquee},
};

constexpr Icon kById[]{
    {"id_effect_marquee_marquee", drawMarquee},
    {"id_effect_singleColor_singleColor1", drawDrop},
    {"id_effect_graphics_graphics", drawPixels},
};

template <std::size_t count>
bool write(const Icon (&icons)[count], int side, const QString& folder)
{
    return std::all_of(std::begin(icons), std::end(icons), [side, &folder](const Icon& icon) {
        Lens lens(side);
        icon.draw(lens);
        return lens.finished()
            .convertToFormat(QImage::Format_ARGB32)
            .save(QStringLiteral("%1/icons/%2.png").arg(folder, QLatin1String(icon.name)));
    });
}

} // namespace

bool writeEffectIcons(const QString& imageFolder, const QString& compiledFolder)
{
    return write(kOfCatalogue, kEffectSide, compiledFolder) && write(kOfGroups, kGroupSide, compiledFolder) &&
           write(kById, kEffectSide, imageFolder);
}
