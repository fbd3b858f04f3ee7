// Desktop capture on real X servers that the tests start, kill and change.
#include "ScreenPainter.h"
#include "VirtualDisplay.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/capture/DeskDuplManager.h"
#include "support/capture/X11Grabber.h"
#include "support/capture/X11Reducer.h"

#include <QtTest>
#include <numeric>
#include <opencv2/imgproc.hpp>
#include <thread>

namespace {
constexpr int kPatienceMs = 15000;
const QSize kScreen(640, 480);
const QRect kWhole(QPoint(), kScreen);
const QColor kOrange(250, 120, 10);
const QColor kBlue(20, 60, 230);

class CountingGrabber : public X11Grabber
{
public:
    using X11Grabber::X11Grabber;
    Result grab(const CaptureSource& source, QSize outputSize, bool force, cv::Mat& frame) override
    {
        ++looks;
        return X11Grabber::grab(source, outputSize, force, frame);
    }
    static inline std::atomic<int> looks{0};
};

CaptureMode modeOn(const VirtualDisplay& display)
{
    const QByteArray name = display.name();
    return {{}, [name] { return std::make_shared<CountingGrabber>(name); }};
}

/// The pixel at the given part of the frame, as the effects read it; invalid without a frame.
QColor pulledColor(IDeskCapture& capture, double x = 0.5, double y = 0.5)
{
    const cv::Mat frame = capture.grabFrame();
    if (frame.empty())
        return QColor();
    const auto* pixel = frame.ptr(int(y * frame.rows), int(x * frame.cols));
    return QColor(pixel[0], pixel[1], pixel[2], pixel[3]);
}

/// Pulls like an effect.
void pull(IDeskCapture& capture, int times)
{
    for (int i = 0; i < times; ++i) {
        capture.grabFrame();
        QTest::qWait(20);
    }
}

class Shouter : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char*, const char*, int) const override
    {
        return qstrcmp(context, "DeskDuplManager") == 0 ? "SCREEN %1 %2 %3" : QString();
    }
};

/// A desktop whose user is asked first. Waits for an event only: what comes by the clock comes never.
class AskedGrabber : public ScreenGrabber
{
public:
    bool open() override { return m_isOpen = m_trouble == SourceTrouble::None; }
    void close() override { m_isOpen = false; }
    bool isOpen() const override { return m_isOpen; }
    CaptureSources sources() override { return {{"portal:1", "Screen", QRect(0, 0, 64, 48)}}; }
    bool takeSourcesChanged() override { return m_changed.exchange(false); }
    Result grab(const CaptureSource&, QSize, bool, cv::Mat&) override { return Result::Unchanged; }
    void wait(std::chrono::microseconds) override { m_wakeUps.acquire(); }
    void wake() override { m_wakeUps.release(); }
    void abort() override {}
    void request(SourceRequest request) override
    {
        onMainThread = onMainThread && QThread::currentThread() == QCoreApplication::instance()->thread();
        requests += request;
        if (m_trouble == SourceTrouble::NotAsked)
            become(SourceTrouble::Asking);
    }
    SourceTrouble trouble() const override { return m_trouble; }

    void become(SourceTrouble trouble, bool isTold = true)
    {
        m_trouble = trouble;
        m_isOpen = false;
        m_changed = isTold;
        if (isTold)
            wake();
    }

    QList<SourceRequest> requests;
    bool onMainThread = true;

private:
    std::atomic<bool> m_isOpen{false};
    std::atomic<bool> m_changed{false};
    std::atomic<SourceTrouble> m_trouble{SourceTrouble::NotAsked};
    QSemaphore m_wakeUps;
};

const CaptureMode kNone{{}, [] { return nullptr; }};

CaptureMode asked(const std::shared_ptr<AskedGrabber>& grabber)
{
    return {"portal", [grabber] { return grabber; }, false, "", "portal:"};
}

/// An X server with a capture of its only screen.
struct CapturedScreen
{
    explicit CapturedScreen(const QColor& color, const QStringList& arguments = {})
    {
        display.setArguments(arguments);
        if (!display.start())
            qFatal("no X server");
        fill(kWhole, color);
        manager = std::make_unique<DeskDuplManager>(QList<CaptureMode>{modeOn(display)});
        id = manager->defaultCapturer();
        capture = manager->acquireCapturer(id);
    }
    void fill(const QRect& rect, const QColor& color) const
    {
        ScreenPainter(display.name()).fill(rect, color);
    }

    VirtualDisplay display{kScreen};
    std::unique_ptr<DeskDuplManager> manager;
    QString id;
    QSharedPointer<IDeskCapture> capture;
};
} // namespace

class TestCapture : public QObject
{
    Q_OBJECT

private slots:
    void showsTheColoursOfTheScreenWhateverTheServerLacks()
    {
        for (const char* lacking : {"", "MIT-SHM", "RANDR", "DAMAGE"}) {
            const CapturedScreen screen(kOrange,
                                        *lacking ? QStringList{"-extension", lacking} : QStringList());
            screen.fill(QRect(320, 240, 320, 240), kBlue);
            QCOMPARE(screen.capture->sourceSize(), kScreen);
            QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*screen.capture, 0.8, 0.8), kBlue, kPatienceMs);
            QVERIFY(screen.capture->grabFrame().size() == cv::Size(120, 90));
            QCOMPARE(pulledColor(*screen.capture, 0.8, 0.2), kOrange);
            QCOMPARE(pulledColor(*screen.capture, 0.2, 0.8), kOrange);
            screen.capture->setOutputSize(33, -7);
            QTRY_VERIFY_WITH_TIMEOUT(screen.capture->grabFrame().size() == cv::Size(33, 1), kPatienceMs);
        }
    }

    void aLargeScreenIsMadeSmallByTheServerAndLooksTheSame()
    {
        const QSize output(120, 67);
        QCOMPARE(X11Reducer::sizeFor({1920, 1080}, output), QSize(480, 540));
        QCOMPARE(X11Reducer::sizeFor({3840, 2160}, output), QSize(960, 540));
        QCOMPARE(X11Reducer::sizeFor({7680, 4320}, output), QSize(1920, 1080));
        QCOMPARE(X11Reducer::sizeFor({959, 1071}, {120, 134}), QSize(959, 1071));
        QCOMPARE(X11Reducer::sizeFor({33, 1999}, {40, 1}), QSize(33, 499));

        const QRect whole(0, 0, 1920, 1080);
        const QRect odd(101, 55, 1367, 1075); // a monitor; no factor fits its size
        for (const char* lacking : {"", "RENDER"}) {
            VirtualDisplay display(whole.size());
            display.setArguments(*lacking ? QStringList{"-extension", lacking} : QStringList());
            QVERIFY(display.start());
            X11Grabber grabber(display.name());
            QVERIFY(grabber.open());
            grabber.sources();
            ScreenPainter painter(display.name());
            const auto grab = [&](const QRect& rect) {
                cv::Mat frame;
                grabber.grab({"any", "any", rect, true}, output, true, frame);
                return frame;
            };
            for (const QRect& rect : {whole, odd}) {
                painter.fill(whole, Qt::green); // all around
                painter.fill(rect, kOrange);
                painter.fill({rect.topLeft(), QSize(rect.width() / 2, rect.height())}, kBlue);
                const cv::Mat frame = grab(rect);
                QCOMPARE(QSize(frame.cols, frame.rows), output);
                cv::Mat expected(frame.size(), CV_8UC4, cv::Scalar(250, 120, 10, 255));
                expected.colRange(0, 60).setTo(cv::Scalar(20, 60, 230, 255));
                cv::Mat difference;
                cv::absdiff(frame, expected, difference);
                difference.colRange(59, 61).setTo(0); // which may have something of both
                QCOMPARE(cv::norm(difference, cv::NORM_INF), 0.0);
            }
            // A thin line that moves looks like one, behind the shipped blur.
            for (const bool isColumn : {true, false}) {
                std::vector<double> light;
                for (int at = 400; at < 432; ++at) {
                    painter.fill(whole, Qt::black);
                    painter.fill(isColumn ? QRect(at, 0, 1, 1080) : QRect(0, at, 1920, 1), Qt::white);
                    cv::Mat frame = grab(whole);
                    QVERIFY(!frame.empty());
                    frame.convertTo(frame, CV_32F);
                    cv::GaussianBlur(frame, frame, cv::Size(37, 37), 0);
                    cv::extractChannel(frame, frame, 0);
                    double most = 0;
                    cv::minMaxLoc(frame, nullptr, &most);
                    light.push_back(most);
                }
                const auto [least, most] = std::minmax_element(light.begin(), light.end());
                const double mean = std::accumulate(light.begin(), light.end(), 0.0) / double(light.size());
                QVERIFY2(*most - *least < 3 && mean > 0.5 && mean < 2,
                         qPrintable(QString("%1 to %2, mean %3").arg(*least).arg(*most).arg(mean)));
            }
            // What is no longer there when the screen becomes smaller does not look black.
            QVERIFY(display.run("xrandr", {"--output", "screen", "--off", "--fb", "1280x720"}));
            painter.fill(whole, Qt::white);
            QVERIFY(grab(whole).empty());
            grabber.sources();
            QVERIFY(cv::mean(grab(whole))[0] > 254);
        }
    }

    void whoRestsOnAStillScreenIsToldOfItsChanges()
    {
        for (const bool isTold : {true, false}) { // or it has to look
            CapturedScreen screen(kOrange, isTold ? QStringList() : QStringList{"-extension", "DAMAGE"});
            IDeskCapture& capture = *screen.capture;
            int changes = 0;
            connect(
                &capture, &IDeskCapture::changed, this, [&] { ++changes; }, Qt::QueuedConnection);
            QTRY_COMPARE_WITH_TIMEOUT(pulledColor(capture), kOrange, kPatienceMs);
            for (const QColor& color : {kBlue, QColor(Qt::green)}) {
                const quint64 frame = capture.frameCount();
                const auto looksWhileResting = [&] {
                    const int before = CountingGrabber::looks;
                    for (int i = 0; i < 15; ++i, QTest::qWait(20))
                        capture.awaitChange(&screen, frame, 20);
                    return CountingGrabber::looks - before;
                };
                QTRY_VERIFY_WITH_TIMEOUT(isTold ? looksWhileResting() <= 1 : looksWhileResting() > 5,
                                         kPatienceMs);
                QCOMPARE(capture.frameCount(), frame); // the same picture is no new one
                QCOMPARE(std::exchange(changes, 0), 0);
                screen.fill(kWhole, color);
                QTRY_COMPARE_WITH_TIMEOUT(changes, 1, kPatienceMs);
                QCOMPARE(pulledColor(capture), color);
                capture.awaitChange(&screen, frame, 20); // of which it has heard too late
                QTRY_COMPARE(changes, 2);
                changes = 0;
            }
            capture.awaitChange(&screen, capture.frameCount(), 20);
            screen.manager->releaseCapturer(screen.id);
            QTRY_COMPARE(changes, 1); // lost
        }
    }

    void sharesOneCaptureAmongAll()
    {
        const CapturedScreen screen(kBlue);
        const auto second = screen.manager->acquireCapturer(screen.id);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*screen.capture), kBlue, kPatienceMs);
        screen.capture->grabFrame().setTo(cv::Scalar::all(0)); // which is nothing to the other one
        QVERIFY(screen.capture == second && pulledColor(*second) == kBlue);
        QCOMPARE(second->sharedFrame(&kBlue, 20, 20).data, screen.capture->sharedFrame(&screen, 20, 20).data);
        second->pullFrame(&screen, 20, 20).setTo(cv::Scalar::all(0)); // a copy again
        screen.manager->releaseCapturer(screen.id);
        QCOMPARE(pulledColor(*second), kBlue);
        screen.manager->releaseCapturer(screen.id);
        QVERIFY(second->grabFrame().empty());
    }

    void followsMonitorsAndTellsOfThem()
    {
        const CapturedScreen screen(kOrange);
        screen.fill(QRect(0, 0, 320, 480), kBlue);
        const VirtualDisplay& display = screen.display;
        DeskDuplManager& manager = *screen.manager;
        QSignalSpy ready(&manager, &DeskDuplManager::capturerReady);
        QSignalSpy failed(&manager, &DeskDuplManager::capturerFailed);
        QString heard;
        connect(&manager, &DeskDuplManager::capturersChanged, &manager,
                [&] { heard = manager.capturerDesc("RIGHT"); });

        QVERIFY(display.setMonitor("RIGHT", QRect(320, 0, 320, 480)));
        QTRY_VERIFY_WITH_TIMEOUT(ready.contains({"RIGHT"}), kPatienceMs);
        QVERIFY(display.setMonitor("LEFT", QRect(0, 0, 320, 480), true));
        QTRY_VERIFY_WITH_TIMEOUT(ready.contains({"LEFT"}), kPatienceMs);
        QCOMPARE(manager.defaultCapturer(), "LEFT");
        const auto left = manager.acquireCapturer("LEFT");
        const auto right = manager.acquireCapturer("RIGHT");
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*left), kBlue, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*right), kOrange, kPatienceMs);

        QVERIFY(display.removeMonitor("RIGHT"));
        QTRY_VERIFY_WITH_TIMEOUT(failed.contains({"RIGHT"}), kPatienceMs);
        QVERIFY(right->grabFrame().empty());
        QVERIFY(manager.acquireCapturer("RIGHT").isNull());
        // Back at another place and partly outside the screen: who held on to it gets frames again.
        QVERIFY(display.setMonitor("RIGHT", QRect(600, 100, 400, 300)));
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*right), kOrange, kPatienceMs);
        QCOMPARE(right->sourceSize(), QSize(400, 300));

        // Of another size with nothing between.
        QVERIFY(display.removeMonitor("RIGHT") && display.setMonitor("RIGHT", QRect(0, 0, 480, 320)));
        QTRY_VERIFY_WITH_TIMEOUT(heard.contains(QString::fromUtf8("480 × 320")), kPatienceMs);
        Shouter translator;
        QCoreApplication::installTranslator(&translator);
        QVERIFY(heard.startsWith("SCREEN "));
        QCoreApplication::removeTranslator(&translator);
        QVERIFY(heard.startsWith("RIGHT"));
    }

    void survivesTheServer()
    {
        CapturedScreen screen(kBlue);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*screen.capture), kBlue, kPatienceMs);
        QSignalSpy ready(screen.manager.get(), &DeskDuplManager::capturerReady);
        QSignalSpy failed(screen.manager.get(), &DeskDuplManager::capturerFailed);

        screen.display.stop();
        QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, kPatienceMs);
        QCOMPARE(screen.manager->defaultCapturer(), QString());
        QVERIFY(screen.capture->grabFrame().empty());

        QVERIFY(screen.display.start());
        screen.fill(kWhole, kOrange);
        QTRY_COMPARE_WITH_TIMEOUT(ready.size(), 1, kPatienceMs);
        QCOMPARE(screen.manager->defaultCapturer(), screen.id);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*screen.capture), kOrange, kPatienceMs);
    }

    void neverHangsWithAServerThatAnswersNothing()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(kWhole, kBlue);
        display.freeze();
#ifndef __SANITIZE_THREAD__ // which sees no order in the end of a thread that is terminated
        QVERIFY(DeskDuplManager({modeOn(display)}).allCapturer().isEmpty()); // ends while it connects
#endif
        DeskDuplManager manager({modeOn(display)});
        QSignalSpy ready(&manager, &DeskDuplManager::capturerReady);
        display.thaw();
        QTRY_COMPARE_WITH_TIMEOUT(ready.size(), 1, kPatienceMs);
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kBlue, kPatienceMs);
        display.freeze();
        pull(*capture, 15); // ends while it grabs
    }

    void offersNothingWithoutAReadableDisplay()
    {
        qunsetenv("DISPLAY");
        QVERIFY(DeskDuplManager().allCapturer().isEmpty());
        VirtualDisplay shallow(kScreen, 16);
        QVERIFY(shallow.start());
        QVERIFY(DeskDuplManager({modeOn(shallow)}).allCapturer().isEmpty());
    }

    void tellsWhyThereIsNothingAndOpensAtOnceWhenThereIs()
    {
        QCOMPARE(DeskDuplManager({kNone}).sourceTrouble(), SourceTrouble::NoDisplay);
        const auto grabber = std::make_shared<AskedGrabber>();
        DeskDuplManager manager({asked(grabber)});
        QList<SourceTrouble> heard;
        connect(&manager, &DeskDuplManager::capturersChanged, &manager, [&] {
            heard += manager.sourceTrouble();
            QCOMPARE(manager.allCapturer().isEmpty(), heard.last() != SourceTrouble::None);
        });
        QCOMPARE(manager.sourceTrouble(), SourceTrouble::NotAsked);
        std::thread([&] { manager.requestSources(SourceRequest::Needed); }).join();
        QList<SourceTrouble> expected{SourceTrouble::Asking};
        QTRY_COMPARE_WITH_TIMEOUT(heard, expected, kPatienceMs);
        for (const auto trouble : {SourceTrouble::Refused, SourceTrouble::None, SourceTrouble::Withdrawn,
                                   SourceTrouble::Lost, SourceTrouble::None}) {
            grabber->become(trouble, expected.last() != SourceTrouble::Lost);
            if (expected.last() == SourceTrouble::Lost)
                manager.requestSources(SourceRequest::Again);
            expected += trouble;
            QTRY_COMPARE_WITH_TIMEOUT(heard, expected, kPatienceMs);
        }
        QVERIFY(grabber->onMainThread);
        QCOMPARE(grabber->requests, (QList<SourceRequest>{SourceRequest::Needed, SourceRequest::Again}));
    }

    void whoIsInNeedMayAskInAnotherMode()
    {
        const auto grabber = std::make_shared<AskedGrabber>();
        const QList<CaptureMode> modes{kNone, asked(grabber)};
        DeskCaptureOption option(modes);
        DeskDuplManager manager(modes);
        for (const bool isInNeed : {false, true}) {
            if (isInNeed)
                connect(&manager, &DeskDuplManager::modeChanged, &manager,
                        [&] { manager.requestSources(SourceRequest::Shown); });
            for (const int mode : {1, 0}) {
                option.setCurMode(mode);
                QVERIFY(manager.isOfPresentMode("portal:2") == (mode == 1));
                QVERIFY(manager.isOfPresentMode("eDP-1") == (mode == 0));
            }
            QCOMPARE(grabber->requests.size(), isInNeed ? 1 : 0);
        }
    }

    void switchesTheModeWhileCapturesAreHeld()
    {
        VirtualDisplay one(kScreen);
        VirtualDisplay other(QSize(800, 600));
        QVERIFY(one.start() && other.start());
        ScreenPainter(one.name()).fill(kWhole, kBlue);
        ScreenPainter(other.name()).fill(QRect(0, 0, 800, 600), kOrange);
        const QList<CaptureMode> modes{modeOn(one), modeOn(other)};
        DeskCaptureOption option(modes); // chosen before there is anything to capture
        option.setCurMode(1);
        DeskDuplManager manager(modes);
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kOrange, kPatienceMs);
        option.setCurMode(5);
        QCOMPARE(option.curMode(), 1);
        option.setCurMode(0);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kBlue, kPatienceMs);
    }
};

QTEST_GUILESS_MAIN(TestCapture)
#include "tst_capture.moc"
