#include "effects/colorful/FlowingEffect.h"

#include "effects/colorful/paintUnits.h"
#include "effects/rgb.h"
#include "support/config/StoredNumber.h"

#include <QDebug>
#include <cmath>

namespace {

constexpr double kMaxSpeed = 0.05; // phase a step at the end of the slider
constexpr double kSliderMax = 200.0;
constexpr const char* kSpeedKey = ConfigKeys::kFlowingSpeed.key;

LV_RGB rainbowColor(double hue)
{
    // A negative speed runs the phase below zero: there the rainbow goes on backwards.
    if (hue < 0.0)
        hue = qMax(0.0, hue - std::floor(hue));
    return toLedColor(QColor::fromHsvF(hue < 1.0 ? hue : 0.0, 1.0, 1.0, 1.0));
}

/// What the slider knows. The division must not lose a step to rounding: the options report back what they
/// are shown, so that the speed would fall each time they are opened.
int sliderValue(double speed)
{
    constexpr double kRounding = 1e-6;
    return static_cast<int>(speed / kMaxSpeed * kSliderMax + (speed < 0 ? -kRounding : kRounding));
}

} // namespace

FlowingEffect::FlowingEffect(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(parent)
    , m_effectOptions(options)
{
    m_properties.add({{kSpeedKey, [this] { return sliderValue(m_speed); },
                       [this](const QJsonValue& speed) { setSpeed(speed.toInt(0)); }, EffectProperty::Look}});
}

int FlowingEffect::load(const ControlOptions& ctlOptions)
{
    m_nbLeds = ctlOptions.nbLeds;
    m_controllerId = ctlOptions.id;
    m_ledPerUnit = ctlOptions.ledPerUnit;

    ConfigurationManager* config = ConfigurationManager::instance();
    m_timer.setInterval(applicationNumber(ConfigKeys::kDevUpdateIntervalMs));
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &FlowingEffect::update);
    m_timer.start();

    m_speed = qBound(0.0,
                     config->effectJsonValue(m_effectOptions.id, m_controllerId, kSpeedKey)
                         .toDouble(ConfigKeys::kFlowingSpeed.fallback),
                     kMaxSpeed);
    qInfo().nospace().noquote() << "[FlowingEffect]: Succeeded to load FlowingEffect, controller: "
                                << m_controllerId << " speed: " << m_speed;
    return 0;
}

EffectWorkerOptions FlowingEffect::options()
{
    return m_effectOptions;
}

void FlowingEffect::unload()
{
    qInfo().nospace().noquote() << "[FlowingEffect]: The FlowingEffect has been unload, controller: "
                                << m_controllerId << " speed: " << m_speed;
}

void FlowingEffect::setSpeed(int speed)
{
    m_speed = speed / kSliderMax * kMaxSpeed;
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(m_effectOptions.id, m_controllerId, kSpeedKey, m_speed);
    config->saveEffectJsonObj(m_effectOptions.id);
}

void FlowingEffect::update()
{
    QVector<LV_RGB> colors(static_cast<int>(m_nbLeds));
    if (colors.isEmpty())
        return;
    const double step = 1.0 / m_nbLeds;
    double hue = m_phase;
    paintUnits(colors, m_ledPerUnit, [&hue, step](int) {
        hue += step;
        if (hue >= 1.0)
            hue -= 1.0;
        return rainbowColor(hue);
    });
    m_phase += m_speed;
    if (m_phase >= 1.0)
        m_phase = 0.0;
    emit updateColors(colors);
}

void FlowingEffect::onCtlDarkChanged(bool dark)
{
    dark ? m_timer.stop() : m_timer.start();
}

void FlowingEffect::onCtlDirChanged(uint32_t) {}
void FlowingEffect::onCtlBrightnessChanged(float) {}
void FlowingEffect::onCtlKindNameChanged(QString) {}
void FlowingEffect::onCtlEnableChanged(bool) {}
