// Devices come, go, and their buttons are pressed.
#include "app/LumivarApp.h"
#include "app/PageModels.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"

#include <QDebug>
#include <QSignalBlocker>

namespace {

constexpr int kToggleLight = 0;
constexpr int kNextGroup = 1;
const QString kMarquee = QStringLiteral("id.effect.marquee.marquee");

} // namespace

void LumivarApp::onNewController(QString ctlName)
{
    const AbsRGBControllerPtr controller = m_deviceManager.controller(ctlName);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << ctlName;
        return;
    }
    refreshHomePage();
    connect(
        controller.data(), &AbsRGBController::enableChanged, this,
        [this, ctlName](bool enable) {
            if (!isOnControlPage(ctlName))
                return;
            const QSignalBlocker blocker(controlPage());
            controlPage().setEnable(enable);
        },
        Qt::QueuedConnection);
    connect(
        controller.data(), &AbsRGBController::devActionActived, this,
        [this, ctlName](int action) { onDevPhyBtnClicked(ctlName, action); }, Qt::QueuedConnection);
}

void LumivarApp::refreshHomePage()
{
    QMap<QString, DeviceModel> devices;
    for (const QString& id : m_deviceManager.controllerIds()) {
        const ControlOptions& options = m_deviceManager.controlOptions(id);
        DeviceModel device;
        device.name = options.kindName;
        device.id = id;
        device.icon = QIcon(QPixmap::fromImage(options.icon));
        device.flag = options.adjustableLength;
        devices.insert(id, device);
    }
    m_mainWindow.homePage()->setControllerList(devices);
}

void LumivarApp::onControllerFailed(QString ctlName)
{
    removeController(ctlName);
}

void LumivarApp::removeController(const QString& id)
{
    qInfo().noquote() << "Starts removing controller " << id;
    m_deviceManager.effects().unbindController(id);
    if (isOnControlPage(id))
        m_mainWindow.switchToHomePage();
    if (controlPage().controllerId() == id)
        controlPage().dropOptionWidgets(); // their worker is gone
    refreshHomePage();
    // Emits controllerFailed once more when the device was still registered: only that nested pass shows the
    // list without it.
    m_deviceManager.removeController(id);
}

void LumivarApp::onAllStrapOnOff(bool on)
{
    m_allStrapOn = on;
    forEachController([on](AbsRGBController& each) { each.setEnable(on); });
    logUserAction(QStringLiteral("All device ON/OFF switched: %1").arg(on));
    if (m_mainWindow.isHomePage())
        return;
    const QSignalBlocker blocker(controlPage());
    controlPage().setEnable(on);
}

void LumivarApp::onDevPhyBtnClicked(QString ctlName, int btn)
{
    if (btn != 0) {
        qWarning() << "Unknown device commands";
        return;
    }
    const AbsRGBControllerPtr pressed = m_deviceManager.controller(ctlName);
    if (!pressed) {
        qWarning().noquote() << "Not found controller, id" << ctlName;
        return;
    }
    auto* config = ConfigurationManager::instance();
    const bool enabledBefore = pressed->options().enable;
    const QString current = m_deviceManager.effects().boundEffectId(ctlName);
    const int action = firstUse(ConfigKeys::kPhyBtnAction.key, ConfigKeys::kPhyBtnAction.fallback)
                           .toInt(ConfigKeys::kPhyBtnAction.fallback);
    const bool single = config->appConfig(ConfigKeys::kPhyBtnSingleCtrlMode.key)
                            .toBool(ConfigKeys::kPhyBtnSingleCtrlMode.fallback);
    // The state of the pressed device decides for all, so that one press brings them to one state.
    const QList<QString> ids = single ? QList<QString>{ctlName} : m_deviceManager.controllerIds();
    for (const QString& id : ids)
        pressButton(id, action, current, enabledBefore);
}

void LumivarApp::pressButton(const QString& id, int action, const QString& currentEffect, bool enabledBefore)
{
    if (action == kToggleLight)
        return toggleLight(id, !enabledBefore);
    if (action != kNextGroup) {
        qWarning() << "Unknown device commands" << action;
        return;
    }

    if (currentEffect == kMarquee) {
        // On the marquee the first press toggles the light, the second one moves on.
        auto* config = ConfigurationManager::instance();
        const QString key = ConfigKeys::isMarqueeEffectKey(id);
        const bool secondPress = config->appConfig(key).toBool(false);
        if (!secondPress)
            toggleLight(id, !enabledBefore);
        config->setAppConfig(key, !secondPress);
        if (!secondPress)
            return;
    }
    bindNextGroup(id, currentEffect);
}

void LumivarApp::bindNextGroup(const QString& id, const QString& currentEffect)
{
    EffectsManager& effects = m_deviceManager.effects();
    QString group = EffectWorkerOptions::groupOf(currentEffect);
    QString effect;
    // A group whose default effect does not exist would leave the device with nothing, and one that its page
    // does not offer would be called unusable there.
    const QString model = m_deviceManager.controlOptions(id).model;
    for (int left = effects.groupIds().size(); left > 0 && effect.isEmpty(); --left) {
        group = effects.nextGroupByOrder(group);
        if (isGroupOffered(effects, group, model) && effects.hasEffect(effects.defaultEffect(group)))
            effect = effects.defaultEffect(group);
    }
    if (effect.isEmpty()) {
        qWarning().noquote() << "[LumivarApp]: No group has an effect to go on with, id" << id;
        return;
    }
    m_deviceManager.setControllerEffect(id, effect, true);
    if (isOnControlPage(id))
        updateControlPageView();
    logUserAction(QStringLiteral("Controller: %1 switched to the effect %2").arg(id, effect));
}

void LumivarApp::toggleLight(const QString& id, bool enable)
{
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << id;
        return;
    }
    controller->setEnable(enable);
    logUserAction(QStringLiteral("Controller: %1 enable status changed to %2").arg(id).arg(enable));
}
