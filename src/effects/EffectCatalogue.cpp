#include "effects/EffectCatalogue.h"

#include <QCoreApplication>

const std::array<EffectCatalogueRow, 25>& effectCatalogue()
{
    // The icons of the music effects repeat in the cycle 2, 3, 4, 1.
    // clang-format off
    static constexpr std::array<EffectCatalogueRow, 25> kRows{{
        {"id.effect.marquee.marquee", QT_TRANSLATE_NOOP("EffectNames", "跑马灯模式"), 0, "Marquee", "SFrmColorMap", "", ""},
        {"id.effect.singleColor.singleColor1", QT_TRANSLATE_NOOP("EffectNames", "单色模式"), 0, "SingleColor", "FrmSingleColor", "", ""},
        {"id.effect.colorful.flowingEffect", QT_TRANSLATE_NOOP("EffectNames", "流光异彩"), 0, "FlowingEffect", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_flowingEffect.png"},
        {"id.effect.colorful.moodShadow", QT_TRANSLATE_NOOP("EffectNames", "影随心动"), 1, "MoodShadow", "SFrmMoodShadow", "", ":/images/icons/id_effect_colorful_moodShadow.png"},
        {"id.effect.colorful.ColorMap_3", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 3"), 2, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_3.png"},
        {"id.effect.colorful.ColorMap_4", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 4"), 3, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_4.png"},
        {"id.effect.colorful.ColorMap_5", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 5"), 4, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_5.png"},
        {"id.effect.colorful.ColorMap_6", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 6"), 5, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_6.png"},
        {"id.effect.colorful.ColorMap_7", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 7"), 6, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_7.png"},
        {"id.effect.colorful.ColorMap_8", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 8"), 7, "ColorMap", "SFrmColorMap", "", ":/images/icons/id_effect_colorful_ColorMap_8.png"},
        {"id.effect.screenSync.fullScreen", QT_TRANSLATE_NOOP("EffectNames", "全屏模式"), 4, "FullScreenMode", "ScreenSyncSOptWidget", "SSLOptWidget", ":/images/icons/fullScreen.png"},
        {"id.effect.screenSync.topHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-上"), 0, "TopHalfScreen", "ScreenSyncSOptWidget", "", ":/images/icons/05-fpng.png"},
        {"id.effect.screenSync.bottomHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-下"), 1, "BottomHalfScreen", "ScreenSyncSOptWidget", "", ":/images/icons/06-fpng.png"},
        {"id.effect.screenSync.leftHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-左"), 2, "LeftHalfScreen", "ScreenSyncSOptWidget", "", ":/images/icons/07-fpng.png"},
        {"id.effect.screenSync.rightHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-右"), 3, "RightHalfScreen", "ScreenSyncSOptWidget", "", ":/images/icons/08-fpng.png"},
        {"id.effect.screenSync.cinemaScreen", QT_TRANSLATE_NOOP("EffectNames", "电影模式"), 5, "CinemaScreen", "ScreenSyncSOptWidget", "", ":/images/icons/04-fpng.png"},
        {"id.effect.dynamicMusic.peakValues_1", QT_TRANSLATE_NOOP("EffectNames", "音乐1"), 1, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_2.png"},
        {"id.effect.dynamicMusic.peakValues_2", QT_TRANSLATE_NOOP("EffectNames", "音乐2"), 2, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_3.png"},
        {"id.effect.dynamicMusic.peakValues_3", QT_TRANSLATE_NOOP("EffectNames", "音乐3"), 3, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_4.png"},
        {"id.effect.dynamicMusic.peakValues_4", QT_TRANSLATE_NOOP("EffectNames", "音乐4"), 4, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_1.png"},
        {"id.effect.dynamicMusic.peakValues_5", QT_TRANSLATE_NOOP("EffectNames", "音乐5"), 5, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_2.png"},
        {"id.effect.dynamicMusic.peakValues_6", QT_TRANSLATE_NOOP("EffectNames", "音乐6"), 6, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_3.png"},
        {"id.effect.dynamicMusic.peakValues_7", QT_TRANSLATE_NOOP("EffectNames", "音乐7"), 7, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_4.png"},
        {"id.effect.dynamicMusic.peakValues_8", QT_TRANSLATE_NOOP("EffectNames", "音乐8"), 8, "AudioPeakValues", "SFrmAudioPeakValues", "", ":/images/icons/id_effect_dynamicMusic_mode_1.png"},
        {"id.effect.graphics.graphics", QT_TRANSLATE_NOOP("EffectNames", "图像模式"), 0, "PixmapStream", "SFrmPixmapStream", "", ""},
    }};
    // clang-format on
    return kRows;
}
