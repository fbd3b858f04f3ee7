// The properties of AbsScreenSync.
#include "effects/EffectNotice.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/StoredNumber.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <optional>

namespace {

constexpr int kFastestFrameMs = 33;

std::optional<ColorSmoother::Mode> smoothingOf(const QString& name)
{
    using Mode = ColorSmoother::Mode;
    if (name == QLatin1String("off"))
        return Mode::Off;
    if (name == QLatin1String("responsive"))
        return Mode::Responsive;
    if (name == QLatin1String("calm"))
        return Mode::Calm;
    return std::nullopt;
}

/// Under which key of the effect store a device keeps its own choice.
QString ownKey(const char* appKey)
{
    return QString::fromLatin1(appKey).section(u'.', 1);
}

} // namespace

void AbsScreenSync::listProperties()
{
    const auto toFloat = [](const QJsonValue& val) { return static_cast<float>(val.toDouble(0)); };
    m_properties.add({
        {"inputSource", [this] { return m_sourceIdx; },
         [this](const QJsonValue& val) { setInputSourceIdx(val.toString()); }, EffectProperty::Place},
        {"captures", [this] { return captureList(); }, {}, EffectProperty::Place},
        {"enbWipeDarkSizeFunc", [] { return wipeDarkSideAllowed(); }, {}, EffectProperty::Place},
        {"enbBlurAndSaturationAdjust", [this] { return m_advancedMode; }, {}, EffectProperty::Place},
        {EffectNotice::kKey, [this] { return notice(); }, {}, EffectProperty::Apart},
        {EffectNotice::kActionKey, [this] { return noticeAction(); },
         [this](const QJsonValue& val) { askForSources(val.toBool()); }, EffectProperty::Apart},
        {"blur", [this] { return static_cast<double>(static_cast<float>(m_blurStrength)); },
         [this, toFloat](const QJsonValue& val) { setBlurStrength(toFloat(val)); }, EffectProperty::Look},
        {"saturation", [this] { return static_cast<double>(static_cast<float>(m_saturationStrength)); },
         [this, toFloat](const QJsonValue& val) { setSaturationStrength(toFloat(val)); },
         EffectProperty::Look},
        {"smoothing", [this] { return m_smoothing; },
         [this](const QJsonValue& val) { setSmoothing(val.toString()); }, EffectProperty::Look},
        {"saturationGate", [this] { return m_saturationGate; },
         [this](const QJsonValue& val) { setSaturationGate(val.toInt(-1)); }, EffectProperty::Look},
        {"borderMode", [this] { return QLatin1String(m_stableBorder ? "stable" : "classic"); },
         [this](const QJsonValue& val) { setBorderMode(val.toString()); }, EffectProperty::Look},
        {"frameInterval", [this] { return m_frameInterval ? m_frameInterval : updateInterval(); },
         [this](const QJsonValue& val) { setFrameInterval(val.toInt()); }, EffectProperty::Look},
        {"wipeDarkSide", [this] { return m_autoWipeDarkSide; },
         [this](const QJsonValue& val) { setWipeDarkSide(val.toBool(false)); }, EffectProperty::Look},
    });
}

void AbsScreenSync::loadLook()
{
    m_smoothing = storedLook(ConfigKeys::kSmoothing.key).toString(ConfigKeys::kSmoothing.fallback);
    m_smoother.setMode(smoothingOf(m_smoothing).value_or(ColorSmoother::Mode::Off));
    const auto& gate = ConfigKeys::kSaturationGate;
    m_saturationGate = storedNumber(storedLook(gate.key), gate).value_or(gate.fallback);
    m_stableBorder = storedLook(ConfigKeys::kBorderMode.key).toString() == QLatin1String("stable");
    m_frameInterval = 0;
    const QJsonValue interval = storedLook(ConfigKeys::kFrameIntervalMs);
    if (interval.toInt() == ConfigKeys::kFrameIntervalOfLine)
        m_frameInterval = ConfigKeys::kFrameIntervalOfLine;
    else if (!interval.isUndefined())
        m_frameInterval = storedNumber(interval, ConfigKeys::kFixedFrameIntervalMs).value_or(0);
}

QJsonValue AbsScreenSync::storedLook(const char* appKey) const
{
    auto* config = ConfigurationManager::instance();
    const QJsonValue own = config->effectJsonValue(effectId(), controllerId(), ownKey(appKey));
    if (!own.isNull() && !own.isUndefined())
        return own;
    const QJsonValue general = config->appConfig(QLatin1String(appKey));
    return general.isNull() ? QJsonValue(QJsonValue::Undefined) : general;
}

void AbsScreenSync::storeLook(const char* appKey, const QJsonValue& value)
{
    auto* config = ConfigurationManager::instance();
    config->setEffectJsonValue(effectId(), controllerId(), ownKey(appKey), value);
    config->saveEffectJsonObj(effectId());
}

void AbsScreenSync::setSmoothing(const QString& mode)
{
    const auto known = smoothingOf(mode);
    if (!known)
        return;
    m_smoothing = mode;
    m_smoother.setMode(*known);
    storeLook(ConfigKeys::kSmoothing.key, mode);
}

void AbsScreenSync::setSaturationGate(int levels)
{
    if (levels < ConfigKeys::kSaturationGate.least || levels > ConfigKeys::kSaturationGate.most)
        return;
    m_saturationGate = levels;
    storeLook(ConfigKeys::kSaturationGate.key, levels);
}

void AbsScreenSync::setBorderMode(const QString& mode)
{
    if (mode != QLatin1String("stable") && mode != QLatin1String("classic"))
        return;
    m_stableBorder = mode == QLatin1String("stable");
    storeLook(ConfigKeys::kBorderMode.key, mode);
}

void AbsScreenSync::setFrameInterval(int ms)
{
    const auto& fixed = ConfigKeys::kFixedFrameIntervalMs;
    if (ms != ConfigKeys::kFrameIntervalOfLine && (ms < fixed.least || ms > fixed.most))
        return;
    m_frameInterval = ms;
    storeLook(ConfigKeys::kFrameIntervalMs, ms);
    applyFrameInterval();
}

void AbsScreenSync::applyFrameInterval()
{
    if (m_frameInterval == ConfigKeys::kFrameIntervalOfLine)
        setUpdateInterval(std::max(kFastestFrameMs, (m_ctlOptions.frameSlotUs + 999) / 1000));
    else if (m_frameInterval > 0)
        setUpdateInterval(m_frameInterval);
}

bool AbsScreenSync::wipeDarkSideAllowed()
{
    const auto& setting = ConfigKeys::kScreenSyncAutoWipeDarkSide;
    return ConfigurationManager::instance()->appConfig(setting.key).toBool(setting.fallback);
}

void AbsScreenSync::setWipeDarkSide(bool wipe)
{
    // Without permission all devices say no, whatever is wished for: what is copied among them is no choice.
    if (wipe == m_autoWipeDarkSide && !wipeDarkSideAllowed())
        return;
    m_autoWipeDarkSide = wipe;
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::autoWipeDarkSideKey(controllerId()), wipe);
}

QJsonValue AbsScreenSync::captureList() const
{
    if (!m_deskDuplManager)
        return QJsonValue::Null;
    QJsonArray list;
    const QList<QString> ids = m_deskDuplManager->allCapturer();
    for (const QString& id : ids)
        list.append(QJsonObject{{"index", id}, {"desc", m_deskDuplManager->capturerDesc(id)}});
    return list;
}

/// What is open on the page must show what there is to choose from now, and what is in use.
void AbsScreenSync::announceSources()
{
    emit effectPropertyChanged(QStringLiteral("captures"), captureList());
    emit effectPropertyChanged(QStringLiteral("inputSource"), m_sourceIdx);
}
