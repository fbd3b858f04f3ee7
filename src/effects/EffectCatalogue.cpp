#include "effects/EffectCatalogue.h"

#include "effects/colorful/ColorMap.h"
#include "effects/colorful/FlowingEffect.h"
#include "effects/colorful/Marquee.h"
#include "effects/colorful/MoodShadow.h"
#include "effects/colorful/SFrmColorMap.h"
#include "effects/colorful/SFrmMoodShadow.h"
#include "effects/dynamicMusic/MMSOptWidget.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/Mode2/MM2SOptWid.h"
#include "effects/dynamicMusic/Mode2/MusicMode2.h"
#include "effects/dynamicMusic/Mode3/MusicMode3.h"
#include "effects/dynamicMusic/Mode4/MusicMode4.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"
#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"
#include "effects/graphics/PixmapStream.h"
#include "effects/graphics/SFrmPixmapStream.h"
#include "effects/screenSync/ScreenSyncSOptWidget.h"
#include "effects/screenSync/layoutEditor/SSLOptWidget.h"
#include "effects/screenSync/subModes/CinemaScreen.h"
#include "effects/screenSync/subModes/FullScreenMode.h"
#include "effects/screenSync/subModes/HalfScreens.h"
#include "effects/singlecolor/FrmSingleColor.h"
#include "effects/singlecolor/SingleColor.h"

#include <QCoreApplication>

const QVector<EffectRow>& effectCatalogue()
{
    using C = EffectClass;
    static const C screenOptions = C::of<ScreenSyncSOptWidget>();
    // The icons of the first eight music effects repeat in the cycle 2, 3, 4, 1.
    // clang-format off
    static const QVector<EffectRow> rows{
        {"id.effect.marquee.marquee", QT_TRANSLATE_NOOP("EffectNames", "跑马灯模式"), 0, C::of<Marquee>(), C::of<SFrmColorMap>(), {}, ""},
        {"id.effect.singleColor.singleColor1", QT_TRANSLATE_NOOP("EffectNames", "单色模式"), 0, C::of<SingleColor>(), C::of<FrmSingleColor>(), {}, ""},
        {"id.effect.colorful.flowingEffect", QT_TRANSLATE_NOOP("EffectNames", "流光异彩"), 0, C::of<FlowingEffect>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_flowingEffect.png"},
        {"id.effect.colorful.moodShadow", QT_TRANSLATE_NOOP("EffectNames", "影随心动"), 1, C::of<MoodShadow>(), C::of<SFrmMoodShadow>(), {}, ":/images/icons/id_effect_colorful_moodShadow.png"},
        {"id.effect.colorful.ColorMap_3", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 3"), 2, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_3.png"},
        {"id.effect.colorful.ColorMap_4", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 4"), 3, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_4.png"},
        {"id.effect.colorful.ColorMap_5", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 5"), 4, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_5.png"},
        {"id.effect.colorful.ColorMap_6", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 6"), 5, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_6.png"},
        {"id.effect.colorful.ColorMap_7", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 7"), 6, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_7.png"},
        {"id.effect.colorful.ColorMap_8", QT_TRANSLATE_NOOP("EffectNames", "幻彩模式 8"), 7, C::of<ColorMap>(), C::of<SFrmColorMap>(), {}, ":/images/icons/id_effect_colorful_ColorMap_8.png"},
        {"id.effect.screenSync.fullScreen", QT_TRANSLATE_NOOP("EffectNames", "全屏模式"), 4, C::of<FullScreenMode>(), screenOptions, C::of<SSLOptWidget>(), ":/images/icons/fullScreen.png"},
        {"id.effect.screenSync.topHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-上"), 0, C::of<TopHalfScreen>(), screenOptions, {}, ":/images/icons/05-fpng.png"},
        {"id.effect.screenSync.bottomHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-下"), 1, C::of<BottomHalfScreen>(), screenOptions, {}, ":/images/icons/06-fpng.png"},
        {"id.effect.screenSync.leftHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-左"), 2, C::of<LeftHalfScreen>(), screenOptions, {}, ":/images/icons/07-fpng.png"},
        {"id.effect.screenSync.rightHalfScreen", QT_TRANSLATE_NOOP("EffectNames", "半屏-右"), 3, C::of<RightHalfScreen>(), screenOptions, {}, ":/images/icons/08-fpng.png"},
        {"id.effect.screenSync.cinemaScreen", QT_TRANSLATE_NOOP("EffectNames", "电影模式"), 5, C::of<CinemaScreen>(), screenOptions, {}, ":/images/icons/04-fpng.png"},
        {"id.effect.dynamicMusic.peakValues_1", QT_TRANSLATE_NOOP("EffectNames", "音乐1"), 1, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_2.png"},
        {"id.effect.dynamicMusic.peakValues_2", QT_TRANSLATE_NOOP("EffectNames", "音乐2"), 2, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_3.png"},
        {"id.effect.dynamicMusic.peakValues_3", QT_TRANSLATE_NOOP("EffectNames", "音乐3"), 3, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_4.png"},
        {"id.effect.dynamicMusic.peakValues_4", QT_TRANSLATE_NOOP("EffectNames", "音乐4"), 4, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_1.png"},
        {"id.effect.dynamicMusic.peakValues_5", QT_TRANSLATE_NOOP("EffectNames", "音乐5"), 5, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_2.png"},
        {"id.effect.dynamicMusic.peakValues_6", QT_TRANSLATE_NOOP("EffectNames", "音乐6"), 6, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_3.png"},
        {"id.effect.dynamicMusic.peakValues_7", QT_TRANSLATE_NOOP("EffectNames", "音乐7"), 7, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_4.png"},
        {"id.effect.dynamicMusic.peakValues_8", QT_TRANSLATE_NOOP("EffectNames", "音乐8"), 8, C::of<AudioPeakValues>(), C::of<SFrmAudioPeakValues>(), {}, ":/images/icons/id_effect_dynamicMusic_mode_1.png"},
        {"id.effect.graphics.graphics", QT_TRANSLATE_NOOP("EffectNames", "图像模式"), 0, C::of<PixmapStream>(), C::of<SFrmPixmapStream>(), {}, ""},
        {"id.effect.dynamicMusic.musicMode_1", QT_TRANSLATE_NOOP("EffectNames", "律动音柱"), 9, C::of<MusicMode1>(), C::of<MMSOptWidget>(), {}, ":/images/icons/id_effect_dynamicMusic_musicMode_1.png", true},
        {"id.effect.dynamicMusic.musicMode_2", QT_TRANSLATE_NOOP("EffectNames", "影随乐动"), 10, C::of<MusicMode2>(), C::of<MM2SOptWid>(), {}, ":/images/icons/id_effect_dynamicMusic_musicMode_2.png", true},
        {"id.effect.dynamicMusic.musicMode_3", QT_TRANSLATE_NOOP("EffectNames", "声色渐变"), 11, C::of<MusicMode3>(), C::of<MMSOptWidget>(), {}, ":/images/icons/id_effect_dynamicMusic_musicMode_3.png", true},
        {"id.effect.dynamicMusic.musicMode_4", QT_TRANSLATE_NOOP("EffectNames", "镜像频谱"), 12, C::of<MusicMode4>(), C::of<MMSOptWidget>(), {}, ":/images/icons/id_effect_dynamicMusic_musicMode_4.png", true},
    };
    // clang-format on
    return rows;
}
