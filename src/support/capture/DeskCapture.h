#pragma once

#include "support/capture/IDeskCapture.h"
#include "support/capture/PullPace.h"

#include <QString>
#include <functional>
#include <mutex>

/// What pullers and the capture thread share of one source: the newest frame and the rhythm of the pulls.
/// All operations may be called from any thread; the lock is held for moments only.
class DeskCapture : public IDeskCapture
{
    Q_OBJECT

public:
    /// The steady clock of all times here.
    static qint64 nowUs();

    DeskCapture(QString id, QSize sourceSize);

    QSize outputSize() override;
    QSize sourceSize() override;
    cv::Mat grabFrame() override;
    quint64 frameCount() override;
    /// At least one pixel and at most 4096 in each direction.
    void setOutputSize(int width, int height) override;

    const QString& id() const { return m_id; }

    // For the back end.

    /// Called from the puller's thread when a frame is wanted that no prediction has announced.
    void setWaker(std::function<void()> waker);
    /// The source is there and has this size.
    void setSource(QSize size);
    /// The source is gone: no frames until it is set again.
    void setLost();
    /// When the next grab is to begin, -1 while none is wanted. The caller comes back then or when woken.
    qint64 nextGrabUs(qint64 nowUs);
    /// False as long as the last frame may be handed out again if the picture is the same.
    bool needsNewFrame();
    /// Ends the grab that was due at `dueUs`. An empty frame leaves the last one; a frame of another than the
    /// output size comes too late and is dropped.
    void finishGrab(cv::Mat frame, qint64 dueUs);

private:
    /// When the next grab is to begin; -1 while none is wanted.
    qint64 dueUs(qint64 nowUs) const;
    /// How long before the pull a grab begins.
    qint64 leadUs() const;
    /// May end the lock.
    void wakeWhenEarlier(std::unique_lock<std::mutex>& lock, qint64 nowUs);

    const QString m_id;
    std::mutex m_mutex;
    std::function<void()> m_waker;
    PullPace m_pace;
    cv::Mat m_frame; ///< never handed out itself
    cv::Mat m_ready; ///< a copy of it for the next pull
    QSize m_sourceSize;
    QSize m_outputSize;
    quint64 m_frameCount = 0;
    qint64 m_targetUs = 0;   ///< the pull that the latest grab was for
    qint64 m_costUs = 2000;  ///< from the due time to the finished frame
    qint64 m_plannedUs = -1; ///< when the back end means to come back
    bool m_urgent = false;
    bool m_lost = false;
};
