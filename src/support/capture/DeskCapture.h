#pragma once

#include "support/SharedLibrary.h"
#include "support/capture/GrabPlan.h"
#include "support/capture/IDeskCapture.h"

#include <QString>
#include <memory>
#include <mutex>

class ScreenGrabber;

/// What pullers and the capture thread share of one source: the newest frame and the rhythm of the pulls.
/// All operations may be called from any thread; the lock is held for moments only.
class LUMIVAR_SUPPORT_EXPORT DeskCapture : public IDeskCapture
{
    Q_OBJECT

public:
    /// The steady clock of all times here.
    static qint64 nowUs();
    static bool isSame(const cv::Mat& a, const cv::Mat& b);

    DeskCapture(QString id, QSize sourceSize);

    QSize outputSize() override;
    QSize sourceSize() override;
    cv::Mat grabFrame() override;
    cv::Mat pullFrame(const void* puller, int nextMs, int periodMs) override;
    cv::Mat sharedFrame(const void* puller, int nextMs, int periodMs) override;
    bool awaitChange(const void* puller, quint64 seen, int paceMs) override;
    quint64 frameCount() override;
    /// At least one pixel and at most 4096 in each direction.
    void setOutputSize(int width, int height) override;

    const QString& id() const { return m_id; }

    // For the capture thread.

    /// Woken from the puller's thread when a frame is wanted that the plan has not announced; null for none.
    void setGrabber(const std::shared_ptr<ScreenGrabber>& grabber);
    /// The source is there and has this size.
    void setSource(QSize size);
    /// The source is gone: no frames until it is set again.
    void setLost();
    /// Somebody rests until there is a change.
    bool isAwaited();
    /// When the next grab is to begin, -1 while none is wanted. The caller comes back then or when woken, and
    /// at a change where the source tells of it.
    qint64 nextGrabUs(bool tellsOfChange);
    /// False as long as the last frame may be handed out again if the picture is the same.
    bool needsNewFrame();
    /// Ends the grab that was due at `dueUs`. An empty frame leaves the last one; a frame of another than the
    /// output size comes too late and is dropped.
    void finishGrab(cv::Mat frame, qint64 dueUs);

private:
    using Lock = std::unique_lock<std::mutex>;

    /// Both may end the lock.
    cv::Mat takeCopy(Lock& lock, qint64 nowUs);
    void wakeWhenEarlier(Lock& lock, qint64 nowUs);
    /// Ends the lock. Who rests is told.
    void tellOfChange(Lock& lock);

    const QString m_id;
    std::mutex m_mutex;
    std::weak_ptr<ScreenGrabber> m_grabber;
    GrabPlan m_plan;
    cv::Mat m_frame;            ///< never written into
    cv::Mat m_ready;            ///< a copy of it for the next pull
    bool m_isCopyWanted = true; ///< as at the latest pull
    QSize m_sourceSize;
    QSize m_outputSize;
    quint64 m_frameCount = 0;
    bool m_lost = false;
};
