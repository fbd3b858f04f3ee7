// What the tray's menu offers, and who fills its panels.
#include "app/DeviceControlViewModel.h"
#include "app/LumivarApp.h"
#include "ui/DeviceControlWidget.h"

namespace {

QString entryTitle(const ControlOptions& options)
{
    if (options.kindName == options.model)
        return options.id;
    return QStringLiteral("%1(%2)").arg(options.kindName, options.model);
}

} // namespace

void LumivarApp::makeTray()
{
    const auto refresh = [this] {
        QMap<QString, DeviceModel> devices;
        for (const QString& id : m_deviceManager.controllerIds()) {
            devices[id].id = id;
            devices[id].name = entryTitle(m_deviceManager.controlOptions(id));
        }
        m_sysTray.onDeviceCountChanged(devices);
    };
    const auto add = [this, refresh](const QString& id) {
        if (const AbsRGBControllerPtr controller = m_deviceManager.controller(id))
            connect(controller.data(), &AbsRGBController::kindNameChanged, this, refresh);
        refresh();
    };
    connect(&m_deviceManager, &DeviceManager::newController, this, add);
    connect(&m_deviceManager, &DeviceManager::controllerFailed, this, refresh);
    for (const QString& id : m_deviceManager.controllerIds())
        add(id);

    connect(&m_sysTray, &LVSysTray::panelShown, this,
            [this](DeviceControlWidget* panel, const QString& id, bool isForAll) {
                auto* model = panel->findChild<DeviceControlViewModel*>();
                if (!model)
                    model = new DeviceControlViewModel(*this, *panel, {}, panel);
                model->setController(id);
                const QList<QString> all = m_deviceManager.controllerIds();
                if (isForAll)
                    model->setTargets(QSet<QString>(all.begin(), all.end()));
            });
}
