#include "system/LogSystem.h"

#include <log4cplus/win32debugappender.h>

log4cplus::SharedAppenderPtr createDebugAppender()
{
    return log4cplus::SharedAppenderPtr(new log4cplus::Win32DebugAppender);
}
