#include "system/BoundedFileAppender.h"

#include <log4cplus/spi/loggingevent.h>
#include <utility>

namespace {

constexpr int kBackups = 1;
constexpr qint64 kLineHeadBytes = 100; ///< what the layout adds, about

} // namespace

BoundedFileAppender::BoundedFileAppender(const log4cplus::tstring& fileName, long maxBytes,
                                         std::shared_ptr<LogFolder> folder)
    : RollingFileAppender(fileName, maxBytes, kBackups, /*immediateFlush=*/true, /*createDirs=*/true)
    , m_folder(std::move(folder))
{
}

BoundedFileAppender::~BoundedFileAppender()
{
    destructorImpl();
}

void BoundedFileAppender::append(const log4cplus::spi::InternalLoggingEvent& event)
{
    RollingFileAppender::append(event);
    if (m_folder)
        m_folder->grew(static_cast<qint64>(event.getMessage().size()) + kLineHeadBytes);
}
