// Dialogs that the user asks for. They are opened without an event loop of their own: devices come and go,
// and the program may be told to quit, while one is open.
#include "app/LumivarApp.h"
#include "ui/SettingsDialog.h"

#include <QApplication>
#include <QDebug>

void LumivarApp::showSettingsDialog()
{
    if (m_settingsDialog) {
        // With what stands before it, or a box that waits for its answer would be covered.
        m_settingsDialog->raise();
        if (QWidget* front = QApplication::activeModalWidget()) {
            front->raise();
            front->activateWindow();
        }
        return;
    }
    qInfo() << "SettingsDialog openning";
    m_settingsDialog = new SettingsDialog(&m_mainWindow);
    fillHotkeys(*m_settingsDialog->hotkeyEditWidget());
    connect(m_settingsDialog, &QDialog::finished, this, [this](int exitCode) {
        qInfo() << "SettingsDialog Closing, exit code: " << exitCode;
        m_settingsDialog->deleteLater();
        m_settingsDialog.clear();
    });
    // Queued, as the devices hear of the stored one: an older value must not come after a newer one.
    connect(
        m_settingsDialog, &SettingsDialog::gamaMoved, this,
        [this](double gama) {
            forEachController([gama](AbsRGBController& each) { each.setGama(static_cast<float>(gama)); });
        },
        Qt::QueuedConnection);
    m_settingsDialog->open();
}
