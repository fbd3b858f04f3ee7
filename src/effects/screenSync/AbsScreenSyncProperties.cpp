// The property protocol of AbsScreenSync.
#include "effects/EffectNotice.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/hashPropertyKey.h"

#include <QJsonArray>
#include <QJsonObject>

QJsonValue AbsScreenSync::effectProperty(const QString& key)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey("blur"):
        return static_cast<double>(static_cast<float>(m_blurStrength));
    case hashPropertyKey("saturation"):
        return static_cast<double>(static_cast<float>(m_saturationStrength));
    case hashPropertyKey("inputSource"):
        return m_sourceIdx;
    case hashPropertyKey("wipeDarkSide"):
        return m_autoWipeDarkSide;
    case hashPropertyKey("enbWipeDarkSizeFunc"):
        return ConfigurationManager::instance()
            ->appConfig(ConfigKeys::kScreenSyncAutoWipeDarkSide.key)
            .toBool(ConfigKeys::kScreenSyncAutoWipeDarkSide.fallback);
    case hashPropertyKey("enbBlurAndSaturationAdjust"):
        return m_advancedMode;
    case hashPropertyKey("captures"):
        return captureList();
    case hashPropertyKey(EffectNotice::kKey):
        return notice();
    case hashPropertyKey(""): {
        QJsonObject all;
        for (const char* name : {"blur", "saturation", "inputSource", "wipeDarkSide", "enbWipeDarkSizeFunc",
                                 "enbBlurAndSaturationAdjust", "captures"})
            all[QLatin1String(name)] = AbsScreenSync::effectProperty(QLatin1String(name));
        return all;
    }
    default:
        return QJsonValue::Null;
    }
}

void AbsScreenSync::setEffectProperty(const QString& key, const QJsonValue& val)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey("blur"):
        setBlurStrength(static_cast<float>(val.toDouble(0)));
        break;
    case hashPropertyKey("saturation"):
        setSaturationStrength(static_cast<float>(val.toDouble(0)));
        break;
    case hashPropertyKey("inputSource"):
        setInputSourceIdx(val.toString());
        break;
    case hashPropertyKey("wipeDarkSide"):
        m_autoWipeDarkSide = val.toBool(false);
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::autoWipeDarkSideKey(controllerId()),
                                                       m_autoWipeDarkSide);
        break;
    case hashPropertyKey(""): {
        const QJsonObject all = val.toObject();
        for (const char* name : {"inputSource", "blur", "saturation", "wipeDarkSide"}) {
            // A member that is not there has nothing to say, least of all that its value is 0.
            const auto member = all.find(QLatin1String(name));
            if (member != all.end())
                setEffectProperty(QLatin1String(name), member.value());
        }
        break;
    }
    default:
        break;
    }
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
