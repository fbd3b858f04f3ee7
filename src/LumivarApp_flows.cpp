#include "LumivarApp.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/log/Loggers.h"

#include <QDebug>

namespace {

constexpr int kToggleLight = 0;
constexpr int kNextGroup = 1;
const QString kMarquee = QStringLiteral("id.effect.marquee.marquee");

} // namespace

void LumivarApp::onNewController(QString ctlName)
{
    const AbsRGBControllerPtr controller = m_deviceManager.controller(ctlName);
    if (!controller) {
        qWarning() << "Not found controller, id" << ctlName;
        return;
    }
    connect(
        controller.data(), &AbsRGBController::devActionActived, this,
        [this, ctlName](int action) { onDevPhyBtnClicked(ctlName, action); }, Qt::QueuedConnection);
}

void LumivarApp::onControllerFailed(QString ctlName)
{
    removeController(ctlName);
}

void LumivarApp::removeController(const QString& id)
{
    qInfo() << "Starts removing controller " << id;
    m_deviceManager.effects().unbindController(id);
    // Emits controllerFailed once more when the device was still registered; that pass finds nothing left.
    m_deviceManager.removeController(id);
}

void LumivarApp::onDevPhyBtnClicked(QString ctlName, int btn)
{
    if (btn != 0) {
        qWarning() << "Unknown device commands";
        return;
    }
    const AbsRGBControllerPtr pressed = m_deviceManager.controller(ctlName);
    if (!pressed) {
        qWarning() << "Not found controller, id" << ctlName;
        return;
    }
    auto* config = ConfigurationManager::instance();
    const bool enabledBefore = pressed->options().enable;
    const QString current = m_deviceManager.effects().boundEffectId(ctlName);
    const int action =
        config->appConfig(ConfigKeys::kPhyBtnAction.key).toInt(ConfigKeys::kPhyBtnAction.fallback);
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
    EffectsManager& effects = m_deviceManager.effects();
    const QString group = effects.nextGroupByOrder(EffectWorkerOptions::groupOf(currentEffect));
    const QString effect = effects.defaultEffect(group);
    m_deviceManager.setControllerEffect(id, effect, true);
    LOG4CPLUS_INFO(usrOptionsLogger(),
                   toLogString(QStringLiteral("Controller: %1switched to the effect %2").arg(id, effect)));
}

void LumivarApp::toggleLight(const QString& id, bool enable)
{
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller)
        return;
    controller->setEnable(enable);
    LOG4CPLUS_INFO(
        usrOptionsLogger(),
        toLogString(QStringLiteral("Controller: %1 enable status changed to %2").arg(id).arg(enable)));
}
