#pragma once

#include "ui/DeviceControlWidget.h"
#include "viewModels/DeviceModel.h"

#include <QAction>
#include <QMap>
#include <QMenu>
#include <QPointer>
#include <memory>

class PanelPopup;

/// What the tray icon's menu holds: each device with its panel, all of them with one, and the fixed entries.
/// A panel is a submenu; where the desktop draws the menu by itself, which it can with plain entries only, it
/// is a window that the entry opens. Panels are made when they are opened first. Knows neither icon nor tray.
/// Main thread.
class TrayMenu : public QMenu
{
    Q_OBJECT

public:
    TrayMenu();
    ~TrayMenu() override;

    /// By id, under the names that the entries are to bear. While the user has the menu open, what has gone
    /// can no more be chosen, and what is new waits.
    void setDevices(const QMap<QString, DeviceModel>& devices);
    /// To be called as well when it has been settled who draws the menu.
    void rebuild();

signals:
    void settingsOrdered();
    void exitOrdered();
    /// A panel is about to show, or the devices have changed while it shows. Of all devices the id is the
    /// first.
    void panelShown(DeviceControlWidget* panel, QString id, bool isForAll);

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void addEntry(const QString& id, const QString& title, bool isForAll);
    void name(QAction* entry, const QString& title);
    void openMenuPanel(QMenu* submenu);
    void openPopupPanel(const QAction* entry);
    void showPanel(DeviceControlWidget* panel, const QAction* entry);
    void updateShownPanel();
    /// The device that a panel shows now, of all the first; empty when it has gone.
    QString presentDevice(const QString& id, bool isForAll) const;
    QString deviceOf(const QAction* entry) const;
    void retranslate();

    QAction m_settings;
    QAction m_separator;
    QAction m_exit;
    QMap<QString, DeviceModel> m_devices;
    QList<QAction*> m_entries;
    bool m_isStale = false;                ///< the devices have changed while it was open
    QPointer<DeviceControlWidget> m_panel; ///< the one shown last
    QString m_panelId;
    bool m_isPanelForAll = false;
    std::unique_ptr<PanelPopup> m_popup;
};
