#pragma once

#include <functional>

/// Runs something at the start of every thread of the program's own, such as giving it an alternate signal
/// stack. Set once before the first such thread starts; may be called from any thread.
void setThreadStartHook(std::function<void()> hook);

/// To be called first thing on a new thread. Does nothing without a hook.
void runThreadStartHook();
