#include "support/capture/ThreadedCaptureBackend.h"

#include "support/capture/ScreenGrabber.h"

#include <utility>

ThreadedCaptureBackend::ThreadedCaptureBackend(std::shared_ptr<ScreenGrabber> grabber, QObject* parent)
    : CaptureBackend(parent)
    , m_thread(std::move(grabber))
{
    connect(&m_thread, &CaptureThread::sourcesChanged, this, &CaptureBackend::sourcesChanged,
            Qt::QueuedConnection);
    m_thread.begin();
}

CaptureSources ThreadedCaptureBackend::sources() const
{
    return m_thread.sources();
}

void ThreadedCaptureBackend::attach(const QSharedPointer<DeskCapture>& capture)
{
    m_thread.attach(capture);
}

void ThreadedCaptureBackend::detach(const QSharedPointer<DeskCapture>& capture)
{
    m_thread.detach(capture);
}
