#pragma once

#include <QList>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

class LumivarApp;

/// The tray icon with its menu. Main thread.
class LVSysTray : public QObject
{
    Q_OBJECT

public:
    /// Shows the icon at once. `app` gives window and devices and outlives the tray.
    explicit LVSysTray(LumivarApp* app, QObject* parent = nullptr);
    ~LVSysTray() override;

private slots:
    void onTrayIconActived(QSystemTrayIcon::ActivationReason reason);
    void onSetupActTriggered();
    void onQuitActTriggered();
    void onDeviceCountChanged(QString ctlName);

private:
    void showWindow();

    LumivarApp* m_app;
    QSystemTrayIcon m_icon;
    QMenu m_menu;
    QList<QAction*> m_fixedActions;
};
