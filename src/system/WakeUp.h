#pragma once

#include <QObject>
#include <memory>

/// What a second process can ask of the running one: to show its window, or to end. The numbers go over.
enum class WakeUp { Show = 13137, Quit = 13138 };

/// Asks the running program of this user; called by a second process. Returns false when nobody took the
/// request within a second, which is no reason for anything but a warning.
bool sendWakeUp(WakeUp request);

/// Receives the requests of second processes. Main thread; only the holder of the single-instance lock may
/// listen, because it removes what a killed predecessor has left behind.
class WakeUpServer : public QObject
{
    Q_OBJECT

public:
    explicit WakeUpServer(QObject* parent = nullptr);
    ~WakeUpServer() override;

    /// False when requests cannot be received; the program works without them.
    bool listen();

signals:
    void wakeUpRequested();
    void quitRequested();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
