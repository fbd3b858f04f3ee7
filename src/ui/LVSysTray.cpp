#include "ui/LVSysTray.h"

#include "ui/MainWindow.h"

#include <QCoreApplication>
#include <QDebug>

LVSysTray::LVSysTray(MainWindow& window, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_picture(QPixmap(QStringLiteral("images/icon.png")))
{
    if (m_picture.isNull())
        qCritical() << "Failed to load icon file: images/icon.png";
    connect(&m_menu, &TrayMenu::settingsOrdered, this, &LVSysTray::onSetupActTriggered);
    connect(&m_menu, &TrayMenu::exitOrdered, this, &LVSysTray::onQuitActTriggered);
    connect(&m_menu, &TrayMenu::panelShown, this, &LVSysTray::panelShown);
    connect(&m_host, &TrayHost::availableChanged, this, &LVSysTray::onTrayAvailable);
    onTrayAvailable(m_host.isAvailable());
}

void LVSysTray::onTrayAvailable(bool isAvailable)
{
    m_window.setTrayAvailable(isAvailable);
    if (!isAvailable)
        qInfo() << "[LVSysTray]: no system tray, the icon appears as soon as there is one";
    if (!isAvailable || m_icon)
        return; // the toolkit brings the icon back when the tray goes and returns
    m_icon = std::make_unique<QSystemTrayIcon>(m_picture);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &LVSysTray::onTrayIconActived);
    m_icon->setToolTip(QCoreApplication::applicationName());
    m_icon->setContextMenu(&m_menu);
    m_menu.rebuild(); // from now on it is known who draws it
    m_icon->show();
}

void LVSysTray::onDeviceCountChanged(const QMap<QString, DeviceModel>& devices)
{
    m_menu.setDevices(devices);
}

void LVSysTray::showWindow()
{
    m_window.showNormal();
    m_window.comeToFront(); // it may have been covered by other windows all the time
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
    emit m_window.settingsBtnTriggered(); // the same road as from the title bar
}

void LVSysTray::onQuitActTriggered()
{
    qInfo() << "The Application has been requested to exit by clicking on the tray";
    QCoreApplication::quit();
}
