#include "system/LogSystem.h"

#include <QtGlobal>
#include <log4cplus/consoleappender.h>
#include <unistd.h>

log4cplus::SharedAppenderPtr createDebugAppender()
{
    if (isatty(STDERR_FILENO) == 0 && qEnvironmentVariableIsEmpty("LUMIVAR_LOG_TO_CONSOLE"))
        return log4cplus::SharedAppenderPtr();
    return log4cplus::SharedAppenderPtr(
        new log4cplus::ConsoleAppender(/*logToStdErr=*/true, /*immediateFlush=*/true));
}
