#pragma once

#include "system/BoundedFileAppender.h"

#include <log4cplus/spi/loggingevent.h>
#include <memory>
#include <vector>

/// File appender that collapses runs: of consecutive lines from one statement only the first and the last
/// are written, the last when something else is logged. The text is not compared, so a loop that logs
/// changing values is one run. A line held back is lost if the program ends first.
class LVAppLogAppender : public BoundedFileAppender
{
public:
    explicit LVAppLogAppender(const log4cplus::tstring& fileName,
                              std::shared_ptr<LogFolder> folder = nullptr);
    ~LVAppLogAppender() override;

protected:
    /// Called with the appender's lock held.
    void append(const log4cplus::spi::InternalLoggingEvent& event) override;

private:
    void write(const log4cplus::spi::InternalLoggingEvent& event);

    /// The head of the run, the line held back and the newest one.
    std::vector<std::unique_ptr<log4cplus::spi::InternalLoggingEvent>> m_recentEvents;
};
