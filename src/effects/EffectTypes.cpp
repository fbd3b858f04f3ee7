#include "effects/EffectTypes.h"

#include "effects/EffectWorkerOptions.h"
#include "effects/colorful/ColorMap.h"
#include "effects/colorful/FlowingEffect.h"
#include "effects/colorful/Marquee.h"
#include "effects/colorful/SFrmColorMap.h"
#include "effects/dynamicMusic/MMSOptWidget.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"
#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"
#include "effects/screenSync/subModes/BottomHalfScreen.h"
#include "effects/screenSync/subModes/CinemaScreen.h"
#include "effects/screenSync/subModes/FullScreenMode.h"
#include "effects/screenSync/subModes/LeftHalfScreen.h"
#include "effects/screenSync/subModes/RightHalfScreen.h"
#include "effects/screenSync/subModes/TopHalfScreen.h"
#include "effects/singlecolor/FrmSingleColor.h"
#include "effects/singlecolor/SingleColor.h"

#include <QMetaType>

namespace {

template <typename... Classes>
void registerPointers()
{
    (qRegisterMetaType<Classes*>(), ...);
}

} // namespace

void registerEffectTypes()
{
    qRegisterMetaType<EffectWorkerOptions>("EffectWorkerOptions");
    registerPointers<Marquee, SingleColor, FlowingEffect, ColorMap, FullScreenMode, TopHalfScreen,
                     BottomHalfScreen, LeftHalfScreen, RightHalfScreen, CinemaScreen>();
    registerPointers<AudioPeakValues, SFrmAudioPeakValues>();
    registerPointers<MusicMode1, MMSOptWidget>(); // for entries beside those of the built-in catalogue
    registerPointers<FrmSingleColor, SFrmColorMap>();
}
