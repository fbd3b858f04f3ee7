#pragma once

#include "system/LogFolder.h"

#include <log4cplus/fileappender.h>
#include <memory>

/// A rolling file with one backup that tells its folder how it grows. Any thread; a file that cannot be
/// written loses lines and is tried again.
class BoundedFileAppender : public log4cplus::RollingFileAppender
{
public:
    /// The file and its backup have `maxBytes` each, at least 200 KiB. `folder` may be null.
    BoundedFileAppender(const log4cplus::tstring& fileName, long maxBytes, std::shared_ptr<LogFolder> folder);
    ~BoundedFileAppender() override;

protected:
    /// Called with the appender's lock held.
    void append(const log4cplus::spi::InternalLoggingEvent& event) override;

private:
    const std::shared_ptr<LogFolder> m_folder;
};
