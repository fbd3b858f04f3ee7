// The properties of AbsScreenSync.
#include "effects/EffectNotice.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/StoredNumber.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr int kFastestFrameMs = 33;

/// In the order of ColorSmoother::Mode.
constexpr std::array kSmoothings{"off", "responsive", "calm"};
/// In the order of false and true.
constexpr std::array kBorderModes{"classic", "stable"};

/// The place of a text in a list.
template <std::size_t size>
std::optional<int> placeOf(const QString& name, const std::array<const char*, size>& names)
{
    for (std::size_t i = 0; i < size; ++i)
        if (name == QLatin1String(names[i]))
            return static_cast<int>(i);
    return std::nullopt;
}

/// What the first usable value says.
template <typename Read>
auto firstUsable(const QVector<QJsonValue>& values, Read read) -> decltype(read(QJsonValue()))
{
    for (const QJsonValue& value : values)
        if (const auto usable = read(value))
            return usable;
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
        {"smoothing", [this] { return QLatin1String(kSmoothings[std::size_t(m_smoother.mode())]); },
         [this](const QJsonValue& val) { setSmoothing(val.toString()); }, EffectProperty::Look},
        {"saturationGate", [this] { return m_saturationGate; },
         [this](const QJsonValue& val) { setSaturationGate(val.toInt(-1)); }, EffectProperty::Look},
        {"borderMode", [this] { return QLatin1String(kBorderModes[m_stableBorder]); },
         [this](const QJsonValue& val) { setBorderMode(val.toString()); }, EffectProperty::Look},
        {"frameInterval", [this] { return m_frameInterval ? m_frameInterval : updateInterval(); },
         [this](const QJsonValue& val) { setFrameInterval(val.toInt()); }, EffectProperty::Look},
        {"wipeDarkSide", [this] { return m_autoWipeDarkSide; },
         [this](const QJsonValue& val) { setWipeDarkSide(val.toBool(false)); }, EffectProperty::Look},
    });
}

void AbsScreenSync::loadLook()
{
    const auto placeOfStored = [this](const auto& setting, const auto& names) {
        const auto read = [&](const QJsonValue& value) {
            const std::optional<int> place = placeOf(value.toString(), names);
            if (!place)
                qWarning() << "[AbsScreenSync]: The stored" << setting.key << "does not count:" << value;
            return place;
        };
        return firstUsable(storedLook(setting.key), read).value_or(*placeOf(setting.fallback, names));
    };
    m_smoother.setMode(static_cast<ColorSmoother::Mode>(placeOfStored(ConfigKeys::kSmoothing, kSmoothings)));
    m_stableBorder = placeOfStored(ConfigKeys::kBorderMode, kBorderModes) == 1;
    const auto& gate = ConfigKeys::kSaturationGate;
    const auto readGate = [&gate](const QJsonValue& value) { return storedNumber(value, gate); };
    m_saturationGate = firstUsable(storedLook(gate.key), readGate).value_or(gate.fallback);
    const auto readInterval = [](const QJsonValue& value) {
        return value == ConfigKeys::kFrameIntervalOfLine
                   ? std::optional(ConfigKeys::kFrameIntervalOfLine)
                   : storedNumber(value, ConfigKeys::kFixedFrameIntervalMs);
    };
    m_frameInterval = firstUsable(storedLook(ConfigKeys::kFrameIntervalMs), readInterval).value_or(0);
}

QVector<QJsonValue> AbsScreenSync::storedLook(const char* appKey) const
{
    auto* config = ConfigurationManager::instance();
    const QString key = QLatin1String(appKey);
    QVector<QJsonValue> stored{config->effectJsonValue(effectId(), controllerId(), ownKey(appKey)),
                               config->appConfig(key), config->shippedConfig(key)};
    stored.erase(
        std::remove_if(stored.begin(), stored.end(),
                       [](const QJsonValue& value) { return value.isNull() || value.isUndefined(); }),
        stored.end());
    return stored;
}

void AbsScreenSync::storeLook(const char* appKey, const QJsonValue& value)
{
    auto* config = ConfigurationManager::instance();
    config->setEffectJsonValue(effectId(), controllerId(), ownKey(appKey), value);
    config->saveEffectJsonObj(effectId());
}

void AbsScreenSync::setSmoothing(const QString& mode)
{
    const std::optional<int> place = placeOf(mode, kSmoothings);
    if (!place)
        return;
    m_smoother.setMode(static_cast<ColorSmoother::Mode>(*place));
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
    const std::optional<int> place = placeOf(mode, kBorderModes);
    if (!place)
        return;
    m_stableBorder = *place == 1;
    m_border.forget();
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
    keepStep(m_frameInterval != 0);
    if (m_frameInterval == 0)
        return;
    // Frames that come faster than the line takes them wait, each somewhat longer than the one before.
    const int slotMs = (m_ctlOptions.frameSlotUs + 999) / 1000;
    const bool isOfLine = m_frameInterval == ConfigKeys::kFrameIntervalOfLine;
    setUpdateInterval(std::max(slotMs, isOfLine ? kFastestFrameMs : m_frameInterval));
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
    m_border.forget();
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
