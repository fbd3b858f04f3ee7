#include "support/capture/DeskCapture.h"

#include <chrono>
#include <utility>

namespace {
constexpr int kMaxOutputPx = 4096;
constexpr int kDefaultWidthPx = 120;
constexpr qint64 kLeadUs = 2000; // for an early pull

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
        if (m_pace.isAsleep(now))
            m_urgent = true;
        m_pace.record(now);
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
    m_urgent = !m_pace.isAsleep(now);
    wakeWhenEarlier(lock, now);
}

void DeskCapture::setWaker(std::function<void()> waker)
{
    const std::lock_guard lock(m_mutex);
    m_waker = std::move(waker);
    m_plannedUs = -1;
}

void DeskCapture::setSource(QSize size)
{
    const std::lock_guard lock(m_mutex);
    if (m_lost && !m_pace.isAsleep(nowUs()))
        m_urgent = true;
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

qint64 DeskCapture::nextGrabUs(qint64 nowUs)
{
    const std::lock_guard lock(m_mutex);
    m_plannedUs = dueUs(nowUs);
    return m_plannedUs;
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
    m_targetUs = m_urgent ? now : qMax(now, dueUs + leadUs());
    // From the due time on, so that a busy machine's late wake-ups count. It rises fast and falls slowly.
    const qint64 cost = now - dueUs;
    m_costUs += (cost - m_costUs) / (cost > m_costUs ? 2 : 16);
    m_urgent = false;
    if (m_lost)
        return;
    if (!frame.empty()) {
        if (frame.cols != m_outputSize.width() || frame.rows != m_outputSize.height()) {
            m_urgent = true;
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

qint64 DeskCapture::dueUs(qint64 nowUs) const
{
    if (m_lost)
        return -1;
    if (m_urgent)
        return nowUs;
    if (m_pace.isAsleep(nowUs))
        return -1;
    const qint64 next = m_pace.nextAfter(qMax(m_pace.lastUs(), m_targetUs) + m_pace.apartUs());
    return next < 0 ? -1 : next - leadUs();
}

qint64 DeskCapture::leadUs() const
{
    return qMin(m_costUs + kLeadUs, m_pace.periodUs() / 2);
}

void DeskCapture::wakeWhenEarlier(std::unique_lock<std::mutex>& lock, qint64 nowUs)
{
    const qint64 due = dueUs(nowUs);
    const bool planned = m_plannedUs >= 0 && due >= m_plannedUs - kLeadUs;
    if (due < 0 || planned || !m_waker)
        return;
    m_plannedUs = due;
    const std::function<void()> waker = m_waker;
    lock.unlock();
    waker();
}
