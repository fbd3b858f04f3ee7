#pragma once

#include "TrayHost.h"

#include <QList>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <memory>

class LumivarApp;

/// The tray icon with its menu, from the moment on that the desktop has a tray. Main thread.
class LVSysTray : public QObject
{
    Q_OBJECT

public:
    /// `app` gives window and devices and outlives the tray.
    explicit LVSysTray(LumivarApp* app, QObject* parent = nullptr);
    ~LVSysTray() override;

private slots:
    void onTrayIconActived(QSystemTrayIcon::ActivationReason reason);
    void onSetupActTriggered();
    void onQuitActTriggered();
    void onDeviceCountChanged(QString ctlName);

private:
    void makeIcon();
    void onTrayAvailable(bool isAvailable);
    void showWindow();

    LumivarApp* m_app;
    TrayHost m_host;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QList<QAction*> m_fixedActions;
};
