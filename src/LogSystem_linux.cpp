#include "LogSystem.h"

#include <log4cplus/consoleappender.h>

log4cplus::SharedAppenderPtr createDebugAppender()
{
    return log4cplus::SharedAppenderPtr(
        new log4cplus::ConsoleAppender(/*logToStdErr=*/true, /*immediateFlush=*/true));
}
