#include "effects/colorful/Marquee.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

namespace {

constexpr double kSliderMax = 200.0;
constexpr double kMaxStepsPerSecond = 70.0;
constexpr const char* kSpeedKey = ConfigKeys::kMarqueeSpeed.key;

} // namespace

Marquee::Marquee(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(options, parent, true)
{
    m_properties.add({{kSpeedKey, [this] { return m_speed; },
                       [this](const QJsonValue& speed) { setSpeed(speed.toInt(0)); }, EffectProperty::Look}});
}

int Marquee::load(const ControlOptions& ctlOptions)
{
    m_ctlOptions = ctlOptions;
    m_speed = ConfigurationManager::instance()
                  ->effectJsonValue(m_effectOptions.id, m_ctlOptions.id, kSpeedKey)
                  .toInt(ConfigKeys::kMarqueeSpeed.fallback);
    return 0;
}

void Marquee::unload()
{
    storeSpeed();
}

void Marquee::setSpeed(int speed)
{
    m_speed = speed;
    storeSpeed();
}

void Marquee::storeSpeed()
{
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(m_effectOptions.id, m_ctlOptions.id, kSpeedKey, m_speed);
    config->saveEffectJsonObj(m_effectOptions.id);
}

void Marquee::onCtlDirChanged(uint32_t dir)
{
    m_ctlOptions.installDirection = dir;
}

void Marquee::update(double seconds)
{
    const quint64 nbLeds = m_ctlOptions.nbLeds;
    if (nbLeds == 0) // also before load()
        return;
    m_position += m_speed / kSliderMax * seconds * kMaxStepsPerSecond;

    QVector<LV_RGB> colors(static_cast<int>(nbLeds));
    const auto unit = static_cast<quint64>(qMax(0, m_ctlOptions.ledPerUnit));
    // By way of the signed type: a negative speed makes the position negative.
    const auto steps = static_cast<quint64>(static_cast<qint64>(m_position));
    const quint64 start = steps % nbLeds * unit % nbLeds;
    const quint64 end = qMin(start + unit, nbLeds);
    const LV_RGB red{255, 0, 0};
    colors[static_cast<int>(start)] = red;
    for (quint64 i = start + 1; i < end; ++i)
        colors[static_cast<int>(i)] = red;
    emit updateColors(colors);
}
