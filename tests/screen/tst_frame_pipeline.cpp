#include "ScreenTestKit.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "effects/screenSync/FrameFilters.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>
#include <limits>
#include <opencv2/imgproc.hpp>

using namespace ScreenTestKit;

namespace {

const QString kEffect = QStringLiteral("id.effect.screenSync.probe");
const QString kController = QStringLiteral("LVTEST:01");

bool same(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0.0;
}

/// Keeps the frame that reaches the mode; every LED shows its first pixel.
class ProbeMode : public AbsScreenSync
{
public:
    ProbeMode()
        : AbsScreenSync(effect(kEffect), nullptr)
    {
    }
    using AbsScreenSync::blurFrame;
    using AbsScreenSync::update;
    using AbsScreenSync::wipeDarkSide;

    cv::Mat seen;

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override
    {
        seen = frame.clone();
        const auto pixel = frame.at<cv::Vec4b>(0, 0);
        m_colors.fill({pixel[0], pixel[1], pixel[2]});
        return m_colors;
    }
};

LV_RGB firstColor(QSignalSpy& spy)
{
    return spy.takeLast().at(0).value<QVector<LV_RGB>>().value(0);
}

} // namespace

class TestFramePipeline : public QObject
{
    Q_OBJECT

private slots:
    void init() { resetConfig(); }

    void kernelSizeFollowsTheStrength_data()
    {
        QTest::addColumn<double>("strength");
        QTest::addColumn<int>("size");
        QTest::newRow("off") << 0.0 << 1;
        QTest::newRow("below the first step") << 0.02 << 1;
        QTest::newRow("even becomes odd") << 0.03 << 3;
        QTest::newRow("default") << 0.5 << 37;
        QTest::newRow("full") << 1.0 << 75;
        QTest::newRow("negative") << -3.0 << 1;
        QTest::newRow("absurd") << 1e300 << 751;
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 1;
    }
    void kernelSizeFollowsTheStrength()
    {
        QFETCH(double, strength);
        QTEST(FrameFilters::blurKernelSize(strength), "size");
    }

    void theBlurIsGaussianToTheBit()
    {
        for (const cv::Size size : {cv::Size(120, 67), cv::Size(120, 213), cv::Size(3, 2)}) {
            for (int kernel = 1; kernel <= 75; kernel += 2) {
                cv::Mat frame(size, CV_8UC4);
                cv::randu(frame, 0, 256);
                cv::Mat expected;
                cv::GaussianBlur(frame, expected, cv::Size(kernel, kernel), 0, 0, cv::BORDER_DEFAULT);
                const double strength = (kernel + 0.5) / 75.0;
                QVERIFY2(same(FrameFilters::blur(frame, strength), expected),
                         qPrintable(QString::number(kernel)));
            }
            const cv::Mat white(size, CV_8UC4, cv::Scalar::all(255));
            QVERIFY(same(FrameFilters::blur(white, 1.0), white));
        }
    }

    void saturationIsAddedToTheColor()
    {
        using FrameFilters::adjustSaturation;
        const LV_RGB pink{200, 100, 100};
        QCOMPARE(adjustSaturation(pink, 1.0), (LV_RGB{200, 0, 0}));
        QCOMPARE(adjustSaturation(pink, 0.25), (LV_RGB{200, 50, 50}));
        QCOMPARE(adjustSaturation(pink, -1.0), (LV_RGB{200, 200, 200}));
        for (const LV_RGB grey : {LV_RGB{0, 0, 0}, LV_RGB{90, 90, 90}, LV_RGB{255, 255, 255}})
            QCOMPARE(adjustSaturation(grey, 1.0), grey);
        for (int c = 0; c < 16 * 16 * 16; ++c) {
            const LV_RGB color{static_cast<uint8_t>(c / 256 * 17), static_cast<uint8_t>(c / 16 % 16 * 17),
                               static_cast<uint8_t>(c % 16 * 17)};
            QCOMPARE(adjustSaturation(color, 0.0), color);
        }
    }

    void darkSidesAreCutOffAroundThreeBrightPixels()
    {
        ProbeMode worker;
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        QVERIFY(same(worker.wipeDarkSide(frame), frame));
        frame.at<cv::Vec4b>(10, 20) = cv::Vec4b(129, 129, 129, 255);
        frame.at<cv::Vec4b>(19, 39) = cv::Vec4b(129, 129, 129, 255);
        frame.at<cv::Vec4b>(50, 100) = cv::Vec4b(128, 128, 128, 255); // not bright enough
        QVERIFY(same(worker.wipeDarkSide(frame), frame));

        frame.at<cv::Vec4b>(15, 30) = cv::Vec4b(129, 129, 129, 255);
        cv::Mat expected;
        cv::resize(frame(cv::Rect(20, 10, 20, 10)), expected, frame.size(), 0, 0, cv::INTER_LINEAR);
        QVERIFY(same(worker.wipeDarkSide(frame), expected));
    }

    void brightnessWeighsBlueAsRed()
    {
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        cv::Mat result;
        frame(cv::Rect(0, 0, 4, 4)).setTo(cv::Scalar(110, 180, 0, 255)); // 118, though 139 as RGB
        FrameFilters::wipeDarkSide(frame, result);
        QVERIFY(same(result, frame));
        frame(cv::Rect(0, 0, 4, 4)).setTo(cv::Scalar(0, 180, 110, 255));
        FrameFilters::wipeDarkSide(frame, result);
        QCOMPARE(result.at<cv::Vec4b>(66, 119), cv::Vec4b(0, 180, 110, 255));
    }

    void aFrameIsBlurredByTheWorkersOwnStrength()
    {
        ProbeMode worker;
        worker.load(controller(1));
        const cv::Mat frame = positionFrame();
        cv::Mat expected;
        cv::GaussianBlur(frame, expected, cv::Size(37, 37), 0, 0, cv::BORDER_DEFAULT);
        QVERIFY(same(worker.blurFrame(frame, 0.0), expected));
        worker.frameInput(frame);
        QVERIFY(same(worker.seen, expected));
        worker.setBlurStrength(0.0F);
        worker.frameInput(frame);
        QVERIFY(same(worker.seen, frame));
    }

    void onlyDirectionOneFlips()
    {
        ProbeMode worker;
        worker.load(controller(2, 1));
        passThrough(worker);
        const cv::Mat frame = positionFrame();
        QSignalSpy spy(&worker, &AbsScreenSync::updateColors);
        worker.frameInput(frame);
        QCOMPARE(spy.last().at(0).value<QVector<LV_RGB>>().size(), 2);
        QCOMPARE(firstColor(spy), (LV_RGB{238, 0, 7}));
        for (const uint32_t direction : {0U, 2U, 0xFFFFFFFFU}) {
            worker.onCtlDirChanged(direction);
            worker.frameInput(frame);
            QCOMPARE(firstColor(spy), (LV_RGB{0, 0, 7}));
        }
        QVERIFY(same(frame, positionFrame())); // a shared frame stays as the capture made it
    }

    void unusableFramesAreSkippedAndReportedOnce()
    {
        ProbeMode worker;
        worker.load(controller(1));
        QSignalSpy spy(&worker, &AbsScreenSync::updateColors);
        {
            const LogCatcher log;
            for (int i = 0; i < 3; ++i) {
                worker.frameInput(cv::Mat());
                worker.frameInput(cv::Mat(67, 120, CV_8UC3, cv::Scalar(1, 2, 3)));
                worker.frameInput(cv::Mat(67, 120, CV_32FC4, cv::Scalar(1, 2, 3, 4)));
            }
            QCOMPARE(log.count("[AbsScreenSync]: The frame is skipped"), 1);
        }
        QCOMPARE(spy.count(), 0);
        worker.frameInput(cv::Mat(1, 1, CV_8UC4, cv::Scalar(9, 9, 9, 255)));
        QCOMPARE(firstColor(spy), (LV_RGB{9, 9, 9}));
    }

    void frameTimeIsLoggedAfterNinetyOneFrames()
    {
        ProbeMode worker;
        worker.load(controller(1));
        const cv::Mat frame(2, 2, CV_8UC4, cv::Scalar::all(0));
        const LogCatcher log;
        for (int i = 0; i < 90; ++i)
            worker.frameInput(frame);
        QCOMPARE(log.count("[[loop]][AbsScreenSync]: LVTEST:01 avg frame time:"), 0);
        for (int i = 0; i < 92; ++i)
            worker.frameInput(frame);
        QCOMPARE(log.count("[[loop]][AbsScreenSync]: LVTEST:01 avg frame time:"), 2);
    }

    void framesArePulledByTheTimerAtTheSourcesAspect()
    {
        resetConfig(5);
        FakeDeskDuplManager manager;
        const auto capture = manager.add("A");
        ProbeMode worker;
        worker.DIDeskDuplication(&manager);
        QCOMPARE(worker.load(controller(3)), 0);
        QCOMPARE(capture->output, QSize(120, 67));
        QSignalSpy spy(&worker, &AbsScreenSync::updateColors);
        worker.update(0.1); // nothing captured yet
        QCOMPARE(spy.count(), 0);
        capture->frame = cv::Mat(67, 120, CV_8UC4, cv::Scalar(40, 40, 40, 255));
        QTRY_VERIFY(spy.count() > 2);
        QCOMPARE(firstColor(spy), (LV_RGB{40, 40, 40}));

        capture->source = QSize(1280, 1024);
        worker.setInputSourceIdx("A");
        QCOMPARE(capture->output, QSize(120, 96));
        capture->source = QSize(0, 0);
        worker.setInputSourceIdx("A");
        QCOMPARE(capture->output, QSize(120, 96));
        worker.unload();
        QCOMPARE(manager.held["A"], 0);
    }

    void capturersComeAndGo()
    {
        FakeDeskDuplManager manager;
        manager.add("A");
        manager.add("B");
        ProbeMode worker;
        worker.DIDeskDuplication(nullptr);
        worker.DIDeskDuplication(&manager);
        FakeDeskDuplManager other;
        worker.DIDeskDuplication(&other); // refused
        worker.load(controller(1));
        QCOMPARE(worker.effectProperty("inputSource").toString(), QString("A"));

        worker.setInputSourceIdx("A"); // again: stays bound, held once
        QCOMPARE(manager.held["A"], 1);
        worker.setInputSourceIdx("gone");
        worker.setInputSourceIdx("");
        QCOMPARE(manager.held["A"], 1);
        emit manager.capturerFailed("B"); // not ours
        emit manager.capturerReady("B");  // not needed
        QCOMPARE(manager.held["B"], 0);

        manager.order = {"B"};
        emit manager.capturerFailed("A");
        QCOMPARE(worker.effectProperty("inputSource").toString(), QString("B"));
        QCOMPARE(manager.held["A"], 0);
        manager.order.clear();
        emit manager.capturerFailed("B"); // no default left: the old one stays
        QCOMPARE(manager.held["B"], 1);

        worker.unload();
        emit manager.capturerReady("A"); // unloaded: nobody would give it back
        QCOMPARE(manager.held["A"], 0);
        QCOMPARE(manager.held["B"], 0);
        QCOMPARE(config()->appConfig("runtime.screenSync.sourceIndex.LVTEST:01").toString(), QString("B"));
    }

    void anUnknownSavedCapturerWaitsForOneToAppear()
    {
        config()->setAppConfig("runtime.screenSync.sourceIndex.LVTEST:01", "gone");
        FakeDeskDuplManager manager;
        manager.add("A");
        ProbeMode worker;
        worker.DIDeskDuplication(&manager);
        const LogCatcher log;
        worker.load(controller(1));
        QCOMPARE(log.count("[AbsScreenSync]: Failed to acquire capture : gone"), 1);
        worker.update(0.1);
        emit manager.capturerReady("A");
        QCOMPARE(manager.held["A"], 1);
        QCOMPARE(config()->appConfig("runtime.screenSync.sourceIndex.LVTEST:01").toString(), QString("A"));
        worker.unload();
        QCOMPARE(manager.held["A"], 0);
        QCOMPARE(manager.held["gone"], 0);
    }

    void loadSurvivesWithoutManagerAndWithoutCapturer()
    {
        ProbeMode alone;
        const LogCatcher log;
        QCOMPARE(alone.load(controller(1)), 0);
        QCOMPARE(log.count("[AbsScreenSync]: DeskDuplManager is not injected"), 1);
        alone.setInputSourceIdx("A");
        QVERIFY(alone.findChildren<QTimer*>().isEmpty());
        alone.unload();

        FakeDeskDuplManager empty;
        ProbeMode worker;
        worker.DIDeskDuplication(&empty);
        QCOMPARE(worker.load(controller(1)), 0);
        QCOMPARE(log.count("[AbsScreenSync]: Cannot connect to any capture"), 1);
        QCOMPARE(worker.findChildren<QTimer*>().size(), 1);
        worker.unload();
        QVERIFY(empty.held.isEmpty());
    }

    void propertiesFollowTheProtocol()
    {
        config()->setAppConfig("runtime.isEnableScreenSyncAdvanedMode", true);
        FakeDeskDuplManager manager;
        manager.add("A");
        manager.add("B");
        ProbeMode worker;
        QVERIFY(worker.effectProperty("captures").isNull());
        worker.DIDeskDuplication(&manager);
        worker.load(controller(1));
        config()->setAppConfig("runtime.isEnableScreenSyncAdvanedMode", false); // running workers keep it

        worker.setEffectProperty("",
                                 QJsonObject{{"inputSource", "B"}, {"blur", 0.1}, {"wipeDarkSide", true}});
        const QJsonArray captures{QJsonObject{{"index", "A"}, {"desc", "Monitor A"}},
                                  QJsonObject{{"index", "B"}, {"desc", "Monitor B"}}};
        const QJsonObject expected{{"blur", static_cast<double>(0.1F)},
                                   {"saturation", 1.0},
                                   {"inputSource", "B"},
                                   {"wipeDarkSide", true},
                                   {"enbWipeDarkSizeFunc", false},
                                   {"enbBlurAndSaturationAdjust", true},
                                   {"captures", captures}};
        QCOMPARE(worker.effectProperty("").toObject(), expected);
        QVERIFY(worker.effectProperty("nothing").isNull());
        worker.setEffectProperty("nothing", 1);
        worker.setEffectProperty("captures", 1);
        QCOMPARE(worker.effectProperty("").toObject(), expected);
        QCOMPARE(config()->effectVariant(kEffect, kController, "blurStrength").toDouble(),
                 static_cast<double>(0.1F));
        QCOMPARE(config()->appConfig("runtime.screenSync.autoWipeDarkSide.LVTEST:01"), QJsonValue(true));
        worker.setEffectProperty("saturation", "text");
        QCOMPARE(worker.effectProperty("saturation"), QJsonValue(0.0));
    }

    void settingsSurviveAnUnload()
    {
        {
            ProbeMode worker;
            worker.load(controller(1));
            QCOMPARE(config()->appConfig("screenSyncAutoWipeDarkSide"), QJsonValue(false));
            QCOMPARE(worker.effectProperty("blur"), QJsonValue(0.5));
            worker.setEffectProperty("saturation", -0.25);
            worker.setEffectProperty("wipeDarkSide", true);
            worker.unload();
        }
        ProbeMode forbidden;
        forbidden.load(controller(1));
        QCOMPARE(forbidden.effectProperty("saturation"), QJsonValue(-0.25));
        QCOMPARE(forbidden.effectProperty("wipeDarkSide"), QJsonValue(false));
        config()->setAppConfig("screenSyncAutoWipeDarkSide", true);
        config()->setEffectVariant(kEffect, kController, "blurStrength", "much");
        ProbeMode allowed;
        allowed.load(controller(1));
        QCOMPARE(allowed.effectProperty("wipeDarkSide"), QJsonValue(true));
        QCOMPARE(allowed.effectProperty("blur"), QJsonValue(0.5));
    }

    void screenshotsShowTheUnflippedFrameEveryFiveSeconds()
    {
        QCoreApplication::instance()->setProperty("isScreenshot", true);
        QDir folder(config()->configPath() + "/capturerScreenshot");
        folder.removeRecursively();
        ProbeMode worker;
        QCoreApplication::instance()->setProperty("isScreenshot", QVariant());
        worker.load(controller(1, 1));
        passThrough(worker);
        QElapsedTimer running;
        running.start();
        QStringList files;
        while (files.isEmpty() && !running.hasExpired(20000)) {
            worker.frameInput(positionFrame());
            QTest::qWait(20);
            folder.refresh();
            files = folder.entryList({kEffect + "??_??_??_??_??.png"}, QDir::Files);
        }
        QVERIFY(running.elapsed() >= 4900);
        QVERIFY(QThreadPool::globalInstance()->waitForDone(10000));
        QCOMPARE(files.size(), 1);
        const QImage picture(folder.filePath(files.first()));
        QCOMPARE(picture.size(), QSize(120, 67));
        QCOMPARE(picture.pixelColor(50, 60), QColor(100, 180, 7));
    }
};

QTEST_GUILESS_MAIN(TestFramePipeline)
#include "tst_frame_pipeline.moc"
