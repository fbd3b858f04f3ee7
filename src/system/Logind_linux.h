#pragma once

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QTimer>
#include <functional>

/// The log-in manager on the system's bus: sleep, shutdown, and whether the user's session is locked. All of
/// it asynchronous; the manager may be absent, come later or be restarted at any time. Main thread.
class Logind : public QObject
{
    Q_OBJECT

public:
    explicit Logind(const QDBusConnection& bus, QObject* parent = nullptr);

    /// The machine need not wait for this program any longer; until the next sleep.
    void release();
    bool isLocked() const { return m_isLocked; }

signals:
    void aboutToSleep();
    void resumed();
    void lockedChanged();
    void aboutToShutDown();

private slots:
    void onPrepareForSleep(bool begins);
    void onPrepareForShutdown(bool begins);
    void onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                             const QStringList& invalid);
    void askLocked();
    void onGone();

private:
    using Reply = std::function<void(const QDBusMessage&)>;

    void onThere();
    void takeInhibitor();
    void findSession();
    void watchSession(const QString& path);
    void askWhetherStillAsleep();
    void wake();
    void setLocked(bool locked);
    void callManager(const QString& method, const QVariantList& arguments, const Reply& then);
    void askProperty(const QString& path, const QString& interface, const QString& name,
                     const std::function<void(const QVariant&)>& then);
    void call(QDBusMessage message, const Reply& then);

    QDBusConnection m_bus;
    QDBusUnixFileDescriptor m_inhibitor; ///< while it is open the machine waits with its sleep
    QString m_session;                   ///< object path
    bool m_isLocked = false;
    bool m_isAsleep = false;
    int m_sleeps = 0;
    QTimer m_stillAsleep; ///< leads to askWhetherStillAsleep()
};
