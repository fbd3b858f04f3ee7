// Dialogs that the user asks for. They are opened without an event loop of their own: devices come and go,
// and the program may be told to quit, while one is open.
#include "app/LumivarApp.h"
#include "ui/HelpDialog.h"
#include "ui/SettingsDialog.h"

#include <QApplication>
#include <QDebug>

void LumivarApp::bringToFront(QDialog& dialog)
{
    dialog.raise();
    if (QWidget* front = QApplication::activeModalWidget()) {
        front->raise();
        front->activateWindow();
    }
}

void LumivarApp::showSettingsDialog()
{
    if (m_settingsDialog)
        return bringToFront(*m_settingsDialog);
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

void LumivarApp::onRequestShowHelpDlg()
{
    if (m_helpDialog)
        return bringToFront(*m_helpDialog);
    qInfo() << "HelpDialog Opnening";
    m_helpDialog = new HelpDialog(m_helpViewModel, &m_mainWindow);
    connect(m_helpDialog, &QDialog::finished, this, [this] {
        qInfo() << "HelpDialog Closing";
        m_helpDialog->deleteLater();
        m_helpDialog.clear();
    });
    m_helpDialog->open();
}
