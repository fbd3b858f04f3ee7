#include "effects/dynamicMusic/Mode2/MusicMode2.h"

#include "effects/colorful/MoodShadow.h"
#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

namespace {

constexpr double kLowestHz = 20.0;
constexpr double kHighestHz = 16000.0;
constexpr const auto& kStrength = ConfigKeys::kMusicMode2Strength;

} // namespace

MusicMode2::MusicMode2(const EffectWorkerOptions& options, QObject* parent)
    : AbsMusicEffect(parent)
    , m_options(options)
{
    m_audible.minFrequency = kLowestHz;
    m_audible.maxFrequency = kHighestHz;
    m_properties.add({{kStrength.key, [this] { return m_audible.mulEnhance; },
                       [this](const QJsonValue& val) {
                           if (val.isDouble())
                               setStrength(val.toDouble());
                       },
                       EffectProperty::Look}});
}

MusicMode2::~MusicMode2() = default;

void MusicMode2::DIColorStrapManager(IColorStrapManager* mgr)
{
    m_colorStrapManager = mgr;
}

int MusicMode2::load(const ControlOptions& ctlOptions)
{
    AbsMusicEffect::load(ctlOptions);
    m_audible.mulEnhance = ConfigurationManager::instance()
                               ->effectJsonValue(effectId(), controllerId(), kStrength.key)
                               .toDouble(kStrength.fallback);
    m_moodShadow = std::make_unique<MoodShadow>(m_options, nullptr);
    m_properties.add(m_moodShadow->properties());
    if (m_colorStrapManager)
        m_moodShadow->DIColorStrapManager(m_colorStrapManager);
    m_moodShadow->load(ctlOptions);
    connect(m_moodShadow.get(), &IEffectWorker::updateColors, this, &MusicMode2::update);
    connect(m_moodShadow.get(), &IEffectWorker::effectPropertyChanged, this,
            &IEffectWorker::effectPropertyChanged);
    return 0;
}

EffectWorkerOptions MusicMode2::options()
{
    return m_options;
}

void MusicMode2::unload()
{
    m_moodShadow->stop();
    m_moodShadow->unload();
    AbsMusicEffect::unload();
}

void MusicMode2::setStrength(double value)
{
    m_audible.mulEnhance = value;
    ConfigurationManager::instance()->setEffectJsonValue(effectId(), controllerId(), kStrength.key, value);
    ConfigurationManager::instance()->saveEffectJsonObj(effectId());
}

void MusicMode2::spectrumUpdate(QVector<SoundChannel> channels)
{
    m_level =
        static_cast<float>(LevelMeter::heard(m_audible, channels, quietLevel()) / LevelMeter::kFullScale);
}

void MusicMode2::goDark()
{
    m_level = 0.0F; // or the mood would go on as loud as what was heard last
    AbsMusicEffect::goDark();
}

void MusicMode2::update(QVector<LV_RGB> colors)
{
    const auto dim = [this](std::uint8_t& part) {
        part = static_cast<std::uint8_t>(static_cast<float>(part) * m_level);
    };
    for (LV_RGB& color : colors) {
        dim(color.red);
        dim(color.green);
        dim(color.blue);
    }
    emit updateColors(colors);
}

void MusicMode2::onCtlDirChanged(uint32_t dir)
{
    AbsMusicEffect::onCtlDirChanged(dir);
    m_moodShadow->onCtlDirChanged(dir);
}

void MusicMode2::onCtlBrightnessChanged(float brightness)
{
    m_moodShadow->onCtlBrightnessChanged(brightness);
}

void MusicMode2::onCtlKindNameChanged(QString kindName)
{
    m_moodShadow->onCtlKindNameChanged(kindName);
}

void MusicMode2::onCtlDarkChanged(bool dark)
{
    AbsMusicEffect::onCtlDarkChanged(dark);
    m_moodShadow->onCtlDarkChanged(dark);
}

void MusicMode2::onCtlEnableChanged(bool enable)
{
    m_moodShadow->onCtlEnableChanged(enable);
}
