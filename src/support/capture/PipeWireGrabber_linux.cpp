#include "support/capture/PipeWireGrabber_linux.h"

#include "support/capture/ScreenCastSession_linux.h"

#include <QSemaphore>

struct PipeWireGrabber::Private
{
    std::shared_ptr<ScreenCastFeed> feed;
    ScreenCastSession* session = nullptr;
    QSemaphore wakeUps;
};

PipeWireGrabber::PipeWireGrabber(std::shared_ptr<ScreenCastFeed> feed,
                                 std::unique_ptr<ScreenCastSession> session)
    : d(std::make_unique<Private>())
{
    d->feed = std::move(feed);
    d->session = session.release();
}

PipeWireGrabber::~PipeWireGrabber()
{
    if (d->session)
        d->session->deleteLater();
}

bool PipeWireGrabber::open()
{
    return false;
}

void PipeWireGrabber::close() {}

bool PipeWireGrabber::isOpen() const
{
    return false;
}

CaptureSources PipeWireGrabber::sources()
{
    return {};
}

bool PipeWireGrabber::takeSourcesChanged()
{
    return false;
}

ScreenGrabber::Result PipeWireGrabber::grab(const CaptureSource&, QSize, bool, cv::Mat&)
{
    return Result::Failed;
}

void PipeWireGrabber::wait(std::chrono::microseconds time)
{
    d->wakeUps.tryAcquire(1, int(time.count() / 1000));
}

void PipeWireGrabber::wake()
{
    d->wakeUps.release();
}

void PipeWireGrabber::abort() {}

void PipeWireGrabber::request(SourceRequest request)
{
    if (d->session)
        d->session->request(request);
}

SourceTrouble PipeWireGrabber::trouble() const
{
    return d->feed->trouble();
}
