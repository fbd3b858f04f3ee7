#include "support/ThreadStartHook.h"

#include <QMutex>
#include <utility>

namespace {
QBasicMutex hookMutex;

std::function<void()>& theHook()
{
    static std::function<void()> hook;
    return hook;
}
} // namespace

void setThreadStartHook(std::function<void()> hook)
{
    QMutexLocker lock(&hookMutex);
    theHook() = std::move(hook);
}

void runThreadStartHook()
{
    std::function<void()> hook;
    {
        QMutexLocker lock(&hookMutex);
        hook = theHook();
    }
    if (hook)
        hook();
}
