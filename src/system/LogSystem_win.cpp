#include "system/LogSystem.h"

#include <cstdlib>
#include <log4cplus/initializer.h>
#include <log4cplus/win32debugappender.h>

namespace {

// Behind exit() the system has ended the library's threads, and the library would wait for them for ever:
// also in a process that never set its log up.
[[maybe_unused]] const int s_isEndOrdered = std::atexit([] { log4cplus::deinitialize(); });

} // namespace

log4cplus::SharedAppenderPtr createDebugAppender()
{
    return log4cplus::SharedAppenderPtr(new log4cplus::Win32DebugAppender);
}
