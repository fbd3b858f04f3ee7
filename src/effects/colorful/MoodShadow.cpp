#include "effects/colorful/MoodShadow.h"

#include "effects/colorful/paintUnits.h"
#include "effects/colorful/strapColors.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDebug>
#include <QSignalBlocker>
#include <cmath>

namespace {

constexpr uint32_t kMirrored = 1; // install direction
// Closer to the value there is no change; a step of exactly 0.001 is one, however it is rounded.
constexpr double kLeastChange = 0.001 - 1e-9;

constexpr const char* kStrapKey = ConfigKeys::kCurrentStrap.key;
constexpr const char* kSpeedKey = ConfigKeys::kStrapSpeed.key;
constexpr const char* kRangeKey = ConfigKeys::kStrapRange.key;

/// Whether the value is one to take over; tells of one that is out of range.
bool isNewShare(double value, double current, const char* complaint)
{
    if (!(value >= 0.0 && value <= 1.0)) {
        qCritical() << complaint << value;
        return false;
    }
    return std::abs(value - current) >= kLeastChange;
}

} // namespace

MoodShadow::MoodShadow(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(options, parent, true)
{
    listProperties();
}

void MoodShadow::listProperties()
{
    // What the options set does not come back to them.
    const auto silent = [this](void (MoodShadow::*set)(double)) {
        return [this, set](const QJsonValue& val) {
            const QSignalBlocker blocker(*this);
            (this->*set)(val.toDouble(0.0));
        };
    };
    m_properties.add(
        {{QStringLiteral("colorStrapManager"),
          [this] { return QString::number(reinterpret_cast<quintptr>(m_colorStrapManager.data())); },
          {},
          EffectProperty::Place},
         {kStrapKey, [this] { return m_currentStrapIndex; },
          [this](const QJsonValue& val) { setCurrentStrap(val.toInt(0)); }, EffectProperty::Look},
         {kSpeedKey, [this] { return m_speed; }, silent(&MoodShadow::setSpeed), EffectProperty::Look},
         {kRangeKey, [this] { return m_range; }, silent(&MoodShadow::setRange), EffectProperty::Look}});
}

void MoodShadow::DIColorStrapManager(IColorStrapManager* mgr)
{
    m_colorStrapManager = mgr;
    connect(mgr, &IColorStrapManager::strapRemoved, this, &MoodShadow::onStrapRemoved);
    connect(mgr, &IColorStrapManager::strapChanged, this, &MoodShadow::onStrapChanged);
}

int MoodShadow::load(const ControlOptions& ctlOptions)
{
    m_ctlOptions = ctlOptions;
    m_isLoaded = true;
    const auto stored = [this](const char* key) {
        return ConfigurationManager::instance()->effectJsonValue(m_effectOptions.id, m_ctlOptions.id, key);
    };
    const int strap = stored(kStrapKey).toInt(ConfigKeys::kCurrentStrap.fallback);
    if (isInList(strap))
        setCurrentStrap(strap);
    else
        resetCurrStrap();
    const QJsonObject configs = stored(ConfigKeys::kStrapConfigs).toObject();
    setSpeed(configs.value(QLatin1String(kSpeedKey)).toDouble(ConfigKeys::kStrapSpeed.fallback));
    setRange(configs.value(QLatin1String(kRangeKey)).toDouble(ConfigKeys::kStrapRange.fallback));
    return 0;
}

void MoodShadow::unload()
{
    store(kStrapKey, m_currentStrapIndex);
    storeStrapConfigs();
}

void MoodShadow::store(const char* key, const QJsonValue& value)
{
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(m_effectOptions.id, m_ctlOptions.id, key, value);
    config->saveEffectJsonObj(m_effectOptions.id);
}

void MoodShadow::storeStrapConfigs()
{
    QJsonObject configs =
        ConfigurationManager::instance()
            ->effectJsonValue(m_effectOptions.id, m_ctlOptions.id, ConfigKeys::kStrapConfigs)
            .toObject();
    configs.insert(QLatin1String(kRangeKey), m_range);
    configs.insert(QLatin1String(kSpeedKey), m_speed);
    store(ConfigKeys::kStrapConfigs, configs);
}

bool MoodShadow::isInList(int strap) const
{
    return m_colorStrapManager && m_colorStrapManager->isValidStrapIndex(strap);
}

void MoodShadow::setCurrentStrap(int id)
{
    if (!isInList(id)) {
        qCritical() << "Invalied color strap" << id;
        return;
    }
    m_currentStrapIndex = id;
    takeStrap(m_colorStrapManager->strap(id));
    store(kStrapKey, id);
    qInfo() << "Current strap has switched to" << id;
}

void MoodShadow::takeStrap(const ColorStrap& strap)
{
    m_currentStrap = strap;
    m_cycle.clear();
}

void MoodShadow::resetCurrStrap()
{
    setCurrentStrap(0);
    qInfo() << "Current strap has switch first strap" << 0;
}

void MoodShadow::setSpeed(double s)
{
    if (!isNewShare(s, m_speed, "Invalied speed"))
        return;
    m_speed = s;
    emit speedChanged(s);
    storeStrapConfigs();
}

void MoodShadow::setRange(double r)
{
    if (!isNewShare(r, m_range, "Invalied range"))
        return;
    m_range = r;
    emit rangeChanged(r);
    storeStrapConfigs();
}

void MoodShadow::onCtlDirChanged(uint32_t dir)
{
    m_ctlOptions.installDirection = dir;
}

void MoodShadow::onStrapRemoved(int i)
{
    if (i == m_currentStrapIndex)
        setCurrentStrap(isInList(i) ? i : i - 1);
    else if (m_currentStrapIndex > i)
        setCurrentStrap(m_currentStrapIndex - 1);
}

void MoodShadow::onStrapChanged(int i)
{
    if (i != m_currentStrapIndex)
        return;
    const ColorStrap strap = m_colorStrapManager->strap(i);
    if (strap.endsColor.isValid())
        takeStrap(strap);
    else
        qCritical() << "Invalied endsColor of strap" << i;
}

/// In pixels, one an LED; as wide as it takes to show each key colour.
int MoodShadow::cycleWidth() const
{
    const int width = static_cast<int>(2.0 * m_range * m_ctlOptions.nbLeds);
    return qMax(width, m_currentStrap.keyColors.size() + 2);
}

void MoodShadow::advance(double seconds)
{
    const double step = static_cast<double>(m_ctlOptions.nbLeds) / m_cycle.size() * m_speed * seconds;
    if (m_ctlOptions.installDirection != kMirrored) {
        m_position += step;
        return;
    }
    m_position -= step;
    if (m_position < 0.0)
        m_position -= std::floor(m_position); // after a long pause by more than one cycle
}

/// Says so once and takes the first strap. Where that is broken, too, it stays still until another is chosen
/// or this one is mended.
void MoodShadow::leaveBrokenStrap()
{
    if (m_brokenStrapIndex == m_currentStrapIndex)
        return;
    m_brokenStrapIndex = m_currentStrapIndex;
    qWarning() << "Current strap has invalied" << m_currentStrapIndex;
    resetCurrStrap();
    if (m_currentStrapIndex != m_brokenStrapIndex)
        emit effectPropertyChanged(kStrapKey, m_currentStrapIndex);
}

void MoodShadow::update(double seconds)
{
    if (!m_isLoaded)
        return;
    const int width = cycleWidth();
    if (m_cycle.size() != width)
        m_cycle = strapColors(m_currentStrap, width);
    if (m_cycle.isEmpty())
        return leaveBrokenStrap();
    m_brokenStrapIndex = -1;

    advance(seconds);
    const auto first = static_cast<qint64>(width * m_position); // grows for ever: int would end some day
    QVector<LV_RGB> colors(static_cast<int>(m_ctlOptions.nbLeds));
    paintUnits(colors, m_ctlOptions.ledPerUnit,
               [this, first, width](int i) { return m_cycle.at(static_cast<int>((first + i) % width)); });
    emit updateColors(colors);
}
