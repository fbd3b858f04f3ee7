// Streams of a real media server, from a source like a compositor's to the frames that effects pull.
#include "LogCapture.h"
#include "PipeWireServer.h"
#include "PipeWireSource.h"
#include "support/capture/DeskDuplManager.h"
#include "support/capture/PipeWireGrabber_linux.h"
#include "support/capture/ScreenCastSession_linux.h"

#include <QtTest>
#include <atomic>

namespace {
constexpr int kPatienceMs = 20000;
using Kind = PipeWireSource::Kind;

const QList<QColor> kQuarters{Qt::red, Qt::green, Qt::blue, Qt::white};

QImage picture(const QList<QColor>& quarters)
{
    QImage image(2, 2, QImage::Format_RGB32);
    for (int i = 0; i < 4; ++i)
        image.setPixelColor(i % 2, i / 2, quarters[i % quarters.size()]);
    return image;
}

/// Row by row the colours in the middle of the frame's quarters; empty without a frame.
QList<QColor> pulledQuarters(IDeskCapture& capture)
{
    const cv::Mat frame = capture.grabFrame();
    QList<QColor> colors;
    for (int i = 0; i < 4 && !frame.empty(); ++i) {
        const auto* pixel = frame.ptr(frame.rows * (i / 2 * 2 + 1) / 4, frame.cols * (i % 2 * 2 + 1) / 4);
        colors += QColor(pixel[0], pixel[1], pixel[2], pixel[3]);
    }
    return colors;
}

cv::Vec4b toPixel(const QColor& color)
{
    return {uchar(color.red()), uchar(color.green()), uchar(color.blue()), 255};
}

QList<QColor> pulledLater(IDeskCapture& capture)
{
    for (int i = 0; i < 10; ++i) {
        capture.grabFrame();
        QTest::qWait(20);
    }
    return pulledQuarters(capture);
}

/// A media server, and what reads the streams that a test offers.
struct Desktop
{
    Desktop()
    {
        if (!server.start())
            qFatal("no media server");
        feed->setLostListener([this] { ++losses; });
        read();
    }
    ~Desktop() { feed->setLostListener({}); }
    void read()
    {
        auto grabber = std::make_shared<PipeWireGrabber>(feed, nullptr);
        manager = std::make_unique<DeskDuplManager>(QList<CaptureMode>{{{}, [grabber] { return grabber; }}});
    }
    std::unique_ptr<PipeWireSource> publish(const Kind& kind = {}) const
    {
        auto source = std::make_unique<PipeWireSource>(server.connection(), kind);
        source->show(picture(kQuarters));
        source->waitForNode(kPatienceMs);
        return source;
    }
    /// Offers the sources as "a", "b" and so on.
    void offer(const QList<const PipeWireSource*>& sources) const
    {
        ScreenCastStreams streams;
        for (const PipeWireSource* source : sources) {
            const QString id(QChar('a' + streams.size()));
            streams += {source->node(), id, "screen " + id, QRect(streams.size() * 640, 0, 640, 480),
                        streams.isEmpty()};
        }
        feed->offer(server.connection(), streams);
    }
    /// Never null.
    QSharedPointer<IDeskCapture> acquire(const QString& id) const
    {
        [&] { QTRY_VERIFY_WITH_TIMEOUT(manager->allCapturer().contains(id), kPatienceMs); }();
        auto capture = manager->acquireCapturer(id);
        if (!capture)
            qFatal("no capture");
        return capture;
    }

    PipeWireServer server;
    const std::shared_ptr<ScreenCastFeed> feed = std::make_shared<ScreenCastFeed>();
    std::atomic<int> losses{0};
    std::unique_ptr<DeskDuplManager> manager;
};
} // namespace

class TestPipeWire : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatTheUserSees()
    {
        const spa_video_format formats[]{SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA, SPA_VIDEO_FORMAT_RGBx,
                                         SPA_VIDEO_FORMAT_RGBA, SPA_VIDEO_FORMAT_xRGB, SPA_VIDEO_FORMAT_xBGR};
        const Desktop desktop;
        for (uint32_t i = 0; i < 8; ++i) {
            Kind kind;
            kind.format = formats[i % 6];
            kind.transform = i;
            kind.crop = i > 4 ? QRect(100, 10, 400, 300) : QRect();
            kind.tellsStride = i > 0;
            kind.stride = i % 2 ? 640 * 4 + 52 : 0;
            const QSize size = kind.crop.isEmpty() ? kind.size : kind.crop.size();
            qInfo("transform %u", i); // is printed before what fails
            const auto source = desktop.publish(kind);
            desktop.offer({source.get()});
            const auto capture = desktop.acquire("a");
            QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*capture), kQuarters, kPatienceMs);
            QTRY_COMPARE_WITH_TIMEOUT(capture->sourceSize(), i % 2 ? size.transposed() : size, kPatienceMs);
            desktop.manager->releaseCapturer("a");
            desktop.feed->withdraw(SourceTrouble::None);
        }
    }

    void keepsTheLastPictureWhateverIsSent()
    {
        const Desktop desktop;
        Kind kind;
        kind.crop = QRect(600, 440, 400, 300); // most of it outside
        const auto source = desktop.publish(kind);
        desktop.offer({source.get()});
        const auto capture = desktop.acquire("a");
        const QList<PipeWireSource::Spoil> spoils{
            [](spa_data& data) { data.chunk->size = 0; },
            [](spa_data& data) { data.chunk->flags = SPA_CHUNK_FLAG_CORRUPTED; },
            [](spa_data& data) { data.chunk->stride = -2560; },
            [](spa_data& data) { data.chunk->stride = 2559; },
            [](spa_data& data) { data.chunk->stride = 2561; },
            [](spa_data& data) { data.chunk->stride = std::numeric_limits<int32_t>::max(); },
            [](spa_data& data) { data.chunk->offset = 4; },
            [](spa_data& data) { data.chunk->offset = 0xFFFFFFFFU; },
            [](spa_data& data) { data.chunk->size = data.maxsize + 1; },
            [](spa_data& data) { QCOMPARE(ftruncate(int(data.fd), 4096), 0); },
        };
        for (const auto& spoil : spoils) {
            source->show(picture({Qt::yellow}));
            const QList<QColor> yellow{Qt::yellow, Qt::yellow, Qt::yellow, Qt::yellow};
            QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*capture), yellow, kPatienceMs);
            const int sent = source->sent();
            const auto isSent = [&] { // as soon as a busy machine has a buffer back
                source->show(picture({Qt::blue}), spoil);
                return source->sent() > sent;
            };
            QVERIFY(QTest::qWaitFor(isSent, kPatienceMs));
            QCOMPARE(pulledLater(*capture), yellow);
        }
        QCOMPARE(capture->sourceSize(), QSize(40, 40));
    }

    void restsWhileNobodyPullsAndKeepsThePicture()
    {
        Desktop desktop;
        Kind kind;
        kind.sendsAtStart = false;
        const auto source = desktop.publish(kind);
        desktop.manager.reset();
        desktop.offer({source.get()});
        PipeWireGrabber grabber(desktop.feed, nullptr);
        QVERIFY(grabber.open());
        const auto comes =
            [&grabber](const std::function<bool()>& event) { // with the thread's work meanwhile
                for (QDeadlineTimer patience(kPatienceMs); !event(); grabber.takeSourcesChanged()) {
                    if (patience.hasExpired())
                        return false;
                    grabber.wait(std::chrono::milliseconds(5));
                }
                return true;
            };
        const CaptureSource place{"a", "", QRect(), true};
        cv::Mat frame;
        const auto grabs = [&](ScreenGrabber::Result result, bool force = false) {
            return grabber.grab(place, QSize(60, 45), force, frame) == result;
        };
        using Result = ScreenGrabber::Result;
        const auto shows = [&](const QColor& color) { // again and again: the first may come too early
            source->show(picture({kQuarters[0], kQuarters[1], color}));
            return grabs(Result::Frame) && frame.at<cv::Vec4b>(40, 5) == toPixel(color);
        };
        QVERIFY(comes([&] { return source->isRead(); }) && grabs(Result::Unchanged));
        QVERIFY(comes([&] { return shows(Qt::blue); }));
        QVERIFY(comes([&] { return grabs(Result::Unchanged) && grabber.tellsOfChange(place); }));
        QElapsedTimer clock;
        clock.start();
        source->show(picture({Qt::yellow}));
        while (grabber.tellsOfChange(place))
            grabber.wait(std::chrono::milliseconds(kPatienceMs));
        QVERIFY(clock.elapsed() < kPatienceMs && grabs(Result::Frame));
        QVERIFY(comes([&] { return shows(Qt::blue); }));
        QVERIFY(comes([&] { return !source->isRead(); })); // nobody has grabbed for a while
        QVERIFY(comes([&] { return grabs(Result::Unchanged); }) && comes([&] { return source->isRead(); }));
        QVERIFY(grabs(Result::Frame, true) && frame.at<cv::Vec4b>(40, 5) == toPixel(Qt::blue));

        // The memory of the picture goes with the link.
        desktop.server.stopManager();
        QVERIFY(comes([&] { return grabber.sources().isEmpty(); }));
        frame.release();
        QVERIFY(grabs(Result::Frame, true) && frame.at<cv::Vec4b>(40, 5) == toPixel(Qt::blue));
        QVERIFY(desktop.server.startManager() && comes([&] { return !grabber.sources().isEmpty(); }));
        QVERIFY(comes([&] { return source->isRead(); }) && grabs(Result::Unchanged));
        QVERIFY(comes([&] { return shows(Qt::yellow); }));
        QVERIFY(grabber.isOpen() && desktop.losses == 0);
        grabber.close();
    }

    void followsStreamsThatEndAndOffersThatCount()
    {
        const Desktop desktop;
        auto first = desktop.publish();
        auto second = desktop.publish();
        desktop.offer({first.get(), second.get()});
        const auto a = desktop.acquire("a");
        const auto b = desktop.acquire("b");
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*a), kQuarters, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*b), kQuarters, kPatienceMs);
        first.reset(); // a monitor is unplugged: the session with the others goes on
        QTRY_COMPARE_WITH_TIMEOUT(desktop.manager->allCapturer(), QStringList{"b"}, kPatienceMs);
        second->show(picture({Qt::red}));
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*b).value(3), QColor(Qt::red), kPatienceMs);
        QCOMPARE(desktop.losses.load(), 0);

        first = desktop.publish();
        desktop.offer({first.get(), second.get()});
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*a), kQuarters, kPatienceMs);
        desktop.feed->withdraw(SourceTrouble::Withdrawn);
        QTRY_VERIFY_WITH_TIMEOUT(desktop.manager->allCapturer().isEmpty(), kPatienceMs);
        const auto isRead = [&] { return first->isRead() || second->isRead(); };
        QTRY_VERIFY_WITH_TIMEOUT(!isRead(), kPatienceMs);
        QCOMPARE(desktop.losses.load(), 0);

        desktop.offer({second.get()});
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*a).value(3), QColor(Qt::red), kPatienceMs);
        second.reset();
        QTRY_COMPARE_WITH_TIMEOUT(desktop.losses.load(), 1, kPatienceMs);
    }

    void survivesTheServer()
    {
        Desktop desktop;
        auto source = desktop.publish();
        desktop.offer({source.get()});
        const auto capture = desktop.acquire("a");
        for (int deaths = 1; deaths <= 2; ++deaths) {
            QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*capture), kQuarters, kPatienceMs);
            const int late = desktop.server.connection();
            desktop.server.stop();
            QTRY_VERIFY_WITH_TIMEOUT(desktop.manager->allCapturer().isEmpty(), kPatienceMs);
            QVERIFY(capture->grabFrame().empty());
            desktop.feed->offer(late, {{1, "a", "too late", QRect(), true}});
            QTRY_COMPARE_WITH_TIMEOUT(desktop.losses.load(), 2 * deaths, kPatienceMs);
            QVERIFY(desktop.server.start());
            source = desktop.publish();
            desktop.offer({source.get()});
        }
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*capture), kQuarters, kPatienceMs);
    }

    void endsWithAServerThatAnswersNothing()
    {
        Desktop desktop;
        const auto source = desktop.publish();
        desktop.offer({source.get()});
        const auto capture = desktop.acquire("a");
        QTRY_COMPARE_WITH_TIMEOUT(pulledQuarters(*capture), kQuarters, kPatienceMs);
        const LogCapture log;
        desktop.server.freeze();
        QCOMPARE(pulledLater(*capture), kQuarters);
        desktop.manager.reset(); // while it reads
        desktop.offer({source.get()});
        desktop.read();
        desktop.manager.reset(); // while it connects
        QVERIFY(!log.contains("did not end by itself"));
        desktop.server.thaw();
    }
};

QTEST_GUILESS_MAIN(TestPipeWire)
#include "tst_pipewire.moc"
