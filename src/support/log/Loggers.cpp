#include "support/log/Loggers.h"

log4cplus::Logger& appLogger()
{
    static log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("app"));
    return logger;
}

log4cplus::Logger& loopLogger()
{
    static log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("loop"));
    return logger;
}

log4cplus::Logger& deviceLogger()
{
    static log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("device"));
    return logger;
}

log4cplus::Logger& usrOptionsLogger()
{
    static log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("usrOptions"));
    return logger;
}

log4cplus::tstring toLogString(const QString& text)
{
#ifdef UNICODE
    return text.toStdWString();
#else
    return text.toStdString();
#endif
}
