#include "support/capture/PipeWireGrabber_linux.h"

#include "support/capture/PipeWireConnection_linux.h"
#include "support/capture/ScreenCastSession_linux.h"

#include <QThread>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace {
/// Ends a wait. The feed's listener holds on to it, so that an offer may come while the grabber goes.
class WakeUp
{
public:
    WakeUp() = default;
    ~WakeUp() { close(file); }
    Q_DISABLE_COPY(WakeUp)

    void set() const
    {
        const uint64_t one = 1;
        [[maybe_unused]] const auto size = write(file, &one, sizeof one);
    }
    void clear() const
    {
        uint64_t count = 0;
        [[maybe_unused]] const auto size = read(file, &count, sizeof count);
    }

    const int file = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
};
} // namespace

struct PipeWireGrabber::Private
{
    std::shared_ptr<ScreenCastFeed> feed;
    ScreenCastSession* session = nullptr;
    const std::shared_ptr<WakeUp> wakeUp = std::make_shared<WakeUp>();
    std::unique_ptr<PipeWireConnection> connection;
    quint64 number = 0;     ///< of the offer that is connected
    quint64 seenNumber = 0; ///< of the feed, when it was last looked at

    PipeWireStream* find(const QString& id) const
    {
        for (const auto& stream : connection->streams()) {
            if (stream->place().id == id)
                return stream.get();
        }
        return nullptr;
    }
    /// Says once that what the offer gave is gone.
    void reportLoss()
    {
        if (connection && !connection->isAlive() && number)
            feed->reportLost(std::exchange(number, 0));
    }
};

PipeWireGrabber::PipeWireGrabber(std::shared_ptr<ScreenCastFeed> feed,
                                 std::unique_ptr<ScreenCastSession> session)
    : d(std::make_unique<Private>())
{
    d->feed = std::move(feed);
    d->session = session.release();
    d->feed->setChangeListener([wakeUp = d->wakeUp] { wakeUp->set(); });
}

PipeWireGrabber::~PipeWireGrabber()
{
    d->feed->setChangeListener({});
    if (d->session && d->session->thread() == QThread::currentThread())
        delete d->session; // at the program's end nothing is done later any more
    else if (d->session)
        d->session->deleteLater();
}

bool PipeWireGrabber::open()
{
    const auto offer = d->feed->takeOffer();
    if (!offer)
        return false;
    d->number = offer->number;
    d->connection = std::make_unique<PipeWireConnection>(*offer, [wakeUp = d->wakeUp] { wakeUp->set(); });
    d->reportLoss();
    return isOpen();
}

void PipeWireGrabber::close()
{
    d->connection.reset();
}

bool PipeWireGrabber::isOpen() const
{
    return d->connection && d->connection->isAlive() && d->number == d->feed->number();
}

CaptureSources PipeWireGrabber::sources()
{
    CaptureSources sources;
    for (const auto& stream : d->connection->streams()) {
        const ScreenCastStream& place = stream->place();
        const CaptureSource source{place.id, place.name, QRect(place.place.topLeft(), stream->size()),
                                   place.primary};
        if (source.geometry.isEmpty())
            continue;
        if (source.primary)
            sources.prepend(source);
        else
            sources.append(source);
    }
    return sources;
}

bool PipeWireGrabber::takeSourcesChanged()
{
    const quint64 number = d->feed->number();
    const bool isNew = std::exchange(d->seenNumber, number) != number;
    return (isOpen() && d->connection->takeChanged()) || isNew;
}

bool PipeWireGrabber::tellsOfChange(const CaptureSource& source)
{
    PipeWireStream* stream = d->find(source.id);
    return stream && stream->tellsOfChange();
}

ScreenGrabber::Result PipeWireGrabber::grab(const CaptureSource& source, QSize outputSize, bool force,
                                            cv::Mat& frame)
{
    PipeWireStream* stream = d->find(source.id);
    return stream ? stream->grab(outputSize, force, frame) : Result::Failed;
}

void PipeWireGrabber::wait(std::chrono::microseconds time)
{
    if (!isOpen())
        close(); // nothing is read of an offer that does not count any more
    pollfd files[2] = {{d->wakeUp->file, POLLIN, 0}, {-1, POLLIN, 0}};
    if (d->connection)
        files[1].fd = d->connection->file();
    const timespec timeout{time_t(time.count() / 1000000), long(time.count() % 1000000) * 1000};
    if (ppoll(files, 2, &timeout, nullptr) > 0 && files[1].revents) {
        d->connection->dispatch();
        d->reportLoss();
    }
    d->wakeUp->clear();
}

void PipeWireGrabber::wake()
{
    d->wakeUp->set();
}

void PipeWireGrabber::request(SourceRequest request)
{
    if (d->session)
        d->session->request(request);
}

SourceTrouble PipeWireGrabber::trouble() const
{
    return d->feed->trouble();
}
