#include "support/capture/DeskCapture.h"

#include "support/capture/ScreenGrabber.h"

#include <chrono>
#include <utility>

namespace {
constexpr int kMaxOutputPx = 4096;
constexpr int kDefaultWidthPx = 120;

QSize defaultOutputSize(QSize source)
{
    if (source.isEmpty())
        return QSize(kDefaultWidthPx, kDefaultWidthPx);
    const int height = int(qint64(kDefaultWidthPx) * source.height() / source.width());
    return QSize(kDefaultWidthPx, qBound(1, height, kMaxOutputPx));
}
} // namespace

qint64 DeskCapture::nowUs()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

DeskCapture::DeskCapture(QString id, QSize sourceSize)
    : m_id(std::move(id))
    , m_sourceSize(sourceSize)
    , m_outputSize(defaultOutputSize(sourceSize))
{
}

QSize DeskCapture::outputSize()
{
    const std::lock_guard lock(m_mutex);
    return m_outputSize;
}

QSize DeskCapture::sourceSize()
{
    const std::lock_guard lock(m_mutex);
    return m_sourceSize;
}

cv::Mat DeskCapture::grabFrame()
{
    cv::Mat frame;
    cv::Mat kept;
    {
        std::unique_lock lock(m_mutex);
        const qint64 now = nowUs();
        m_plan.pull(now);
        if (m_lost)
            return {};
        if (!m_ready.empty())
            std::swap(frame, m_ready);
        else
            kept = m_frame;
        wakeWhenEarlier(lock, now);
    }
    // Pullers may write into their frame, so no two get the same one.
    return frame.empty() ? kept.clone() : frame;
}

quint64 DeskCapture::frameCount()
{
    const std::lock_guard lock(m_mutex);
    return m_frameCount;
}

void DeskCapture::setOutputSize(int width, int height)
{
    const QSize size(qBound(1, width, kMaxOutputPx), qBound(1, height, kMaxOutputPx));
    std::unique_lock lock(m_mutex);
    if (size == m_outputSize)
        return;
    m_outputSize = size;
    m_frame.release();
    m_ready.release();
    const qint64 now = nowUs();
    m_plan.hurry(now);
    wakeWhenEarlier(lock, now);
}

void DeskCapture::setGrabber(const std::shared_ptr<ScreenGrabber>& grabber)
{
    const std::lock_guard lock(m_mutex);
    m_grabber = grabber;
    m_plan.forget();
}

void DeskCapture::setSource(QSize size)
{
    const std::lock_guard lock(m_mutex);
    if (m_lost)
        m_plan.hurry(nowUs());
    m_lost = false;
    m_sourceSize = size;
}

void DeskCapture::setLost()
{
    const std::lock_guard lock(m_mutex);
    m_lost = true;
    m_frame.release();
    m_ready.release();
}

qint64 DeskCapture::nextGrabUs()
{
    const std::lock_guard lock(m_mutex);
    return m_lost ? -1 : m_plan.takeDueUs(nowUs());
}

bool DeskCapture::needsNewFrame()
{
    const std::lock_guard lock(m_mutex);
    return m_frame.empty();
}

void DeskCapture::finishGrab(cv::Mat frame, qint64 dueUs)
{
    std::unique_lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.done(dueUs, now);
    if (m_lost)
        return;
    if (!frame.empty()) {
        if (frame.cols != m_outputSize.width() || frame.rows != m_outputSize.height()) {
            m_plan.hurry(now);
            return;
        }
        m_frame = std::move(frame);
        m_ready.release();
        ++m_frameCount;
    }
    // The copy for the next pull is made here, so that a pull is a mere exchange.
    if (!m_ready.empty())
        return;
    const cv::Mat kept = m_frame;
    lock.unlock();
    cv::Mat ready = kept.clone();
    lock.lock();
    if (kept.data == m_frame.data)
        m_ready = std::move(ready);
}

void DeskCapture::wakeWhenEarlier(std::unique_lock<std::mutex>& lock, qint64 nowUs)
{
    const std::shared_ptr<ScreenGrabber> grabber = m_grabber.lock();
    if (m_lost || !grabber || !m_plan.takeWake(nowUs))
        return;
    lock.unlock();
    grabber->wake();
}
