#pragma once

#include <QString>
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>

/// Named loggers that are written to directly; their appenders are set up by LogSystem at start.
/// Usage: LOG4CPLUS_INFO(deviceLogger(), toLogString(text)).
log4cplus::Logger& deviceLogger();
/// What the user did that changes the lights.
log4cplus::Logger& usrOptionsLogger();

/// The text in log4cplus's own string type (UTF-8, or wide where it is built so).
log4cplus::tstring toLogString(const QString& text);
