#include "app/LumivarApp.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/log/Loggers.h"
#include "ui/ControlPage.h"
#include "ui/HelpDialog.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/SettingsDialog.h"
#include "ui/WallColorDialog.h"
#include "viewModels/HelpDialogViewModel.h"

#include <QApplication>
#include <QDebug>
#include <QFile>
#include <QFileSystemWatcher>

namespace {

const QString kStyleFile = QStringLiteral("styles/default.qss");

bool isAppFlag(const char* property)
{
    return QCoreApplication::instance()->property(property).toBool();
}

} // namespace

LumivarApp::LumivarApp(QObject* parent)
    : QObject(parent)
    , m_deviceManager(this, nullptr)
    , m_previewFeed(m_deviceManager, *m_mainWindow.controlPage())
    , m_sysTray(m_mainWindow)
    , m_feedbackErrand(m_feedbackManager, m_netManager, m_mainWindow)
    , m_helpViewModel(QSharedPointer<HelpDialogViewModel>::create()) // what is known is told from here on
{
    reportStart();
    showWindow();
    firstUse(ConfigKeys::kSingleControlMode.key, ConfigKeys::kSingleControlMode.fallback);
    uiStyleListener();
    startVersionCheck();

    makeTray();
    connect(&m_deviceManager, &DeviceManager::newController, this, &LumivarApp::onNewController,
            Qt::DirectConnection);
    connect(&m_deviceManager, &DeviceManager::controllerFailed, this, &LumivarApp::onControllerFailed,
            Qt::DirectConnection);
    for (const QString& id : m_deviceManager.controllerIds())
        onNewController(id);

    connectDownload();
    makeMainWindow();
    makeHelpDlgViewModel();
    makeHotkeys();
    startAdvertisement();
    watchSession();
    connect(qApp, &QCoreApplication::aboutToQuit, this, &LumivarApp::onAppAboutToQuit);
}

LumivarApp::~LumivarApp()
{
    for (QDialog* dialog : {static_cast<QDialog*>(m_settingsDialog), static_cast<QDialog*>(m_helpDialog),
                            static_cast<QDialog*>(m_wallColorDialog)}) {
        if (dialog)
            dialog->reject();
    }
    // The members go before the connections to this object do: what the window's last moments emit, such as a
    // rename editor losing the focus, must not reach for devices any more.
    m_session.disconnect(this);
    m_mainWindow.disconnect(this);
    m_mainWindow.homePage()->disconnect(this);
    m_mainWindow.controlPage()->disconnect(this);
    m_deviceManager.disconnect(this);
    m_hotKeyManager.disconnect(this);
    m_netManager.disconnect(this);
    ConfigurationManager::instance()->disconnect(this);
    LanguageManager::instance()->disconnect(this);
}

void LumivarApp::showWindow()
{
    m_mainWindow.sizeToScreen();
    if (!isAppFlag("isHeadless"))
        isAppFlag("isAutoStartup") ? m_mainWindow.putAway() : m_mainWindow.show();
    m_mainWindow.fitToScreen();
}

void LumivarApp::uiStyleListener()
{
    auto* watcher = new QFileSystemWatcher(this);
    // A style file beside the program is optional: without it nothing ever fires.
    if (QFile::exists(kStyleFile))
        watcher->addPath(kStyleFile);
    connect(watcher, &QFileSystemWatcher::fileChanged, this, [this, watcher](const QString& path) {
        if (!watcher->files().contains(path) && QFile::exists(path))
            watcher->addPath(path); // an editor has put another file in its place
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
            qWarning() << "[LumivarApp]: Cannot read the style sheet" << path << file.errorString();
            return;
        }
        const QString sheet = QString::fromUtf8(file.readAll());
        qApp->setStyleSheet(sheet); // the main window follows by itself
        qDebug() << "The new styles file has been loaded";
    });
}

void LumivarApp::onWakeUpRequested()
{
    qInfo() << "[LumivarApp]: A second start asks for the window";
    if (isAppFlag("isHeadless"))
        return;
    if (m_mainWindow.isPutAway())
        m_mainWindow.showNormal();
    if (!m_mainWindow.isMinimized())
        m_mainWindow.comeToFront(); // it may be covered by other windows
}

QJsonValue LumivarApp::firstUse(const char* key, const QJsonValue& fallback)
{
    auto* config = ConfigurationManager::instance();
    QJsonValue stored = config->appConfig(QLatin1String(key));
    if (!stored.isNull() && !stored.isUndefined())
        return stored;
    config->setAppConfig(QLatin1String(key), fallback);
    return fallback;
}

bool LumivarApp::isSingleControlMode()
{
    return ConfigurationManager::instance()
        ->appConfig(ConfigKeys::kSingleControlMode.key)
        .toBool(ConfigKeys::kSingleControlMode.fallback);
}

void LumivarApp::forEachController(const std::function<void(AbsRGBController&)>& action)
{
    for (const QString& id : m_deviceManager.controllerIds()) {
        if (const AbsRGBControllerPtr controller = m_deviceManager.controller(id))
            action(*controller);
    }
}

void LumivarApp::logUserAction(const QString& text, const char* file, int line)
{
    usrOptionsLogger().log(log4cplus::INFO_LOG_LEVEL, toLogString(text), file, line);
}
