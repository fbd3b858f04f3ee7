#include "system/TerminationSignals.h"

#include <QDebug>
#include <mutex>
#include <windows.h>

namespace {

std::mutex s_mutex; // guards what follows
TerminationSignals* s_receiver = nullptr;

} // namespace

struct TerminationSignals::Private
{
    /// Runs on a thread of the system's. Returning true keeps the process alive for its own way out; only
    /// after a close, a logoff or a shutdown it is the end, so there the thread waits for the process to go.
    /// The system grants some five seconds.
    static BOOL WINAPI handleConsoleEvent(DWORD event)
    {
        {
            const std::lock_guard lock(s_mutex);
            if (s_receiver != nullptr)
                QMetaObject::invokeMethod(
                    s_receiver, [receiver = s_receiver, event] { request(*receiver, event); },
                    Qt::QueuedConnection);
        }
        if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
            Sleep(INFINITE);
        return TRUE;
    }

    static void request(TerminationSignals& owner, DWORD event)
    {
        qInfo() << "[TerminationSignals]: event" << int(event) << "of the console asks the program to end";
        emit owner.terminationRequested();
    }
};

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    const std::lock_guard lock(s_mutex);
    s_receiver = this;
    SetConsoleCtrlHandler(Private::handleConsoleEvent, TRUE);
}

TerminationSignals::~TerminationSignals()
{
    // The process is about to end by itself, with its own exit code.
    const std::lock_guard lock(s_mutex);
    s_receiver = nullptr;
}
