#include "controllers/AbsRGBController.h"

#include "support/config/StoredNumber.h"
#include "support/config/hashPropertyKey.h"

#include <QDebug>
#include <QJsonObject>

namespace {

constexpr int kRefreshMs = 800;
constexpr qint64 kReportMs = 3000;
constexpr int kPowerLimitHoldMs = 2000; ///< what is told to the user must not flicker with the picture

template <typename T>
QJsonValue member(const QJsonObject& object, const ConfigKeys::Setting<T>& setting)
{
    return object.value(QLatin1String(setting.key));
}

} // namespace

AbsRGBController::AbsRGBController(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<QVector<QVector<LV_RGB>>>("QVector<QVector<LV_RGB>>");
    qRegisterMetaType<QVector<LV_RGB>>("QVector<LV_RGB>");
    qRegisterMetaType<uint32_t>("uint32_t");
    connect(&m_refreshTimer, &QTimer::timeout, this, &AbsRGBController::internalUpdate);
    m_refreshTimer.setInterval(kRefreshMs);
    m_refreshTimer.start();
    m_updateTimer.start();
    m_options.gama = configuredGama();
    connect(ConfigurationManager::instance(), &ConfigurationManager::appConfigChanged, this,
            &AbsRGBController::onStrapColorOffsetParamChanged, Qt::QueuedConnection);
}

float AbsRGBController::configuredGama()
{
    return static_cast<float>(applicationNumber(ConfigKeys::kGama));
}

void AbsRGBController::describe(const ControlOptions& options)
{
    m_options = options;
    m_options.gama = configuredGama();
}

AbsRGBController::~AbsRGBController()
{
    qDebug().noquote() << m_options.id << "destructed";
}

void AbsRGBController::setBrightness(float brightness)
{
    if (m_options.brightness == brightness)
        return;
    m_options.brightness = brightness;
    saveProperty(QLatin1String(ConfigKeys::kBrightness.key), brightness);
    emit brightnessChanged(brightness);
    internalUpdate();
}

void AbsRGBController::setGama(float gama)
{
    if (m_options.gama == gama)
        return;
    m_options.gama = gama;
    internalUpdate();
}

void AbsRGBController::setEnable(bool enable)
{
    if (m_options.enable == enable)
        return;
    m_options.enable = enable;
    m_blackColors = QVector<LV_RGB>(ledCount());
    internalUpdate();
    saveProperty(QLatin1String(ConfigKeys::kEnable.key), enable);
    emit enableChanged(enable);
}

void AbsRGBController::setInstallDirection(uint32_t dir)
{
    if (m_options.installDirection == dir)
        return;
    m_options.installDirection = dir;
    saveProperty(QLatin1String(ConfigKeys::kInstallDirection.key), dir);
    emit installDirectionChanged(dir);
}

void AbsRGBController::setKindName(const QString& kindName)
{
    if (m_options.kindName == kindName)
        return;
    m_options.kindName = kindName;
    saveProperty(QLatin1String(ConfigKeys::kKindName.key), kindName);
    emit kindNameChanged(kindName);
}

void AbsRGBController::setNbLeds(uint32_t nbLeds)
{
    if (m_options.nbLeds == nbLeds)
        return;
    m_options.nbLeds = nbLeds;
    m_unusable.remove(QLatin1String(ConfigKeys::kNbLeds.key));
    rebuildHeader();
    saveConfig();
    m_sentColors.resize(ledCount());
    if (m_isDark) // it may reach further now
        sendBlack();
}

void AbsRGBController::setSubMode(const QString& subMode)
{
    endStandIn();
    if (m_options.subMode == subMode)
        return;
    m_options.subMode = subMode;
    saveProperty(QLatin1String(ConfigKeys::kSubMode.key), subMode);
    emit subModeChanged(subMode);
}

void AbsRGBController::setWorkMode(const QString& workMode)
{
    endStandIn();
    if (m_options.workMode == workMode)
        return;
    m_options.workMode = workMode;
    saveProperty(QLatin1String(ConfigKeys::kWorkMode.key), workMode);
    emit workModeChanged();
}

void AbsRGBController::setDark(bool dark)
{
    if (m_isDark == dark)
        return;
    m_isDark = dark;
    if (dark) {
        m_refreshTimer.stop();
        sendBlack();
        followPowerLimit();
    } else {
        m_updateTimer.restart(); // the pause is no slow effect
        internalUpdate();
    }
    emit darkChanged(dark);
}

void AbsRGBController::setCorrection(const ColorCorrection& correction)
{
    if (m_correction == correction)
        return;
    auto* config = ConfigurationManager::instance();
    QJsonObject& object = config->controllerJsonObj(m_options.storeKey());
    const QJsonObject before = m_correction.toJson();
    const QJsonObject now = correction.toJson();
    for (auto each = now.begin(); each != now.end(); ++each) {
        if (before.value(each.key()) == each.value())
            continue; // the default that stands in is no choice
        m_unusable.remove(each.key());
        object[each.key()] = each.value();
    }
    config->saveControllerJsonObj(m_options.storeKey());
    m_correction = correction;
    internalUpdate();
    emit correctionChanged();
}

void AbsRGBController::showWhite(bool white)
{
    if (m_showsWhite == white)
        return;
    m_showsWhite = white;
    internalUpdate();
}

bool AbsRGBController::loadConfig()
{
    using namespace ConfigKeys;
    // Loading goes by id, saving by storeKey(): they differ for a plug-in's device without serial, which does
    // not get its settings back, because nothing tells it from the next one of its model.
    const QJsonObject object = ConfigurationManager::instance()->controllerJsonObj(m_options.id);
    if (object.isEmpty())
        return false;
    m_options.kindName = member(object, kKindName).toString(m_options.model);
    if (m_options.kindName == m_options.portName)
        m_options.kindName = m_options.model;
    m_unusable.clear();
    const auto number = [&](const auto& setting, auto standIn) {
        const auto stored = storedNumber(member(object, setting), setting, m_options.id);
        if (!stored)
            m_unusable.insert(QLatin1String(setting.key));
        return stored.value_or(standIn);
    };
    m_options.brightness = static_cast<float>(number(kBrightness, kBrightness.fallback));
    m_options.enable = member(object, kEnable).toBool(kEnable.fallback);
    m_options.installDirection =
        static_cast<uint32_t>(member(object, kInstallDirection).toInt(kInstallDirection.fallback));
    m_options.subMode = member(object, kSubMode).toString();
    m_options.workMode = member(object, kWorkMode).toString();
    // The model's count stands in: without one the strip would be dark until the user answers.
    m_options.nbLeds = static_cast<uint32_t>(number(kNbLeds, static_cast<int>(m_options.nbLeds)));
    m_options.ledPerUnit = member(object, kLedPerUnit).toInt(kLedPerUnit.fallback);
    m_options.adjustableLength = member(object, kAdjustableLength).toBool(kAdjustableLength.fallback);
    m_options.unavailable_modes = member(object, kUnavailableModes).toArray();
    m_correction = ColorCorrection::fromJson(object, m_options.id, m_unusable);
    return true;
}

void AbsRGBController::startAsNew()
{
    m_correction.pipeline = ColorCorrection::pipelineOfNewDevices();
    const QLatin1String key(ConfigKeys::kColorPipeline.key);
    saveProperty(key, m_correction.toJson().value(key).toVariant());
}

void AbsRGBController::saveProperty(const QString& key, const QVariant& value)
{
    auto* config = ConfigurationManager::instance();
    const QString storeKey = m_options.storeKey();
    m_unusable.remove(key);
    config->controllerJsonObj(storeKey)[key] = QJsonValue::fromVariant(value);
    config->saveControllerJsonObj(storeKey);
}

void AbsRGBController::saveConfig()
{
    using namespace ConfigKeys;
    auto* config = ConfigurationManager::instance();
    const QString storeKey = m_options.storeKey();
    QJsonObject& object = config->controllerJsonObj(storeKey);
    object[QLatin1String(kKindName.key)] = m_options.kindName;
    if (!m_unusable.contains(QLatin1String(kBrightness.key)))
        object[QLatin1String(kBrightness.key)] = static_cast<double>(m_options.brightness);
    object[QLatin1String(kEnable.key)] = m_options.enable;
    object[QLatin1String(kInstallDirection.key)] = static_cast<int>(m_options.installDirection);
    const EffectChoice effect = chosenEffect();
    object[QLatin1String(kWorkMode.key)] = effect.workMode;
    object[QLatin1String(kSubMode.key)] = effect.subMode;
    if (!m_unusable.contains(QLatin1String(kNbLeds.key)))
        object[QLatin1String(kNbLeds.key)] = static_cast<int>(m_options.nbLeds);
    object[QLatin1String(kLedPerUnit.key)] = m_options.ledPerUnit;
    object[QLatin1String(kAdjustableLength.key)] = m_options.adjustableLength;
    object[QLatin1String(kUnavailableModes.key)] = m_options.unavailable_modes;
    config->saveControllerJsonObj(storeKey);
}

AbsRGBController::EffectChoice AbsRGBController::chosenEffect() const
{
    return m_chosenEffect.value_or(EffectChoice{m_options.workMode, m_options.subMode});
}

void AbsRGBController::keepChosenEffect(const EffectChoice& choice)
{
    m_chosenEffect = choice;
    storeEffect(choice);
}

/// The user has picked one, perhaps the very one that stood in.
void AbsRGBController::endStandIn()
{
    if (!m_chosenEffect)
        return;
    m_chosenEffect.reset();
    storeEffect(chosenEffect());
}

void AbsRGBController::storeEffect(const EffectChoice& choice)
{
    saveProperty(QLatin1String(ConfigKeys::kWorkMode.key), choice.workMode);
    saveProperty(QLatin1String(ConfigKeys::kSubMode.key), choice.subMode);
}

void AbsRGBController::update(QVector<LV_RGB> colors)
{
    m_rawColors = colors;
    internalUpdate();
}

void AbsRGBController::internalUpdate()
{
    if (m_isDark)
        return;
    m_pipeline.prepare(m_options.brightness, m_options.gama, m_correction);
    const QVector<LV_RGB> out = m_pipeline.apply(
        m_showsWhite ? QVector<LV_RGB>(ledCount(), LV_RGB{255, 255, 255}) : m_rawColors, ledCount());
    send(m_options.enable ? out : m_blackColors);
    followPowerLimit();
    reportPace(out);
    m_refreshTimer.start();
}

void AbsRGBController::send(const QVector<LV_RGB>& colors)
{
    m_sentColors = colors;
    if (colors.size() != ledCount())
        m_sentColors.resize(ledCount());
    writeColors(colors);
}

void AbsRGBController::followPowerLimit()
{
    if (!m_options.enable || m_isDark || m_correction.powerLimitMa == 0)
        m_powerLimitHold = QDeadlineTimer();
    else if (m_pipeline.isLimited())
        m_powerLimitHold.setRemainingTime(kPowerLimitHoldMs);
    const bool isLimited = !m_powerLimitHold.hasExpired();
    if (m_isPowerLimited == isLimited)
        return;
    m_isPowerLimited = isLimited;
    emit powerLimitedChanged(isLimited);
}

void AbsRGBController::reportPace(const QVector<LV_RGB>& out)
{
    const qint64 elapsed = m_updateTimer.restart();
    if (elapsed >= kRefreshMs && m_refreshBrake.isDue(0.0))
        qWarning().noquote().nospace() << "[[loop]][Controller]: " << m_options.id
                                       << ": The automatic refresh of the controller is triggered";
    m_updateMsSum += elapsed;
    ++m_updateCount;
    if (m_updateMsSum <= kReportMs)
        return;
    const double average = static_cast<double>(m_updateMsSum) / static_cast<double>(m_updateCount);
    m_updateMsSum = 0;
    m_updateCount = 0;
    if (!m_paceBrake.isDue(average, m_options.subMode))
        return;
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(out.constData()),
                                               out.size() * static_cast<int>(sizeof(LV_RGB)));
    qDebug().noquote().nospace() << "[[loop]][Controller]" << m_options.id
                                 << ", Avg update interval: " << average << "ms, \r\n"
                                 << "  Current worker: " << m_options.subMode << "\r\n"
                                 << "  Current raw led data: \r\n"
                                 << bytes.toHex() << "\r\n \r\n";
}

void AbsRGBController::onStrapColorOffsetParamChanged(QString key)
{
    if (hashPropertyKey(key) == hashPropertyKey(ConfigKeys::kGama.key))
        m_options.gama = configuredGama();
}
