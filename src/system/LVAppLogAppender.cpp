#include "system/LVAppLogAppender.h"

#include <utility>

using log4cplus::spi::InternalLoggingEvent;

namespace {

/// With the rolling files of the other logs this stays below kMaxLogBytes.
constexpr long kMaxFileBytes = 3L * 1024 * 1024;

bool isSameStatement(const InternalLoggingEvent& a, const InternalLoggingEvent& b)
{
    return a.getLine() == b.getLine() && a.getFile() == b.getFile();
}

} // namespace

LVAppLogAppender::LVAppLogAppender(const log4cplus::tstring& fileName, std::shared_ptr<LogFolder> folder)
    : BoundedFileAppender(fileName, kMaxFileBytes, std::move(folder))
{
}

LVAppLogAppender::~LVAppLogAppender()
{
    destructorImpl();
}

void LVAppLogAppender::append(const InternalLoggingEvent& event)
{
    // A line held back may be written from another thread, so it has to know its own by then.
    event.gatherThreadSpecificData();
    m_recentEvents.push_back(event.clone());
    const InternalLoggingEvent& newest = *m_recentEvents.back();

    if (m_recentEvents.size() == 1) {
        write(newest);
        return;
    }
    const InternalLoggingEvent& previous = **(m_recentEvents.end() - 2);
    const bool isRun = isSameStatement(previous, newest);
    if (m_recentEvents.size() == 2) {
        if (!isRun) {
            write(newest);
            m_recentEvents.erase(m_recentEvents.begin());
        }
        return;
    }
    if (isRun) {
        m_recentEvents.erase(m_recentEvents.begin() + 1);
    } else {
        write(previous);
        write(newest);
        m_recentEvents.erase(m_recentEvents.begin(), m_recentEvents.begin() + 2);
    }
}

void LVAppLogAppender::write(const InternalLoggingEvent& event)
{
    BoundedFileAppender::append(event);
}
