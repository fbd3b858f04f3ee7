#include "ui/TrayMenu.h"

#include "ui/PanelPopup.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QWidgetAction>

namespace {

constexpr int kMostTitleWidth = 320; ///< pixels
constexpr const char* kId = "controllerId";
constexpr const char* kIsForAll = "mutipleDevCtrl";

QString allDevicesText()
{
    return QCoreApplication::translate("LVSysTray", "所有设备");
}

} // namespace

TrayMenu::TrayMenu()
{
    m_separator.setSeparator(true);
    // A menu drops the connections to itself of an action that is taken out, as rebuild() does.
    connect(&m_settings, &QAction::triggered, &m_settings, [this] { emit settingsOrdered(); });
    connect(&m_exit, &QAction::triggered, &m_exit, [this] { emit exitOrdered(); });
    retranslate();
    rebuild();
}

TrayMenu::~TrayMenu() = default;

void TrayMenu::setDevices(const QMap<QString, DeviceModel>& devices)
{
    m_devices = devices;
    updateShownPanel();
    m_isStale = isVisible();
    if (!m_isStale)
        return rebuild();
    for (QAction* entry : qAsConst(m_entries))
        entry->setEnabled(!deviceOf(entry).isEmpty());
}

void TrayMenu::rebuild()
{
    for (QAction* entry : qAsConst(m_entries)) {
        removeAction(entry);
        if (entry->menu())
            entry->menu()->deleteLater(); // this may be its own doing
        else
            entry->deleteLater();
    }
    m_entries.clear();
    clear(); // of its lines
    m_isStale = false;
    for (const DeviceModel& device : qAsConst(m_devices))
        addEntry(device.id, device.name, false);
    if (m_devices.size() > 1) {
        addSeparator();
        addEntry(m_devices.firstKey(), allDevicesText(), true);
    }
    if (!m_devices.isEmpty())
        addSeparator();
    addActions({&m_settings, &m_separator, &m_exit});
}

void TrayMenu::addEntry(const QString& id, const QString& title, bool isForAll)
{
    QAction* entry = nullptr;
    if (platformMenu()) {
        entry = new QAction(this);
        connect(entry, &QAction::triggered, this, [this, entry] { openPopupPanel(entry); });
    } else {
        auto* submenu = new QMenu(this);
        connect(submenu, &QMenu::aboutToShow, this, [this, submenu] { openMenuPanel(submenu); });
        entry = submenu->menuAction();
    }
    entry->setProperty(kId, id);
    entry->setProperty(kIsForAll, isForAll);
    name(entry, title);
    m_entries.append(entry);
    addAction(entry);
}

void TrayMenu::name(QAction* entry, const QString& title)
{
    ensurePolished();
    QString text = title;
    text.replace(u'\n', u' ');
    text = fontMetrics().elidedText(text, Qt::ElideMiddle, kMostTitleWidth);
    entry->setText(text.replace(u'&', QLatin1String("&&"))); // it is no shortcut
    entry->setToolTip(title);
}

void TrayMenu::openMenuPanel(QMenu* submenu)
{
    if (submenu->isEmpty()) {
        auto* action = new QWidgetAction(submenu);
        action->setDefaultWidget(new DeviceControlWidget);
        submenu->addAction(action);
    }
    auto* action = static_cast<QWidgetAction*>(submenu->actions().constFirst());
    showPanel(static_cast<DeviceControlWidget*>(action->defaultWidget()), submenu->menuAction());
    const auto handKeyboardOn = [submenu, action] {
        if (submenu->activeAction() == action) // it was opened by a key
            action->defaultWidget()->setFocus(Qt::TabFocusReason);
    };
    QMetaObject::invokeMethod(submenu, handKeyboardOn, Qt::QueuedConnection);
}

void TrayMenu::openPopupPanel(const QAction* entry)
{
    if (deviceOf(entry).isEmpty())
        return; // it has gone between the click and its arrival here
    m_popup = std::make_unique<PanelPopup>();
    m_popup->setTitle(entry->toolTip());
    showPanel(&m_popup->panel(), entry);
    m_popup->showAt(QCursor::pos());
}

void TrayMenu::showPanel(DeviceControlWidget* panel, const QAction* entry)
{
    m_panel = panel;
    m_panel->setAccessibleName(entry->toolTip());
    m_panelId = deviceOf(entry);
    m_isPanelForAll = entry->property(kIsForAll).toBool();
    emit panelShown(panel, m_panelId, m_isPanelForAll);
}

/// A device that goes takes its panel along; that of all devices goes on with those that are left.
void TrayMenu::updateShownPanel()
{
    if (!m_panel || !m_panel->isVisible())
        return;
    m_panelId = presentDevice(m_panelId, m_isPanelForAll);
    if (m_panelId.isEmpty())
        m_panel->window()->close();
    else
        emit panelShown(m_panel, m_panelId, m_isPanelForAll);
}

QString TrayMenu::presentDevice(const QString& id, bool isForAll) const
{
    if (isForAll && !m_devices.isEmpty())
        return m_devices.firstKey();
    return m_devices.contains(id) ? id : QString();
}

QString TrayMenu::deviceOf(const QAction* entry) const
{
    return presentDevice(entry->property(kId).toString(), entry->property(kIsForAll).toBool());
}

void TrayMenu::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMenu::changeEvent(event);
}

void TrayMenu::hideEvent(QHideEvent* event)
{
    QMenu::hideEvent(event);
    const auto rebuildStale = [this] {
        if (m_isStale && !isVisible())
            rebuild();
    };
    QMetaObject::invokeMethod(this, rebuildStale, Qt::QueuedConnection); // a submenu may still be in use
}

void TrayMenu::retranslate()
{
    // The words stand on the window's title bar as well, in its context.
    m_settings.setText(QCoreApplication::translate("MainWindow", "设置"));
    m_exit.setText(QCoreApplication::translate("MainWindow", "退出"));
    for (QAction* entry : qAsConst(m_entries)) {
        if (entry->property(kIsForAll).toBool())
            name(entry, allDevicesText());
    }
    if (m_popup && m_isPanelForAll)
        m_popup->setTitle(allDevicesText());
}
