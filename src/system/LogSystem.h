#pragma once

#include <QString>
#include <QtGlobal>
#include <log4cplus/appender.h>
#include <log4cplus/initializer.h>
#include <log4cplus/logger.h>
#include <memory>

class LogFolder;

/// Sets up the program's loggers and sends every Qt message to them. A local object of main(), so that it
/// exists from the moment the log folder is known to the end of the program. Main thread.
/// A log folder that cannot be written is no failure.
class LogSystem
{
public:
    /// Opens the files below `logsPath`, deletes the oldest ones of earlier runs and takes over Qt's
    /// messages.
    explicit LogSystem(const QString& logsPath);
    ~LogSystem();
    LogSystem(const LogSystem&) = delete;
    LogSystem& operator=(const LogSystem&) = delete;

    /// The main log file of this run.
    QString filePath() const;

    /// Gives Qt's messages back to the handler found at the start and closes all appenders; no logger may be
    /// used afterwards.
    void shutdown();

private:
    void setUpAppAndLoop();
    void setUpDevice();
    void setUpUsrOptions();
    void addDebugAppender(log4cplus::Logger& logger) const;
    log4cplus::SharedAppenderPtr openRollingFile(const QString& path) const;

    QString m_logsPath;
    log4cplus::Initializer m_initializer;
    QString m_fileName; ///< start time and ".log"
    std::shared_ptr<LogFolder> m_folder;
    log4cplus::SharedAppenderPtr m_debugAppender; ///< may be null
    log4cplus::SharedAppenderPtr m_fileAppender;
    QtMessageHandler m_previousHandler = nullptr;
    bool m_isRunning = true;
};

/// The system's debug output: the debugger where the system has a channel for it, else standard error. Null
/// where nobody would read it: what an autostarted program writes to standard error fills the session's
/// journal.
log4cplus::SharedAppenderPtr createDebugAppender();
