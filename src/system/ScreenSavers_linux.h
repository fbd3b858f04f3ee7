#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>

/// Whether a screen saver or locker of the desktop's has blanked the screen. None is started for it. Main
/// thread.
class ScreenSavers : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    explicit ScreenSavers(const QDBusConnection& bus, QObject* parent = nullptr);

    bool isActive() const { return !m_active.isEmpty(); }
    /// Asks them all; a change may have gone unheard.
    void ask();

signals:
    void activeChanged();

private slots:
    void onActiveChanged(bool active);
    void onBusGone();

private:
    void setActive(const QString& sender, bool active);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_gone;
    QSet<QString> m_active; ///< their names on the bus, one for all interfaces of a process
};
