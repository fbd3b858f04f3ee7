// The control page: what it shows, and what its effects and control modes do to the devices.
#include "app/LumivarApp.h"
#include "app/PageModels.h"
#include "effects/EffectNotice.h"
#include "effects/EffectProperties.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonObject>
#include <QSignalBlocker>

namespace {

const QString kAllProperties;

QString controlModeText(bool single)
{
    return QStringLiteral("Current control mode: singleControlMode ? = %1").arg(single);
}

/// The properties of the device's worker that devices controlled together share, as an object; null where the
/// effect does not say which they are: then it is all of them.
QJsonValue lookOf(EffectsManager& effects, const QString& controllerId)
{
    return effects.effectProperty(controllerId, EffectProperties::kLook);
}

/// The choice between one device and all appears by itself when two are there for the first time, and stays.
/// While it does not show, each device is on its own.
bool isControlModeOffered(int controllers)
{
    auto* config = ConfigurationManager::instance();
    const auto& setting = ConfigKeys::kEnableMultiDeviceControlView;
    const QJsonValue stored = config->appConfig(setting.key);
    if ((stored.isNull() || stored.isUndefined()) && controllers > 1)
        config->setAppConfig(setting.key, true);
    const bool isOffered = config->appConfig(setting.key).toBool(setting.fallback);
    if (!isOffered)
        config->setAppConfig(ConfigKeys::kSingleControlMode.key, true);
    return isOffered;
}

} // namespace

ControlPage& LumivarApp::controlPage() const
{
    return *m_mainWindow.controlPage();
}

bool LumivarApp::isOnControlPage(const QString& id) const
{
    return !m_mainWindow.isHomePage() && controlPage().controllerId() == id;
}

void LumivarApp::onHomePageDevClicked(QString id)
{
    m_mainWindow.switchToControlPage();
    controlPage().setControllerId(id);
    updateControlPageView();
    m_deviceManager.answerNotice(id, false);
}

void LumivarApp::updateControlPageView()
{
    if (m_mainWindow.isHomePage())
        return;
    qInfo() << "Starts init controller page data";
    ControlPage& page = controlPage();
    const ControlOptions options = m_deviceManager.controlOptions(page.controllerId());
    if (!options.isValid()) {
        qWarning().noquote() << "Not found controller, id" << page.controllerId();
        return;
    }
    page.setDir(static_cast<int>(options.installDirection));
    page.setEnable(options.enable);
    page.setBrightness(options.brightness);
    page.setControllerName(deviceTitle(options));
    page.setProductImage(options.image);
    page.setControlModeVisible(isControlModeOffered(m_deviceManager.controllerIds().size()));
    page.setSingleDevCtrlMode(isSingleControlMode());
    fillWorkGroups(options);
    fillWorkers(options.id);
    logControlPage();
}

void LumivarApp::fillWorkGroups(const ControlOptions& options)
{
    controlPage().setWorkGroups(workGroupModels(m_deviceManager.effects(), options.model), options.workMode);
}

void LumivarApp::fillWorkers(const QString& controllerId)
{
    const ControlOptions& options = m_deviceManager.controlOptions(controllerId);
    controlPage().setWorkers(workerModels(m_deviceManager.effects(), options.workMode), options.subMode);
    showNotice();
}

/// What the user should know of the effect on the page: first that there is none, then what the worker says.
/// The power limit has a line of its own.
void LumivarApp::showNotice()
{
    const QString id = controlPage().controllerId();
    EffectsManager& effects = m_deviceManager.effects();
    QString text = QString::fromUtf8(choiceNotice(effects, m_deviceManager.controlOptions(id)));
    QString action;
    if (text.isEmpty()) {
        text = effects.effectProperty(id, QLatin1String(EffectNotice::kKey)).toString();
        action = text.isEmpty()
                     ? text
                     : effects.effectProperty(id, QLatin1String(EffectNotice::kActionKey)).toString();
    }
    const auto translated = [](const QString& source) {
        return source.isEmpty()
                   ? source
                   : QCoreApplication::translate(EffectNotice::kContext, source.toUtf8().constData());
    };
    QString notice = translated(text);
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (controller && controller->isPowerLimited())
        notice += (notice.isEmpty() ? QString() : QStringLiteral("\n")) + tr("为保护电源，亮度已被限制。");
    controlPage().setNotice(notice, translated(action));
}

void LumivarApp::logControlPage() const
{
    const ControlPage& page = controlPage();
    qDebug().noquote().nospace() << "Current control page data: \r\n"
                                 << "\t controller : " << page.controllerId()
                                 << "\r\n\t install direction : " << page.dir()
                                 << "\r\n\t enable status : " << page.isLightEnabled()
                                 << "\r\n\t brightness : " << page.brightness()
                                 << "\r\n\t current effect group : " << page.currentGroup()
                                 << "\r\n\t current effect : " << page.currentWorker()
                                 << "\r\n\t SOpt widget : " << page.sOptWidgetName()
                                 << "\r\n\t LOpt widget : " << page.lOptWidgetName();
}

void LumivarApp::onCtlPageWorkGroupChanged(QString groupId)
{
    const QString id = controlPage().controllerId();
    EffectsManager& effects = m_deviceManager.effects();
    QString target = effects.lastBindingEffect(id, groupId);
    if (!effects.hasEffect(target)) // of a plug-in that is gone
        target = effects.usableEffect(groupId);
    logUserAction(
        QStringLiteral("Clicked group: %1, controller id: %2, target effect: %3").arg(groupId, id, target));
    logUserAction(controlModeText(isSingleControlMode()));
    setEffect(target);
    fillWorkers(id);
}

void LumivarApp::onCtlPageWorkerChanged(QString workerId)
{
    logUserAction(
        QStringLiteral("Clicked effect: %1, controller id: %2").arg(workerId, controlPage().controllerId()));
    logUserAction(controlModeText(isSingleControlMode()));
    setEffect(workerId);
    showNotice();
}

void LumivarApp::setEffect(const QString& effectId)
{
    // Picking an effect turns the light on.
    const QList<QString> ids = isSingleControlMode() ? QList<QString>{controlPage().controllerId()}
                                                     : m_deviceManager.controllerIds();
    for (const QString& id : ids)
        m_deviceManager.setControllerEffect(id, effectId, true);
}

void LumivarApp::onControlModeChanged(bool isSingleDevCtrl)
{
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kSingleControlMode.key, isSingleDevCtrl);
    if (isSingleDevCtrl)
        return; // the devices keep what they have
    const ControlPage& page = controlPage();
    logUserAction(QStringLiteral("Switched to multi device control"));
    // The device's own: the page shows it in whole percent, and nobody has asked for that to be written.
    const float brightness = m_deviceManager.controlOptions(page.controllerId()).brightness;
    const bool enable = page.isLightEnabled();
    const QString effect = page.currentWorker();
    forEachController([&](AbsRGBController& each) {
        each.setBrightness(brightness);
        each.setEnable(enable);
        if (!effect.isEmpty())
            m_deviceManager.setControllerEffect(each.options().id, effect,
                                                enable); // keeps a light that is off
    });
    logUserAction(QStringLiteral("Successfully set the configuration of all devices to \n\t brightness: %1"
                                 "\n\t enable status: %2\n\t work effect: %3")
                      .arg(brightness)
                      .arg(enable)
                      .arg(effect));

    EffectsManager& effects = m_deviceManager.effects();
    const QJsonValue look = lookOf(effects, page.controllerId());
    const QJsonObject shared =
        (look.isObject() ? look : effects.effectProperty(page.controllerId(), kAllProperties)).toObject();
    qInfo() << "Properties copied to all devices:" << shared.keys();
    copyPropertyToOthers(kAllProperties, shared);
}

void LumivarApp::onSOptWidPropertyChanged(const QString& key, const QJsonValue& val)
{
    EffectsManager& effects = m_deviceManager.effects();
    const QString id = controlPage().controllerId();
    effects.setEffectProperty(id, key, val);
    if (isSingleControlMode())
        return;
    const QJsonValue look = lookOf(effects, id);
    if (!look.isObject() || look.toObject().contains(key))
        copyPropertyToOthers(key, val);
}

/// To the workers of the same effect on the other devices.
void LumivarApp::copyPropertyToOthers(const QString& key, const QJsonValue& val)
{
    EffectsManager& effects = m_deviceManager.effects();
    const QString own = controlPage().controllerId();
    const QString effect = effects.boundEffectId(own);
    if (effect.isEmpty())
        return;
    for (const QString& id : m_deviceManager.controllerIds()) {
        if (id != own && effects.boundEffectId(id) == effect)
            effects.setEffectPropertySilently(id, key, val);
    }
}

void LumivarApp::onOptWidActived()
{
    ControlPage& page = controlPage();
    EffectsManager& effects = m_deviceManager.effects();
    if (!effects.boundWorker(page.controllerId()))
        return;
    const QJsonValue properties = effects.effectProperty(page.controllerId(), kAllProperties);
    // What an option widget says while it is filled is no wish of the user's. The page passes it on.
    const QSignalBlocker blocker(page);
    page.setSOptWidProperty(kAllProperties, properties);
    page.setLOptWidProperty(kAllProperties, properties);
}

/// A change from inside the worker. It comes by way of the device manager, which knows whether that worker is
/// still bound, so that nothing hangs on to a worker that has gone.
void LumivarApp::onEffectPropertyChanged(const QString& ctl, const QString& effect, const QString& key,
                                         const QJsonValue& val)
{
    ControlPage& page = controlPage();
    if (!isOnControlPage(ctl) || page.currentWorker() != effect)
        return;
    if (key == QLatin1String(EffectNotice::kKey))
        return showNotice();
    const QSignalBlocker blocker(page);
    page.setSOptWidProperty(key, val);
    page.setLOptWidProperty(key, val);
}
