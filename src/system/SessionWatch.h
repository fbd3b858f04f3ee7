#pragma once

#include <QObject>
#include <memory>

/// What the system tells of this machine and the user's session. Main thread. Where it tells nothing (no
/// log-in manager, no screen saver) nothing is ever signalled.
class SessionWatch : public QObject
{
    Q_OBJECT

public:
    explicit SessionWatch(QObject* parent = nullptr);
    ~SessionWatch() override;

    /// Everything is dark and stored: the machine need not wait for this program any longer. To be called
    /// after aboutToSleep; for a shutdown it waits as long as this object lives, within its own limit.
    void readyForSleep();
    /// Whether the session is locked or its screen blanked, as far as is known.
    bool isScreenOff() const;

signals:
    /// The machine goes to sleep, but waits for readyForSleep(), some seconds at most.
    void aboutToSleep();
    void resumed();
    /// The session is locked or its screen blanked, or neither any more.
    void screenOffChanged(bool off);
    /// The machine goes down or the session ends.
    void aboutToShutDown();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
