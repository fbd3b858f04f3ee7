#pragma once

#include <functional>

/// What every thread of the devices runs first, such as giving itself a stack for crash handling. Set it
/// once, before the first device exists.
void setThreadStartHook(std::function<void()> hook);
void runThreadStartHook();
