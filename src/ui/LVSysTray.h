#pragma once

#include "ui/TrayHost.h"
#include "ui/TrayMenu.h"

#include <QObject>
#include <QSystemTrayIcon>
#include <memory>

class MainWindow;

/// The tray icon, from the moment on that the desktop has a tray, and what it does. Main thread.
class LVSysTray : public QObject
{
    Q_OBJECT

public:
    /// `window` outlives the tray.
    explicit LVSysTray(MainWindow& window, QObject* parent = nullptr);

public slots:
    /// By id, under the names that the menu is to show.
    void onDeviceCountChanged(const QMap<QString, DeviceModel>& devices);

signals:
    /// A panel is about to show, or the devices have changed while it shows. Of all devices the id is the
    /// first.
    void panelShown(DeviceControlWidget* panel, QString id, bool isForAll);

private slots:
    void onTrayAvailable(bool isAvailable);
    void onTrayIconActived(QSystemTrayIcon::ActivationReason reason);
    void onSetupActTriggered();
    void onQuitActTriggered();

private:
    void showWindow();

    MainWindow& m_window;
    QIcon m_picture;
    TrayHost m_host;
    TrayMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon; ///< none before there is a tray
};
