#pragma once

#include "support/SharedLibrary.h"
#include "support/capture/CaptureSource.h"
#include "support/capture/SourceTrouble.h"

#include <QSemaphore>
#include <QSharedPointer>
#include <QThread>
#include <atomic>
#include <memory>
#include <mutex>

class DeskCapture;
class ScreenGrabber;

/// Grabs and scales for all captures of one ScreenGrabber, follows its sources and opens it again when its
/// connection breaks. The operations may be called from any thread.
class LUMIVAR_SUPPORT_EXPORT CaptureThread : public QThread
{
    Q_OBJECT

public:
    explicit CaptureThread(std::shared_ptr<ScreenGrabber> grabber);
    /// Ends the thread, a hanging call into the system included.
    ~CaptureThread() override;

    /// Starts the thread and waits for the first look at the sources, about a second at most. Without a
    /// thread to be had there are no sources; attach() tries again.
    void begin();

    CaptureSources sources() const;
    /// What is the matter while there are none.
    SourceTrouble trouble() const;
    /// Main thread. Passed on to the grabber; a connection that is lost is tried again at once.
    void request(SourceRequest request);
    void attach(const QSharedPointer<DeskCapture>& capture);
    void detach(const QSharedPointer<DeskCapture>& capture);

signals:
    /// From this thread; also when only the trouble is another.
    void sourcesChanged();

protected:
    void run() override;

private:
    void end();
    QList<QSharedPointer<DeskCapture>> captures() const;
    bool openGrabber();
    void look();
    void setSources(const CaptureSources& sources);
    /// Returns when the earliest of the next grabs is due; -1 for none.
    qint64 grabWhatIsDue();
    qint64 nextGrabUs(DeskCapture& capture);
    void grab(DeskCapture& capture, qint64 dueUs);

    const std::shared_ptr<ScreenGrabber> m_grabber;
    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_isWanted{false}; ///< sources were requested since the last look
    bool m_grabFails = false;            ///< and it was said; this thread's own
    std::atomic<bool> m_ended{false}; ///< orders the thread's last writes where nobody sees inside QThread;
                                      ///< also true where it could not begin
    QSemaphore m_firstLook;
    mutable std::mutex m_mutex; // guards what follows
    CaptureSources m_sources;
    SourceTrouble m_trouble = SourceTrouble::None;
    QList<QSharedPointer<DeskCapture>> m_captures;
};
