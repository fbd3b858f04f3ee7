// What the window's signals lead to.
#include "app/FindingTexts.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"

#include <QDebug>

#include <algorithm>

void LumivarApp::makeMainWindow()
{
    connect(&m_mainWindow, &MainWindow::allStrapOnOff, this, &LumivarApp::onAllStrapOnOff);
    connect(&m_mainWindow, &MainWindow::requestShowHelpDlg, this, &LumivarApp::onRequestShowHelpDlg);
    connect(&m_mainWindow, &MainWindow::settingsBtnTriggered, this, &LumivarApp::showSettingsDialog);

    HomePage* home = m_mainWindow.homePage();
    connect(home, &HomePage::controllerNameChanged, this, &LumivarApp::rename);
    connect(home, &HomePage::controllerOptOrdered, this, &LumivarApp::reconfigure);
    connect(home, &HomePage::controllerEntryOrdered, this, &LumivarApp::onHomePageDevClicked);

    connectControlPage();
    connect(&m_deviceManager, &DeviceManager::effectPropertyChanged, this,
            &LumivarApp::onEffectPropertyChanged);
    connect(&m_deviceManager, &DeviceManager::findingsChanged, this, &LumivarApp::showFindings);
    connect(home, &HomePage::accessOrdered, &m_accessGrant, &AccessGrant::request);
    connect(&m_accessGrant, &AccessGrant::stateChanged, this, &LumivarApp::onAccessGrantChanged);
    connect(ConfigurationManager::instance(), &ConfigurationManager::savingTroubleChanged, this,
            &LumivarApp::showNotices);
    connect(LanguageManager::instance(), &LanguageManager::languageChanged, this, &LumivarApp::showNotices);
    showNotices();
    m_mainWindow.hideUnusedButtons();
}

/// What the user should know beside the pages' own contents, in the language of the moment.
void LumivarApp::showNotices()
{
    const bool isTroubled = ConfigurationManager::instance()->isSavingTroubled();
    m_mainWindow.setNotice(
        isTroubled ? tr("设置暂时无法保存。请检查磁盘空间和配置文件夹的写入权限，恢复后会自动保存。")
                   : QString());
    showFindings();
    if (!m_mainWindow.isHomePage())
        showNotice();
}

/// Without a device the home page is all about the reasons; beside devices they are a line.
void LumivarApp::showFindings()
{
    const PortFindings findings = m_deviceManager.findings();
    const bool isAccessMissing =
        std::any_of(findings.begin(), findings.end(), [](const PortFinding& finding) {
            return finding.kind == PortFinding::Kind::NotPermitted;
        });
    if (!isAccessMissing)
        m_accessGrant.forget();
    HomePage* home = m_mainWindow.homePage();
    home->setFindings(FindingTexts::cards(findings, m_accessGrant.state()));
    home->setNotice(m_deviceManager.controllerIds().isEmpty() ? QString() : FindingTexts::notice(findings));
}

void LumivarApp::onAccessGrantChanged()
{
    showFindings();
    if (m_accessGrant.state() == AccessGrant::State::Granted)
        m_deviceManager.lookAgain();
}

void LumivarApp::connectControlPage()
{
    ControlPage* page = m_mainWindow.controlPage();
    connect(page, &ControlPage::dirChanged, this, &LumivarApp::changeDirection);
    connect(page, &ControlPage::brightnessChanged, this, &LumivarApp::changeBrightness);
    connect(page, &ControlPage::enableChanged, this, &LumivarApp::changeEnable);
    connect(page, &ControlPage::workGoupChanged, this, &LumivarApp::onCtlPageWorkGroupChanged);
    connect(page, &ControlPage::workerChanged, this, &LumivarApp::onCtlPageWorkerChanged);
    connect(page, &ControlPage::controlModeChanged, this, &LumivarApp::onControlModeChanged);
    connect(page, &ControlPage::lOptWidPropertyChanged, this,
            [this](const QString& key, const QJsonValue& val) {
                m_deviceManager.effects().setEffectProperty(controlPage().controllerId(), key, val);
            });
    connect(page, &ControlPage::sOptWidPropertyChanged, this, &LumivarApp::onSOptWidPropertyChanged);
    connect(page, &ControlPage::wallColorsOrdered, this,
            [this] { showWallColorDialog(controlPage().controllerId()); });
    connect(page, &ControlPage::optWidActived, this, &LumivarApp::onOptWidActived);
    connect(page, &ControlPage::noticeActionClicked, this,
            [this] { m_deviceManager.answerNotice(controlPage().controllerId(), true); });
}

void LumivarApp::rename(const QString& id, const QString& name)
{
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << id;
        return;
    }
    logUserAction(controller->options().kindName + QStringLiteral(" renamed to ") + name);
    controller->setKindName(name);
}

void LumivarApp::reconfigure(const QString& id)
{
    qInfo().noquote() << "Start configuring the device" << id;
    if (!m_deviceManager.setControllerLayout(id))
        qWarning().noquote() << "Not found controller, id" << id;
}

void LumivarApp::changeDirection(int dir)
{
    const QString id = controlPage().controllerId();
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << id;
        return;
    }
    controller->setInstallDirection(static_cast<uint32_t>(dir));
    logUserAction(QStringLiteral("Controller: %1 dir changed to %2").arg(id).arg(dir));
}

void LumivarApp::changeBrightness(float brightness)
{
    if (!isSingleControlMode()) {
        forEachController([brightness](AbsRGBController& each) { each.setBrightness(brightness); });
        logUserAction(QStringLiteral("The brightness of all devices has been changed to %1").arg(brightness));
        return;
    }
    const QString id = controlPage().controllerId();
    const AbsRGBControllerPtr controller = m_deviceManager.controller(id);
    if (!controller) {
        qWarning().noquote() << "Not found controller, id" << id;
        return;
    }
    controller->setBrightness(brightness);
    logUserAction(QStringLiteral("Controller: %1 brightness changed to %2").arg(id).arg(brightness));
}

void LumivarApp::changeEnable(bool enable)
{
    if (!isSingleControlMode()) {
        forEachController([enable](AbsRGBController& each) { each.setEnable(enable); });
        logUserAction(QStringLiteral("The enable status of all devices has been changed to %1").arg(enable));
        return;
    }
    toggleLight(controlPage().controllerId(), enable);
}
