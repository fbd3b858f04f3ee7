#include "system/LogSystem.h"

#include "support/log/Loggers.h"
#include "system/LVAppLogAppender.h"

#include <QDateTime>
#include <QMessageLogContext>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <log4cplus/layout.h>
#include <stdexcept>

namespace {

constexpr long kRollingFileBytes = 10L * 1024 * 1024;
constexpr char kLoopMark[] = "[[loop]]";

log4cplus::LogLevel toLogLevel(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return log4cplus::DEBUG_LOG_LEVEL;
    case QtInfoMsg:
        return log4cplus::INFO_LOG_LEVEL;
    case QtWarningMsg:
        return log4cplus::WARN_LOG_LEVEL;
    case QtCriticalMsg:
        return log4cplus::ERROR_LOG_LEVEL;
    case QtFatalMsg:
        return log4cplus::FATAL_LOG_LEVEL;
    }
    return log4cplus::ALL_LOG_LEVEL;
}

void handleQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& msg)
{
    const log4cplus::Logger& logger = msg.startsWith(QLatin1String(kLoopMark)) ? loopLogger() : appLogger();
    logger.log(toLogLevel(type), toLogString(msg), context.file, context.line, context.function);
}

/// The locale that makes the files UTF-8, or the best there is: machines come without any of them.
std::locale logLocale()
{
    for (const char* name : {"en_US.UTF-8", "C.UTF-8"}) {
        try {
            // Numbers stay plain: no grouping in what is streamed to a logger.
            return {std::locale(name), std::locale::classic(), std::locale::numeric};
        } catch (const std::runtime_error&) {
            continue;
        }
    }
    return std::locale::classic();
}

void setLayout(const log4cplus::SharedAppenderPtr& appender)
{
    appender->setLayout(std::make_unique<log4cplus::PatternLayout>(
        LOG4CPLUS_TEXT("%D{%m/%d/%y %H:%M:%S %Q} [%t] %-5p %c %L - %m %n")));
}

log4cplus::SharedAppenderPtr openFile(BoundedFileAppender* appender)
{
    appender->imbue(std::locale());
    log4cplus::SharedAppenderPtr result(appender);
    setLayout(result);
    return result;
}

} // namespace

LogSystem::LogSystem(const QString& logsPath)
    : m_logsPath(logsPath)
{
    std::locale::global(logLocale());
    std::wclog.imbue(std::locale());
    m_fileName =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy_MM_dd_hh_mm_ss")) + QLatin1String(".log");

    m_debugAppender = createDebugAppender();
    if (m_debugAppender)
        setLayout(m_debugAppender);
    m_folder = std::make_shared<LogFolder>(m_logsPath, m_fileName.chopped(int(qstrlen(".log"))));
    m_fileAppender = openFile(new LVAppLogAppender(toLogString(filePath()), m_folder));

    setUpAppAndLoop();
    setUpDevice();
    setUpUsrOptions();
    m_folder->deleteOldFiles();
    m_previousHandler = qInstallMessageHandler(handleQtMessage);
    // exit() unwinds no stack: without this, messages of static destructors would reach dead loggers.
    std::atexit([] { qInstallMessageHandler(nullptr); });
}

LogSystem::~LogSystem()
{
    shutdown();
}

QString LogSystem::filePath() const
{
    return m_logsPath + QLatin1Char('/') + m_fileName;
}

void LogSystem::shutdown()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    qInstallMessageHandler(m_previousHandler);
    log4cplus::Logger::shutdown();
}

void LogSystem::setUpAppAndLoop()
{
    appLogger().setLogLevel(log4cplus::ALL_LOG_LEVEL);
    appLogger().addAppender(m_fileAppender);
    addDebugAppender(appLogger());

    const QString baseName = m_fileName.chopped(int(qstrlen(".log")));
    loopLogger().setLogLevel(log4cplus::ALL_LOG_LEVEL);
    loopLogger().addAppender(openRollingFile(m_logsPath + QLatin1Char('/') + baseName + ".loop.log"));
}

void LogSystem::setUpDevice()
{
    deviceLogger().setLogLevel(log4cplus::ALL_LOG_LEVEL);
    addDebugAppender(deviceLogger());
    deviceLogger().addAppender(openRollingFile(m_logsPath + "/devices/" + m_fileName));
}

void LogSystem::setUpUsrOptions()
{
    usrOptionsLogger().setLogLevel(log4cplus::ALL_LOG_LEVEL);
    addDebugAppender(usrOptionsLogger());
    usrOptionsLogger().addAppender(m_fileAppender);
}

log4cplus::SharedAppenderPtr LogSystem::openRollingFile(const QString& path) const
{
    return openFile(new BoundedFileAppender(toLogString(path), kRollingFileBytes, m_folder));
}

void LogSystem::addDebugAppender(log4cplus::Logger& logger) const
{
    if (m_debugAppender)
        logger.addAppender(m_debugAppender);
}
