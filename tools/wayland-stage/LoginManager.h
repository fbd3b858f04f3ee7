#pragma once

#include "PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

/// As much of a log-in manager (logind), and of a screen saver, as a session needs. Needs the event loop of
/// its thread.
class LoginManager : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// Is there at once. The bus has been started and lives longer; it can be the system's and the session's.
    explicit LoginManager(const PrivateBus& bus);
    ~LoginManager() override;

    // What it is like, from the next question on.
    bool isLocked = false, isPreparing = false, isSaverActive = false;
    bool refuses = false; ///< to let anybody delay a sleep

    // What has come of it.
    int held = 0;  ///< delays that programs have asked for
    int asked = 0; ///< whether it still prepares for sleep

    void come();
    /// As a crash would.
    void leave();
    /// "Sleep" or "Shutdown": whoever holds a delay may work until he gives it up.
    void prepareFor(const QString& what, bool begins);
    void setLocked(bool locked);
    void setSaverActive(bool active);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;

signals:
    void released(); ///< the last delay

private:
    QVariant answerTo(const QDBusMessage& call);
    QVariant delay();
    void tell(const QString& path, const QString& interface, const QString& name, const QVariantList& values);

    QDBusConnection m_connection;
};
