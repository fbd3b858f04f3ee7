#pragma once

#include <QString>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>

/// The program's four loggers; LogSystem gives them their appenders at start. Usable on any thread.
/// Usage: LOG4CPLUS_INFO(deviceLogger(), toLogString(text)). A function that logs for others takes their line
/// with `int line = __builtin_LINE()` and hands it on: the place tells statements apart, for the reader and
/// for LVAppLogAppender, which drops what lies between the ends of a run from one place.

/// Where every Qt message goes that is not marked for the loop file. Use QMessageLogger, not this.
log4cplus::Logger& appLogger();
/// Qt messages that start with "[[loop]]": whatever is logged per frame or per second. Use QMessageLogger.
log4cplus::Logger& loopLogger();
/// Device discovery and button events.
log4cplus::Logger& deviceLogger();
/// What the user did that changes the lights.
log4cplus::Logger& usrOptionsLogger();

/// The text in log4cplus's own string type (UTF-8, or wide where it is built so).
log4cplus::tstring toLogString(const QString& text);
