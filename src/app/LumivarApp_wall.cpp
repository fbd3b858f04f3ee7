// What a device makes of its colours, and the dialog that sets it.
#include "app/LumivarApp.h"
#include "app/PageModels.h"
#include "ui/WallColorDialog.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString asText(const ColorCorrection& correction)
{
    return QString::fromUtf8(QJsonDocument(correction.toJson()).toJson(QJsonDocument::Compact));
}

} // namespace

/// The dialog stays with its device, whatever the page shows meanwhile, and goes with it.
void LumivarApp::showWallColorDialog(const QString& id)
{
    if (m_wallColorDialog)
        return bringToFront(*m_wallColorDialog);
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << id;
        return;
    }
    qInfo().noquote() << "WallColorDialog opening, id" << id;
    auto* dialog = new WallColorDialog(&m_mainWindow);
    m_wallColorDialog = dialog;
    const ControlOptions& options = controller->options();
    dialog->setDevice(deviceTitle(options), static_cast<int>(options.nbLeds));
    dialog->setLit(options.enable);
    ColorCorrection defaults;
    defaults.pipeline = ColorCorrection::pipelineOfNewDevices();
    dialog->setDefaults(defaults);
    dialog->setCorrection(controller->correction());

    AbsRGBController* device = controller.data();
    connect(dialog, &WallColorDialog::correctionChanged, device, &AbsRGBController::setCorrection);
    connect(dialog, &WallColorDialog::whiteWanted, device, &AbsRGBController::showWhite);
    connect(dialog, &WallColorDialog::settled, this, [dialog, id] {
        logUserAction(
            QStringLiteral("Controller: %1 colors changed to %2").arg(id, asText(dialog->correction())));
    });
    connect(device, &AbsRGBController::enableChanged, dialog, &WallColorDialog::setLit);
    connect(&m_deviceManager, &DeviceManager::controllerFailed, dialog, [dialog, id](const QString& failed) {
        if (failed == id)
            dialog->reject();
    });
    connect(dialog, &QDialog::finished, this, [this, dialog] {
        qInfo() << "WallColorDialog closing";
        m_deviceManager.disconnect(dialog); // which tells of a failure twice
        dialog->deleteLater();
        m_wallColorDialog.clear();
    });
    dialog->open();
}
