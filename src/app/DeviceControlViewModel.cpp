#include "app/DeviceControlViewModel.h"

#include "app/LumivarApp.h"
#include "app/PageModels.h"
#include "support/log/Loggers.h"
#include "ui/ControlPage.h"

#include <QDebug>
#include <QSignalBlocker>
#include <algorithm>

DeviceControlViewModel::DeviceControlViewModel(LumivarApp& app, DeviceControlWidget& view, const QString& id,
                                               QObject* parent)
    : QObject(parent)
    , m_app(app)
    , m_view(view)
{
    m_refresh.setSingleShot(true);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (m_view.isVisible())
            refreshView();
    });
    connect(this, &DeviceControlViewModel::effectsViewChanged, &m_view,
            &DeviceControlWidget::setEffectGroups);
    if (!id.isEmpty())
        setController(id);
    connect(&m_view, &DeviceControlWidget::enableStatusChagned, this,
            &DeviceControlViewModel::onLightStatusChanged);
    connect(&m_view, &DeviceControlWidget::effectGroupChanged, this,
            &DeviceControlViewModel::onEffectGroupChanged);
    connect(&m_view, &DeviceControlWidget::currentEffectChanged, this,
            &DeviceControlViewModel::onEffectChanged);
    connect(&m_view, &DeviceControlWidget::brightChanged, this, &DeviceControlViewModel::onBrightChanged);
}

bool DeviceControlViewModel::setController(const QString& id)
{
    const AbsRGBControllerPtr controller = m_app.deviceManager().controller(id);
    if (!controller) {
        qWarning().noquote() << "DeviceControlViewModel: Invalid id" << id;
        return false;
    }
    m_controllerId = id;
    m_targets = {id};
    if (m_controller)
        m_controller->disconnect(&m_refresh);
    m_controller = controller.data();
    const auto refreshOn = [this](auto signal) {
        connect(m_controller, signal, &m_refresh, qOverload<>(&QTimer::start));
    };
    refreshOn(&AbsRGBController::enableChanged);
    refreshOn(&AbsRGBController::brightnessChanged);
    refreshOn(&AbsRGBController::workModeChanged);
    refreshOn(&AbsRGBController::subModeChanged);
    refreshView();
    return true;
}

void DeviceControlViewModel::refreshView()
{
    DeviceManager& devices = m_app.deviceManager();
    const ControlOptions& options = devices.controlOptions(m_controllerId);
    if (!options.isValid())
        return;
    const QSignalBlocker blocker(m_view);
    emit effectsViewChanged(workGroupModels(devices.effects(), options.model), options.workMode);
    m_view.setWorkers(workerModels(devices.effects(), options.workMode), options.subMode);
    m_view.setLightEnabled(options.enable);
    m_view.setBrightness(options.brightness);
}

void DeviceControlViewModel::onLightStatusChanged(bool enable)
{
    forEachTarget([enable](AbsRGBController& each) { each.setEnable(enable); });
    LOG4CPLUS_INFO(
        usrOptionsLogger(),
        toLogString(QStringLiteral("Controllers: %1 status changed to %2").arg(targetNames()).arg(enable)));
}

void DeviceControlViewModel::onBrightChanged(double brightness)
{
    forEachTarget(
        [brightness](AbsRGBController& each) { each.setBrightness(static_cast<float>(brightness)); });
    LOG4CPLUS_INFO(
        usrOptionsLogger(),
        toLogString(
            QStringLiteral("Controllers: %1 brightness changed to %2").arg(targetNames()).arg(brightness)));
}

void DeviceControlViewModel::onEffectChanged(const QString& effect)
{
    if (effect.isEmpty()) {
        qCritical() << "DeviceControlViewModel: Invalied effect id in founction onEffectChanged";
        return;
    }
    LOG4CPLUS_INFO(
        usrOptionsLogger(),
        toLogString(QStringLiteral("Clicked effect: %1, controllers id: %2").arg(effect, targetNames())));
    setEffect(effect);
}

void DeviceControlViewModel::onEffectGroupChanged(const QString& newGroup)
{
    if (m_controllerId.isEmpty()) {
        qCritical() << "DeviceControlViewModel: Invalied controller id in function onEffectGroupChanged";
        return;
    }
    if (newGroup.isEmpty()) {
        qCritical() << "DeviceControlViewModel: Empty group id";
        return;
    }
    EffectsManager& effects = m_app.deviceManager().effects();
    const QString current = m_app.deviceManager().controlOptions(m_controllerId).subMode;
    const bool isThere = EffectWorkerOptions::groupOf(current) == newGroup && effects.hasEffect(current);
    const QString target = isThere ? current : effects.usableEffect(newGroup);
    LOG4CPLUS_INFO(usrOptionsLogger(),
                   toLogString(QStringLiteral("Clicked group: %1, target effect: %2, controllers id: %3")
                                   .arg(newGroup, target, targetNames())));
    setEffect(target);
}

/// Picking an effect turns the light on.
void DeviceControlViewModel::setEffect(const QString& effect)
{
    DeviceManager& devices = m_app.deviceManager();
    forEachTarget(
        [&](AbsRGBController& each) { devices.setControllerEffect(each.options().id, effect, true); });
    refreshView();
    // Light and brightness the page follows by itself.
    if (m_targets.contains(m_app.mainWindow().controlPage()->controllerId()))
        m_app.updateControlPageView();
}

void DeviceControlViewModel::forEachTarget(const std::function<void(AbsRGBController&)>& action)
{
    const QSet<QString> targets = m_targets; // a device may fail over it, and leave them
    for (const QString& id : targets) {
        if (const AbsRGBControllerPtr controller = m_app.deviceManager().controller(id))
            action(*controller);
    }
}

QString DeviceControlViewModel::targetNames() const
{
    QStringList names = m_targets.values();
    std::sort(names.begin(), names.end());
    return names.join(u',');
}
