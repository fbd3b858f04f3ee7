#include "effects/dynamicMusic/Mode4/MusicMode4.h"

#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <algorithm>

namespace {

constexpr double kLowestHz = 40.0;
constexpr double kWidthHz = 1600.0;
constexpr double kHighestLevel = 79.99999;

} // namespace

MusicMode4::MusicMode4(const EffectWorkerOptions& options, QObject* parent)
    : MusicMode3(options, parent)
{
}

int MusicMode4::load(const ControlOptions& ctlOptions)
{
    // The classes between take stored fragments, and the direction.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    AbsMusicEffect::load(ctlOptions);
    const auto& strength = ConfigKeys::kMusicMode4Strength;
    m_strength = ConfigurationManager::instance()
                     ->effectJsonValue(effectId(), controllerId(), strength.key)
                     .toDouble(strength.fallback);
    addFragments();
    lightFragments();
    return 0;
}

void MusicMode4::addFragments()
{
    const auto add = [this](int led, int soundChannel, double hertz, double step) {
        Fragment fragment;
        fragment.beginIndex = led;
        fragment.endIndex = led + 1;
        fragment.mulEnhance = m_strength;
        fragment.minFrequency = hertz;
        fragment.maxFrequency = hertz + step;
        fragment.soundChannel = soundChannel;
        m_fragments.insert({led, QString::number(led)}, fragment);
    };
    const int half = nbLeds() - nbLeds() / 2;
    double hertz = kLowestHz;
    for (int i = 0; i < half; ++i) {
        const double step = kWidthHz / half;
        add(i, Fragment::Left, hertz, step);
        add(nbLeds() - i - 1, Fragment::Right, hertz,
            step); // takes the place of the other in the middle of an odd strip
        hertz += step;
    }
}

QVector<LV_RGB> MusicMode4::fragmentColors(const QString& name, const Fragment& fragment, double level)
{
    const int fromItsEnd =
        fragment.soundChannel == Fragment::Left ? fragment.beginIndex + 1 : nbLeds() - fragment.beginIndex;
    return MusicMode3::fragmentColors(name, fragment, std::min(fromItsEnd * level, kHighestLevel));
}
