// Devices come, go, and their buttons are pressed.
#include "app/LumivarApp.h"
#include "app/PageModels.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"

#include <QDebug>
#include <QSignalBlocker>
#include <algorithm>

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
        controller.data(), &AbsRGBController::brightnessChanged, this,
        [this, ctlName] {
            if (isOnControlPage(ctlName))
                controlPage().setBrightness(m_deviceManager.controlOptions(ctlName).brightness);
        },
        Qt::QueuedConnection);
    connect(
        controller.data(), &AbsRGBController::powerLimitedChanged, this,
        [this, ctlName] {
            if (isOnControlPage(ctlName))
                showNotice();
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
    showFindings();
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
    const QString next =
        m_deviceManager.effects().nextGroupByOrder(EffectWorkerOptions::groupOf(currentEffect));
    const QString effect = effectOfGroup(next, &EffectsManager::nextGroupByOrder, {id});
    if (effect.isEmpty())
        return;
    m_deviceManager.setControllerEffect(id, effect, true);
    if (isOnControlPage(id))
        updateControlPageView();
    logUserAction(QStringLiteral("Controller: %1 switched to the effect %2").arg(id, effect));
}

/// The default effect of the group, or of the nearest one in a direction that suits: one whose default effect
/// does not exist would leave the devices with nothing, and one that a device's page does not offer would be
/// called unusable there. Empty, with a log line, where there is none.
QString LumivarApp::effectOfGroup(QString group, NeighbourGroup neighbour, const QList<QString>& ids)
{
    EffectsManager& effects = m_deviceManager.effects();
    const auto isOffered = [&](const QString& id) {
        return isGroupOffered(effects, group, m_deviceManager.controlOptions(id).model);
    };
    for (int left = effects.groupIds().size(); left > 0; --left) {
        QString effect = effects.defaultEffect(group);
        if (effects.hasEffect(effect) && std::all_of(ids.begin(), ids.end(), isOffered))
            return effect;
        group = (effects.*neighbour)(group);
    }
    qWarning().noquote() << "[LumivarApp]: No group has an effect to go on with, id" << ids.join(u' ');
    return {};
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
