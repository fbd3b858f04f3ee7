// Desktop capture on real X servers that the tests start, kill and change.
#include "ScreenPainter.h"
#include "VirtualDisplay.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/capture/DeskDuplManager.h"
#include "support/capture/ThreadedCaptureBackend.h"
#include "support/capture/X11Grabber.h"

#include <QSignalSpy>
#include <QtTest>

namespace {
constexpr int kPatienceMs = 15000;
const QSize kScreen(640, 480);
const QRect kWhole(QPoint(), kScreen);
const QColor kOrange(250, 120, 10);
const QColor kBlue(20, 60, 230);

CaptureMode modeOn(const VirtualDisplay& display)
{
    const QByteArray name = display.name();
    return {QStringLiteral("X11"),
            [name] { return std::make_unique<ThreadedCaptureBackend>(std::make_shared<X11Grabber>(name)); }};
}

/// The pixel in the middle of the given part of the frame, as the effects read it; invalid without a frame.
QColor colorAt(const cv::Mat& frame, double x, double y)
{
    if (frame.empty())
        return QColor();
    const auto* pixel = frame.ptr(int(y * frame.rows), int(x * frame.cols));
    return QColor(pixel[0], pixel[1], pixel[2], pixel[3]);
}

QColor pulledColor(IDeskCapture& capture, double x = 0.5, double y = 0.5)
{
    return colorAt(capture.grabFrame(), x, y);
}

/// Pulls like an effect for the given time.
void pullFor(IDeskCapture& capture, int ms)
{
    for (QElapsedTimer time =
             [] {
                 QElapsedTimer t;
                 t.start();
                 return t;
             }();
         !time.hasExpired(ms);) {
        capture.grabFrame();
        QTest::qWait(20);
    }
}
} // namespace

class TestCapture : public QObject
{
    Q_OBJECT

private slots:
    void showsTheColoursOfTheScreen_data()
    {
        QTest::addColumn<QStringList>("withoutExtension");
        QTest::newRow("usual server") << QStringList();
        QTest::newRow("no shared memory") << QStringList{"MIT-SHM"};
        QTest::newRow("no monitors") << QStringList{"RANDR"};
        QTest::newRow("no damage") << QStringList{"DAMAGE"};
    }
    void showsTheColoursOfTheScreen()
    {
        QFETCH(QStringList, withoutExtension);
        VirtualDisplay display(kScreen);
        for (const QString& extension : withoutExtension)
            display.setArguments({"-extension", extension});
        QVERIFY(display.start());
        ScreenPainter painter(display.name());
        painter.fill(kWhole, kOrange);
        painter.fill(QRect(320, 240, 320, 240), kBlue);

        DeskDuplManager manager({modeOn(display)});
        QCOMPARE(manager.allCapturer().size(), 1);
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        QVERIFY(capture);
        QCOMPARE(capture->sourceSize(), kScreen);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture, 0.2, 0.2), kOrange, kPatienceMs);
        const cv::Mat frame = capture->grabFrame();
        QCOMPARE(QSize(frame.cols, frame.rows), QSize(120, 90));
        QCOMPARE(colorAt(frame, 0.8, 0.2), kOrange);
        QCOMPARE(colorAt(frame, 0.2, 0.8), kOrange);
        QCOMPARE(colorAt(frame, 0.8, 0.8), kBlue);
    }

    void restsOnAStillScreenAndSeesItsChanges()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter painter(display.name());
        painter.fill(kWhole, kOrange);
        DeskDuplManager manager({modeOn(display)});
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        for (const QColor& color : {kBlue, kOrange, QColor(Qt::green)}) {
            // While nothing changes, far fewer frames are grabbed than pulled.
            const auto grabsOfTenPulls = [&capture] {
                const quint64 before = capture->frameCount();
                for (int i = 0; i < 10; ++i) {
                    capture->grabFrame();
                    QTest::qWait(20);
                }
                return capture->frameCount() - before;
            };
            QTRY_VERIFY_WITH_TIMEOUT(grabsOfTenPulls() <= 1, kPatienceMs);
            painter.fill(kWhole, color);
            QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), color, kPatienceMs);
        }
    }

    void givesFramesOfTheSizeAskedFor()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(kWhole, kBlue);
        DeskDuplManager manager({modeOn(display)});
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        for (const auto& [asked, given] :
             {std::pair(QSize(33, 21), QSize(33, 21)), std::pair(QSize(800, 600), QSize(800, 600)),
              std::pair(QSize(0, -7), QSize(1, 1))}) {
            capture->setOutputSize(asked.width(), asked.height());
            QCOMPARE(capture->outputSize(), given);
            cv::Mat frame;
            QTRY_VERIFY_WITH_TIMEOUT(!(frame = capture->grabFrame()).empty(), kPatienceMs);
            QCOMPARE(QSize(frame.cols, frame.rows), given);
            QCOMPARE(colorAt(frame, 0.5, 0.5), kBlue);
        }
        capture->setOutputSize(1000000, 5);
        QVERIFY(capture->outputSize().width() < 10000);
    }

    void sharesOneCaptureAmongAll()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(kWhole, kBlue);
        DeskDuplManager manager({modeOn(display)});
        const QString id = manager.defaultCapturer();
        const auto first = manager.acquireCapturer(id);
        const auto second = manager.acquireCapturer(id);
        QCOMPARE(first.data(), second.data());
        QVERIFY(manager.acquireCapturer("no such monitor").isNull());
        QVERIFY(manager.acquireCapturer(QString()).isNull());
        manager.releaseCapturer("no such monitor");

        // What one puller does to its frame is nothing to the other.
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*first), kBlue, kPatienceMs);
        first->grabFrame().setTo(cv::Scalar::all(0));
        QCOMPARE(pulledColor(*second), kBlue);

        manager.releaseCapturer(id);
        QCOMPARE(pulledColor(*second), kBlue);
        manager.releaseCapturer(id);
        QVERIFY(second->grabFrame().empty());
        QVERIFY(manager.acquireCapturer(id) != first);
    }

    void grabsNothingWhileNobodyPulls()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter painter(display.name());
        DeskDuplManager manager({modeOn(display)});
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        painter.fill(kWhole, kOrange);
        QTest::qWait(300);
        QCOMPARE(capture->frameCount(), quint64(0));

        pullFor(*capture, 300);
        QVERIFY(capture->frameCount() > 0);
        QTest::qWait(1500); // it falls asleep
        const quint64 asleep = capture->frameCount();
        for (int i = 0; i < 10; ++i) {
            painter.fill(kWhole, i % 2 ? kOrange : kBlue);
            QTest::qWait(50);
        }
        QCOMPARE(capture->frameCount(), asleep);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kOrange, kPatienceMs);
    }

    void followsMonitors()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter painter(display.name());
        painter.fill(kWhole, kOrange);
        painter.fill(QRect(0, 0, 320, 480), kBlue);
        DeskDuplManager manager({modeOn(display)});
        QSignalSpy ready(&manager, &DeskDuplManager::capturerReady);
        QSignalSpy failed(&manager, &DeskDuplManager::capturerFailed);

        QVERIFY(display.setMonitor("RIGHT", QRect(320, 0, 320, 480)));
        QTRY_VERIFY_WITH_TIMEOUT(ready.contains({QStringLiteral("RIGHT")}), kPatienceMs);
        QVERIFY(display.setMonitor("LEFT", QRect(0, 0, 320, 480), true));
        QTRY_VERIFY_WITH_TIMEOUT(ready.contains({QStringLiteral("LEFT")}), kPatienceMs);
        QCOMPARE(manager.defaultCapturer(), QStringLiteral("LEFT"));
        QCOMPARE(manager.allCapturer().first(), QStringLiteral("LEFT"));
        QCOMPARE(manager.capturerDesc("LEFT"), QStringLiteral("LEFT (320 × 480, 主屏幕)"));
        QCOMPARE(manager.capturerDesc("RIGHT"), QStringLiteral("RIGHT (320 × 480)"));
        QCOMPARE(manager.capturerDesc("NONE"), QString());

        const auto left = manager.acquireCapturer("LEFT");
        const auto right = manager.acquireCapturer("RIGHT");
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*left), kBlue, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*right), kOrange, kPatienceMs);

        QVERIFY(display.removeMonitor("RIGHT"));
        QTRY_VERIFY_WITH_TIMEOUT(failed.contains({QStringLiteral("RIGHT")}), kPatienceMs);
        QVERIFY(right->grabFrame().empty());
        QVERIFY(manager.acquireCapturer("RIGHT").isNull());
        QCOMPARE(pulledColor(*left), kBlue);

        // Back at another place and partly outside the screen: who held on to it gets frames again.
        QVERIFY(display.setMonitor("RIGHT", QRect(600, 100, 400, 300)));
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*right), kOrange, kPatienceMs);
        QCOMPARE(right->sourceSize(), QSize(400, 300));
    }

    void survivesTheServer()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(kWhole, kBlue);
        DeskDuplManager manager({modeOn(display)});
        const QString id = manager.defaultCapturer();
        const auto capture = manager.acquireCapturer(id);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kBlue, kPatienceMs);
        QSignalSpy ready(&manager, &DeskDuplManager::capturerReady);
        QSignalSpy failed(&manager, &DeskDuplManager::capturerFailed);

        display.stop();
        QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, kPatienceMs);
        QVERIFY(manager.allCapturer().isEmpty());
        QCOMPARE(manager.defaultCapturer(), QString());
        QVERIFY(capture->grabFrame().empty());

        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(kWhole, kOrange);
        QTRY_COMPARE_WITH_TIMEOUT(ready.size(), 1, kPatienceMs);
        QCOMPARE(manager.defaultCapturer(), id);
        QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kOrange, kPatienceMs);
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
        pullFor(*capture, 300); // ends while it grabs
    }

    void offersNothingWithoutAReadableDisplay()
    {
        qunsetenv("DISPLAY");
        DeskDuplManager manager;
        QVERIFY(manager.option()->totalOfMode() >= 1);
        QVERIFY(manager.allCapturer().isEmpty());
        QCOMPARE(manager.defaultCapturer(), QString());
        QVERIFY(manager.acquireCapturer("screen").isNull());

        VirtualDisplay shallow(kScreen, 16);
        QVERIFY(shallow.start());
        QTest::ignoreMessage(QtWarningMsg,
                             "[DeskDuplManager]: Cannot capture a display with a depth of 16 bits");
        DeskDuplManager unreadable({modeOn(shallow)});
        QVERIFY(unreadable.allCapturer().isEmpty());
    }

    void switchesTheModeWhileCapturesAreHeld()
    {
        VirtualDisplay one(kScreen);
        VirtualDisplay other(QSize(800, 600));
        QVERIFY(one.start() && other.start());
        ScreenPainter(one.name()).fill(kWhole, kBlue);
        ScreenPainter(other.name()).fill(QRect(0, 0, 800, 600), kOrange);
        {
            DeskDuplManager manager({modeOn(one), modeOn(other)});
            DeskCaptureOption* option = DeskCaptureOption::current();
            QCOMPARE(option, manager.option());
            QCOMPARE(option->totalOfMode(), 2);
            const auto capture = manager.acquireCapturer(manager.defaultCapturer());
            QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kBlue, kPatienceMs);
            option->setCurMode(5);
            QCOMPARE(option->curMode(), 0);
            option->setCurMode(1);
            QTRY_COMPARE_WITH_TIMEOUT(pulledColor(*capture), kOrange, kPatienceMs);
            QCOMPARE(capture->sourceSize(), QSize(800, 600));
        }
        QVERIFY(!DeskCaptureOption::current());
    }
};

QTEST_GUILESS_MAIN(TestCapture)
#include "tst_capture.moc"
