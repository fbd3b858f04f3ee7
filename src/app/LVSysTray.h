#pragma once

#include "ui/TrayHost.h"
#include "ui/TrayMenu.h"

#include <QObject>
#include <QSystemTrayIcon>
#include <memory>

class LumivarApp;

/// The tray icon, from the moment on that the desktop has a tray, and what it does. Main thread.
class LVSysTray : public QObject
{
    Q_OBJECT

public:
    /// `app` gives window and devices and outlives the tray.
    explicit LVSysTray(LumivarApp* app, QObject* parent = nullptr);

private slots:
    void onTrayAvailable(bool isAvailable);
    void onTrayIconActived(QSystemTrayIcon::ActivationReason reason);
    void onSetupActTriggered();
    void onQuitActTriggered();
    void onDeviceCountChanged(QString ctlName);

private:
    void showWindow();

    LumivarApp* m_app;
    QIcon m_picture;
    TrayHost m_host;
    TrayMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon; ///< none before there is a tray
};
