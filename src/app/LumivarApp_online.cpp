// The online service: versions, installers, advertisements, feedback and the report of use. Without a service
// all of it stands still.
#include "app/LumivarApp.h"
#include "online/InstallerHandOver.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/ProductSettings.h"
#include "ui/HomePage.h"
#include "ui/openBox.h"
#include "viewModels/HelpDialogViewModel.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace {

constexpr int kNoDownload = -1;
constexpr int kReportAtQuitMs = 300; ///< the program's end waits no longer for it

QString timeStamp()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
}

} // namespace

void LumivarApp::reportStart()
{
    const QString openTime = timeStamp();
    setProperty("runtime.openTime", openTime);
    m_netManager.uploadAppOnOffTime(openTime, {});
}

void LumivarApp::startVersionCheck()
{
    connect(&m_netManager, &NetRCManager::hasNewAppVersion, this, &LumivarApp::onHasNewVersion);
    m_netManager.checkVersion();
}

void LumivarApp::connectDownload()
{
    connect(&m_netManager, &NetRCManager::newInstallationFileDownloaded, this, &LumivarApp::runInstallProcess,
            Qt::UniqueConnection);
    connect(&m_netManager, &NetRCManager::downloadProgress, this, [this](qint64 bytes, qint64 of) {
        showDownload(of > 0 ? static_cast<int>(bytes * 100 / of) : 0);
    });
    connect(&m_netManager, &NetRCManager::downloadFailed, this, [this](const QString& reason) {
        qWarning().noquote() << "[LumivarApp]: The installer could not be downloaded:" << reason;
        endDownload(reason);
    });
    connect(&m_mainWindow, &MainWindow::requestCancelDownload, this, &LumivarApp::cancelDownload);
}

void LumivarApp::startAdvertisement()
{
    connect(&m_adManager, &ADManager::sendUpadteDone, m_mainWindow.homePage(), &HomePage::setADBox1);
    m_adManager.requestADInfo();
}

void LumivarApp::makeHelpDlgViewModel()
{
    const ProductSettings& product = productSettings();
    m_helpViewModel->isOnline = m_netManager.isOnline();
    m_helpViewModel->supportMail = product.supportMail;
    m_helpViewModel->webSite = product.webSite;
    m_helpViewModel->setUserContactInfo(m_feedbackManager.userContactInfo());
    connect(m_helpViewModel.data(), &HelpDialogViewModel::userContactInfoChanged, this, [this] {
        const QString contact = m_helpViewModel->userContactInfo();
        m_feedbackManager.setUserContactInfo(contact);
        qInfo() << "User contact info: " << contact;
    });
    m_helpViewModel->setSendFeedback(
        [this](const QString& message, const QString& contact) { sendFeedback(message, contact); });
    m_helpViewModel->setSaveReport(
        [this](const QString& message, const QString& contact, const QString& file) {
            m_feedbackErrand.save(message, contact, file);
        });
    m_helpViewModel->setRequestUpdate([this] { startDownload(); });
    m_helpViewModel->setCancelUpdate([this] { cancelDownload(); });
}

void LumivarApp::onHasNewVersion()
{
    connect(&m_mainWindow, &MainWindow::requestUpdateAppVersion, this, &LumivarApp::onRequestUpdateAppVersion,
            Qt::UniqueConnection);
    if (m_netManager.hasInstaller())
        m_mainWindow.showNewVersionBtn();
    m_helpViewModel->setUpdateOffered(m_netManager.hasInstaller());
    m_helpViewModel->setLatestVersion(
        ConfigurationManager::instance()->globalValue(ConfigKeys::kLatestVersion.key).toString());
}

void LumivarApp::onRequestUpdateAppVersion()
{
    qInfo() << "Clicked the new version button";
    startDownload();
}

void LumivarApp::showDownload(int percent)
{
    m_mainWindow.setDownloadProgress(percent);
    m_helpViewModel->setDownloadPercent(percent);
}

void LumivarApp::startDownload()
{
    showDownload(0); // the user sees at once that something has begun
    m_netManager.downloadLatestApp();
}

void LumivarApp::cancelDownload()
{
    m_netManager.cancelDownload();
    showDownload(kNoDownload);
    m_mainWindow.showNewVersionBtn();
}

void LumivarApp::runInstallProcess(QString installerPath)
{
    if (!QFileInfo::exists(installerPath)) {
        qWarning() << "The installer does not exist";
        return endDownload({});
    }
    handOverInstaller(installerPath, this, [this, installerPath](bool isTaken) {
        if (isTaken)
            return QCoreApplication::quit();
        endDownload(tr("无法打开安装包：") + u'\n' + QDir::toNativeSeparators(installerPath));
    });
}

/// One that led to nothing: the user, who asked for it, is told, and may ask again.
void LumivarApp::endDownload(const QString& notice)
{
    showDownload(kNoDownload);
    if (!notice.isEmpty())
        openBox(&m_mainWindow, QMessageBox::Warning, notice);
    m_netManager.checkVersion();
}

void LumivarApp::sendFeedback(QString msg, QString contact)
{
    m_feedbackErrand.send(msg, contact);
}

void LumivarApp::onAppAboutToQuit()
{
    m_feedbackErrand.cancel();
    m_netManager.uploadAppOnOffTime(property("runtime.openTime").toString(), timeStamp());
    qInfo() << "The application is exiting...";
    m_deviceManager.releaseAll(); // no strip waits for a server
    m_netManager.finishReports(kReportAtQuitMs);
}
