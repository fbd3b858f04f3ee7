#pragma once

#include <QByteArray>
#include <QThread>
#include <QUrl>
#include <condition_variable>
#include <mutex>

/// Sends usage reports from a thread of its own, so that the program's end can wait for one without running
/// its own event loop once more. Nothing is tried again; what becomes of a report is only logged. Main
/// thread.
class UsageReports
{
public:
    UsageReports();
    ~UsageReports(); ///< what is under way is dropped
    Q_DISABLE_COPY(UsageReports)

    void send(const QUrl& address, const QByteArray& body);
    /// Blocks until none is under way, `ms` at most.
    void finish(int ms);

private:
    class Sender;

    std::mutex m_mutex;
    std::condition_variable m_done;
    int m_underWay = 0; ///< guarded by m_mutex
    QThread m_thread;
    Sender* m_sender; ///< lives in the thread, which ends it; null without one
};
