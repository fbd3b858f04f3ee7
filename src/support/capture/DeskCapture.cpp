#include "support/capture/DeskCapture.h"

#include "support/capture/ScreenGrabber.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace {
constexpr int kMaxOutputPx = 4096;
constexpr int kDefaultWidthPx = 120;
constexpr qint64 kUsPerMs = 1000;

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

bool DeskCapture::isSame(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && !a.empty() && a.isContinuous() && b.isContinuous() &&
           std::memcmp(a.data, b.data, a.total() * a.elemSize()) == 0;
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
    Lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.pull(now);
    return takeCopy(lock, now);
}

cv::Mat DeskCapture::pullFrame(const void* puller, int nextMs, int periodMs)
{
    Lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.pull(now, puller, now + nextMs * kUsPerMs, periodMs * kUsPerMs);
    return takeCopy(lock, now);
}

cv::Mat DeskCapture::sharedFrame(const void* puller, int nextMs, int periodMs)
{
    Lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.pull(now, puller, now + nextMs * kUsPerMs, periodMs * kUsPerMs);
    if (m_lost)
        return {};
    m_isCopyWanted = false;
    cv::Mat frame = m_frame;
    wakeWhenEarlier(lock, now);
    return frame;
}

cv::Mat DeskCapture::takeCopy(Lock& lock, qint64 nowUs)
{
    if (m_lost)
        return {};
    m_isCopyWanted = true;
    cv::Mat frame;
    cv::Mat kept;
    if (!m_ready.empty())
        std::swap(frame, m_ready);
    else
        kept = m_frame;
    wakeWhenEarlier(lock, nowUs);
    if (lock.owns_lock())
        lock.unlock();
    // Pullers may write into their frame, so no two get the same one.
    return frame.empty() ? kept.clone() : frame;
}

bool DeskCapture::awaitChange(const void* puller, quint64 seen, int paceMs)
{
    Lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.rest(now, puller, paceMs * kUsPerMs);
    if (m_lost || m_frameCount != seen)
        tellOfChange(lock);
    else
        wakeWhenEarlier(lock, now);
    return true;
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
    Lock lock(m_mutex);
    if (m_lost)
        m_plan.hurry(nowUs());
    m_lost = false;
    if (std::exchange(m_sourceSize, size) != size)
        tellOfChange(lock);
}

void DeskCapture::setLost()
{
    Lock lock(m_mutex);
    m_lost = true;
    m_frame.release();
    m_ready.release();
    tellOfChange(lock);
}

bool DeskCapture::isAwaited()
{
    const std::lock_guard lock(m_mutex);
    return m_plan.isAwaited(nowUs());
}

qint64 DeskCapture::nextGrabUs(bool tellsOfChange)
{
    const std::lock_guard lock(m_mutex);
    return m_lost ? -1 : m_plan.takeDueUs(nowUs(), tellsOfChange);
}

bool DeskCapture::needsNewFrame()
{
    const std::lock_guard lock(m_mutex);
    return m_frame.empty();
}

void DeskCapture::finishGrab(cv::Mat frame, qint64 dueUs)
{
    Lock lock(m_mutex);
    const qint64 now = nowUs();
    m_plan.done(dueUs, now);
    if (m_lost)
        return;
    if (!frame.empty() && (frame.cols != m_outputSize.width() || frame.rows != m_outputSize.height())) {
        m_plan.hurry(now);
        return;
    }
    if (!frame.empty() && !isSame(frame, m_frame)) {
        m_frame = std::move(frame);
        m_ready.release();
        ++m_frameCount;
        tellOfChange(lock);
        lock.lock();
    }
    // The copy for the next pull is made here, so that a pull is a mere exchange.
    if (!m_ready.empty() || !m_isCopyWanted)
        return;
    const cv::Mat kept = m_frame;
    lock.unlock();
    cv::Mat ready = kept.clone();
    lock.lock();
    if (kept.data == m_frame.data)
        m_ready = std::move(ready);
}

void DeskCapture::wakeWhenEarlier(Lock& lock, qint64 nowUs)
{
    const std::shared_ptr<ScreenGrabber> grabber = m_grabber.lock();
    if (m_lost || !grabber || !m_plan.takeWake(nowUs))
        return;
    lock.unlock();
    grabber->wake();
}

void DeskCapture::tellOfChange(Lock& lock)
{
    const bool isAwaited = m_plan.takeAwaited(nowUs());
    lock.unlock();
    if (isAwaited)
        emit changed();
}
