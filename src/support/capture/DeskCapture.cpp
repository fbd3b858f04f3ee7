#include "support/capture/DeskCapture.h"

#include <QMutexLocker>
#include <chrono>
#include <utility>

namespace {
constexpr int kMaxOutputPx = 4096;
constexpr int kDefaultWidthPx = 120;
constexpr qint64 kLeadUs = 2000;     // for a late wake-up and an early pull
constexpr qint64 kSamePullUs = 6000; // predictions closer together are one pull

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
    QMutexLocker lock(&m_mutex);
    return m_outputSize;
}

QSize DeskCapture::sourceSize()
{
    QMutexLocker lock(&m_mutex);
    return m_sourceSize;
}

cv::Mat DeskCapture::grabFrame()
{
    cv::Mat frame;
    {
        QMutexLocker lock(&m_mutex);
        const qint64 now = nowUs();
        const bool wasAsleep = m_pace.isAsleep(now);
        m_pace.record(now);
        if (m_lost)
            return {};
        frame = m_frame;
        if (wasAsleep)
            wantFrameNow(lock);
    }
    // A copy outside the lock: pullers may write into their frame, and the next pull may get it again.
    return frame.clone();
}

quint64 DeskCapture::frameCount()
{
    QMutexLocker lock(&m_mutex);
    return m_frameCount;
}

void DeskCapture::setOutputSize(int width, int height)
{
    const QSize size(qBound(1, width, kMaxOutputPx), qBound(1, height, kMaxOutputPx));
    QMutexLocker lock(&m_mutex);
    if (size == m_outputSize)
        return;
    m_outputSize = size;
    m_frame.release();
    if (!m_pace.isAsleep(nowUs()))
        wantFrameNow(lock);
}

void DeskCapture::setWaker(std::function<void()> waker)
{
    QMutexLocker lock(&m_mutex);
    m_waker = std::move(waker);
}

void DeskCapture::setSource(QSize size)
{
    QMutexLocker lock(&m_mutex);
    if (m_lost && !m_pace.isAsleep(nowUs()))
        m_urgent = true;
    m_lost = false;
    m_sourceSize = size;
}

void DeskCapture::setLost()
{
    QMutexLocker lock(&m_mutex);
    m_lost = true;
    m_frame.release();
}

qint64 DeskCapture::nextGrabUs(qint64 nowUs)
{
    QMutexLocker lock(&m_mutex);
    if (m_lost)
        return -1;
    if (m_urgent)
        return nowUs;
    if (m_pace.isAsleep(nowUs))
        return -1;
    const qint64 apart = qMin(kSamePullUs, m_pace.periodUs() / 4);
    const qint64 next = m_pace.nextAfter(qMax(m_pace.lastUs(), m_targetUs) + apart);
    return next < 0 ? -1 : next - m_costUs - kLeadUs;
}

bool DeskCapture::needsNewFrame()
{
    QMutexLocker lock(&m_mutex);
    return m_frame.empty();
}

void DeskCapture::finishGrab(cv::Mat frame, qint64 startUs)
{
    QMutexLocker lock(&m_mutex);
    const qint64 now = nowUs();
    m_targetUs = m_urgent ? now : qMax(now, startUs + m_costUs + kLeadUs);
    // Rises at once and falls slowly, so that a busy server does not make every second frame late.
    const qint64 cost = now - startUs;
    m_costUs = qMax(cost, m_costUs + (cost - m_costUs) / 16);
    m_urgent = false;
    if (frame.empty() || m_lost)
        return;
    if (frame.cols != m_outputSize.width() || frame.rows != m_outputSize.height()) {
        m_urgent = true;
        return;
    }
    m_frame = std::move(frame);
    ++m_frameCount;
}

void DeskCapture::wantFrameNow(QMutexLocker& lock)
{
    m_urgent = true;
    const std::function<void()> waker = m_waker;
    lock.unlock();
    if (waker)
        waker();
}
