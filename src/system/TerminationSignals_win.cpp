#include "system/TerminationSignals.h"

#include <atomic>
#include <windows.h>

namespace {

std::atomic<TerminationSignals*> s_receiver{nullptr};

} // namespace

struct TerminationSignals::Private
{
    bool isRequested = false;

    /// Runs on a thread of the system's. Returning true keeps the process alive for its own way out; only
    /// after a close, a logoff or a shutdown it is the end, so there the thread waits for the process to go.
    /// The system grants some five seconds.
    static BOOL WINAPI handleConsoleEvent(DWORD event)
    {
        TerminationSignals* receiver = s_receiver.load();
        if (receiver == nullptr)
            return FALSE;
        QMetaObject::invokeMethod(
            receiver,
            [receiver] {
                receiver->d->isRequested = true;
                emit receiver->terminationRequested();
            },
            Qt::QueuedConnection);
        if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
            Sleep(INFINITE);
        return TRUE;
    }
};

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    s_receiver = this;
    SetConsoleCtrlHandler(Private::handleConsoleEvent, TRUE);
}

TerminationSignals::~TerminationSignals()
{
    SetConsoleCtrlHandler(Private::handleConsoleEvent, FALSE);
    s_receiver = nullptr;
}

bool TerminationSignals::isRequested() const
{
    return d->isRequested;
}
