#include "LVSysTray.h"

#include "Languagemanager.h"
#include "LumivarApp.h"
#include "MainWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>

namespace {

constexpr char kIconFile[] = "images/icon.png";

/// The words stand on the window's title bar as well, in its context.
QString settingsText()
{
    return QCoreApplication::translate("MainWindow", "设置");
}

QString exitText()
{
    return QCoreApplication::translate("MainWindow", "退出");
}

} // namespace

LVSysTray::LVSysTray(LumivarApp* app, QObject* parent)
    : QObject(parent)
    , m_app(app)
{
    auto* setup = new QAction(settingsText(), this);
    setup->setVisible(LumivarApp::hasSettingsDialog());
    connect(setup, &QAction::triggered, this, &LVSysTray::onSetupActTriggered);
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    separator->setVisible(LumivarApp::hasSettingsDialog());
    auto* exit = new QAction(exitText(), this);
    connect(exit, &QAction::triggered, this, &LVSysTray::onQuitActTriggered);
    m_fixedActions = {setup, separator, exit};

    // No widget, so nothing else tells it of a new language.
    connect(LanguageManager::instance(), &LanguageManager::languageChanged, this, [setup, exit] {
        setup->setText(settingsText());
        exit->setText(exitText());
    });

    onDeviceCountChanged({});
    connect(&app->deviceManager(), &DeviceManager::newController, this, &LVSysTray::onDeviceCountChanged);
    connect(&app->deviceManager(), &DeviceManager::controllerFailed, this, &LVSysTray::onDeviceCountChanged);
    connect(&m_host, &TrayHost::availableChanged, this, &LVSysTray::onTrayAvailable);
    onTrayAvailable(m_host.isAvailable());
}

LVSysTray::~LVSysTray() = default;

void LVSysTray::onTrayAvailable(bool isAvailable)
{
    if (isAvailable && !m_icon)
        makeIcon();
    if (!isAvailable)
        qInfo() << "[LVSysTray]: no system tray, the icon appears as soon as there is one";
    m_app->mainWindow().setTrayAvailable(isAvailable);
}

/// Once and no earlier than there is a tray; the toolkit brings the icon back when the tray goes and returns.
void LVSysTray::makeIcon()
{
    const QIcon icon = QIcon(QPixmap(QLatin1String(kIconFile)));
    if (icon.isNull())
        qCritical().noquote() << "Failed to load icon file:" << kIconFile;
    m_icon = std::make_unique<QSystemTrayIcon>(icon);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &LVSysTray::onTrayIconActived);
    m_icon->setToolTip(QCoreApplication::applicationName());
    m_icon->setContextMenu(&m_menu);
    m_icon->show();
}

void LVSysTray::onDeviceCountChanged(QString)
{
    m_menu.clear();
    m_menu.addActions(m_fixedActions);
}

void LVSysTray::showWindow()
{
    MainWindow& window = m_app->mainWindow();
    window.showNormal();
    // It may have been covered by other windows all the time.
    window.raise();
    window.activateWindow();
    qInfo() << "The MainWindow has been displayed by clicking on the tray";
}

void LVSysTray::onTrayIconActived(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::DoubleClick || reason == QSystemTrayIcon::Trigger)
        showWindow();
}

void LVSysTray::onSetupActTriggered()
{
    showWindow();
    emit m_app->mainWindow().settingsBtnTriggered(); // the same road as from the title bar
}

void LVSysTray::onQuitActTriggered()
{
    qInfo() << "The Application has been requested to exit by clicking on the tray";
    QCoreApplication::quit();
}
