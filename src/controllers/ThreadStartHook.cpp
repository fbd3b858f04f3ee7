#include "controllers/ThreadStartHook.h"

namespace {
std::function<void()>& threadStartHook()
{
    static std::function<void()> hook;
    return hook;
}
} // namespace

void setThreadStartHook(std::function<void()> hook)
{
    threadStartHook() = std::move(hook);
}

void runThreadStartHook()
{
    if (threadStartHook())
        threadStartHook()();
}
