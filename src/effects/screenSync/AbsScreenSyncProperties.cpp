// The properties of AbsScreenSync.
#include "effects/EffectNotice.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonArray>
#include <QJsonObject>

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
        {"wipeDarkSide", [this] { return m_autoWipeDarkSide; },
         [this](const QJsonValue& val) { setWipeDarkSide(val.toBool(false)); }, EffectProperty::Look},
    });
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
