#include "Breathing.h"

#include "support/config/ConfigurationManager.h"
#include "support/config/hashPropertyKey.h"

#include <QJsonObject>
#include <QtMath>
#include <cmath>

namespace {

constexpr char kColor[] = "color";
constexpr char kPeriod[] = "period";
constexpr double kMinPeriodSeconds = 0.5;
constexpr double kMaxPeriodSeconds = 60.0;

} // namespace

Breathing::Breathing(const EffectWorkerOptions& options, QObject* parent)
    : AbsAnimatedEffect(options, parent, false)
{
}

int Breathing::load(const ControlOptions& ctlOptions)
{
    m_controllerId = ctlOptions.id;
    m_nbLeds = static_cast<int>(ctlOptions.nbLeds);
    const auto* config = ConfigurationManager::instance();
    applyColor(config->effectJsonValue(m_effectOptions.id, m_controllerId, QLatin1String(kColor)));
    applyPeriod(config->effectJsonValue(m_effectOptions.id, m_controllerId, QLatin1String(kPeriod)));
    start(); // only now: the timer must belong to the worker's own thread
    return 0;
}

QJsonValue Breathing::effectProperty(const QString& key)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kColor):
        return m_color.name();
    case hashPropertyKey(kPeriod):
        return m_period;
    case hashPropertyKey(""):
        return QJsonObject{{kColor, m_color.name()}, {kPeriod, m_period}};
    default:
        return QJsonValue::Null;
    }
}

void Breathing::setEffectProperty(const QString& key, const QJsonValue& val)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kColor):
        applyColor(val);
        store(kColor, m_color.name());
        break;
    case hashPropertyKey(kPeriod):
        applyPeriod(val);
        store(kPeriod, m_period);
        break;
    case hashPropertyKey(""): {
        const QJsonObject all = val.toObject();
        for (auto it = all.begin(); it != all.end(); ++it) {
            if (!it.key().isEmpty())
                setEffectProperty(it.key(), it.value());
        }
        break;
    }
    default:
        break;
    }
}

void Breathing::unload()
{
    // What must survive was stored when it changed. This runs on the main thread, while the animation may go
    // on: whoever has something to do here must guard what both use.
}

LV_RGB Breathing::colorAt(const QColor& color, double phase)
{
    const double level = (1.0 - qCos(2.0 * M_PI * phase)) / 2.0;
    const auto scaled = [level](int channel) { return static_cast<std::uint8_t>(qRound(channel * level)); };
    return {scaled(color.red()), scaled(color.green()), scaled(color.blue())};
}

void Breathing::update(double seconds)
{
    m_phase = std::fmod(m_phase + seconds / m_period, 1.0);
    emit updateColors(QVector<LV_RGB>(m_nbLeds, colorAt(m_color, m_phase)));
}

void Breathing::applyColor(const QJsonValue& val)
{
    const QColor color(val.toString());
    if (color.isValid())
        m_color = color;
}

void Breathing::applyPeriod(const QJsonValue& val)
{
    m_period = qBound(kMinPeriodSeconds, val.toDouble(m_period), kMaxPeriodSeconds);
}

void Breathing::store(const char* key, const QJsonValue& val)
{
    auto* config = ConfigurationManager::instance(); // its effect store may be used from any thread
    config->setEffectJsonValue(m_effectOptions.id, m_controllerId, QLatin1String(key), val);
    config->saveEffectJsonObj(m_effectOptions.id);
}
