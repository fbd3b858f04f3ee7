#include "ScreenTestKit.h"
#include "effects/screenSync/FrameFilters.h"
#include "effects/screenSync/LedMap.h"
#include "effects/screenSync/subModes/CinemaScreen.h"
#include "effects/screenSync/subModes/HalfScreens.h"

#include <QtTest>
#include <opencv2/core.hpp>

using namespace ScreenTestKit;

namespace {

QJsonObject led(int id, QJsonValue x, QJsonValue y)
{
    return {{"id", id}, {"x", x}, {"y", y}};
}

QJsonObject storedMap()
{
    return config()->effectJsonValue(kEffect, kController, "map").toObject();
}

/// Has all of a frame blurred.
template <typename Mode>
class WholeOf : public Mode
{
public:
    using Mode::Mode;

protected:
    std::vector<cv::Rect> lookedAt(const cv::Size&) override { return {}; }
};

/// What both make of noise, for any blur, direction and size.
template <typename Mode>
void compareWithWhole(const std::function<void(AbsScreenSync&)>& prepare = [](AbsScreenSync&) {})
{
    for (unsigned direction : {0U, 1U}) {
        const auto mode = loaded<Mode>(40, direction);
        const auto whole = loaded<WholeOf<Mode>>(40, direction);
        prepare(*mode);
        prepare(*whole);
        for (const cv::Size size : {cv::Size(120, 67), cv::Size(120, 213), cv::Size(17, 11)}) {
            cv::Mat frame(size, CV_8UC4);
            cv::randu(frame, 0, 256);
            for (float blur : {0.0F, 0.5F, 1.0F}) {
                mode->setBlurStrength(blur);
                whole->setBlurStrength(blur);
                const QVector<LV_RGB> colors = colorsOf(*mode, frame);
                QCOMPARE(colors.size(), 40);
                QCOMPARE(colors, colorsOf(*whole, frame));
            }
        }
    }
}

QJsonArray layoutOf(AbsScreenSync& worker)
{
    return worker.effectProperty("LEDMap").toArray();
}

} // namespace

class TestScreenModes : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        config()->reset();
        config()->setAppConfig("devUpdateInterval", 8000);
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("controler_config"));
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }

    void aHalfScreenReadsTheCentreOfItsBand()
    {
        // The centres: row 6 of 13, row 33 of 67, column 11.5 of 24, column 24 + 47 of the 95 from 24 on.
        const cv::Mat frame = positionFrame();
        QCOMPARE(colorsOf(*loaded<TopHalfScreen>(120), frame)[119], (LV_RGB{238, 18, 7}));
        QCOMPARE(colorsOf(*loaded<BottomHalfScreen>(120), frame)[10], (LV_RGB{20, 99, 7}));
        QCOMPARE(colorsOf(*loaded<LeftHalfScreen>(67), frame)[0], (LV_RGB{23, 198, 7})); // the lowest
        QCOMPARE(colorsOf(*loaded<RightHalfScreen>(67), frame)[0], (LV_RGB{142, 0, 7})); // the highest
        QCOMPARE(colorsOf(*loaded<RightHalfScreen>(67, 1), frame)[0], (LV_RGB{96, 0, 7}));
        // Frames and strips may be too small.
        QCOMPARE(colorsOf(*loaded<BottomHalfScreen>(10), positionFrame(3, 4)).size(), 10);
        QVERIFY(colorsOf(*loaded<RightHalfScreen>(10), positionFrame(1, 4)).isEmpty());
        QVERIFY(colorsOf(*loaded<LeftHalfScreen>(0), frame).isEmpty());
    }

    void onlyWhatIsLookedAtNeedsABlur()
    {
        compareWithWhole<TopHalfScreen>();
        compareWithWhole<BottomHalfScreen>();
        compareWithWhole<LeftHalfScreen>();
        compareWithWhole<RightHalfScreen>();
        for (const QSize canvas : {QSize(120, 67), QSize(240, 134), QSize(60, 33), QSize(157, 200)}) {
            const auto scatter = [canvas](AbsScreenSync& worker) {
                auto& mode = static_cast<FullScreenMode&>(worker);
                mode.setScreenSize(canvas);
                for (int i = 0; i < 40; ++i) // corners and edges first
                    mode.setLEDPos(i, {i < 2 ? i * (canvas.width() - 1) : i * 53 % canvas.width(),
                                       i < 20 ? i % 2 * (canvas.height() - 1) : i * 31 % canvas.height()});
            };
            compareWithWhole<FullScreenMode>(scatter);
            compareWithWhole<CinemaScreen>(scatter);
        }
    }

    void whoeverWatchesSeesAllOfTheFrameBlurred()
    {
        const auto mode = loaded<FullScreenMode>(2);
        mode->setBlurStrength(0.5F);
        cv::Mat frame(67, 120, CV_8UC4);
        cv::randu(frame, 0, 256);
        const QVector<LV_RGB> unwatched = colorsOf(*mode, frame);
        QSignalSpy snapshots(mode.get(), &FullScreenMode::frameSnapshot);
        QCOMPARE(colorsOf(*mode, frame), unwatched);
        const cv::Mat blurred = FrameFilters::blur(frame, 0.5);
        const QImage expected(blurred.data, 120, 67, int(blurred.step), QImage::Format_RGBA8888);
        QCOMPARE(snapshots.size(), 1);
        QCOMPARE(snapshots[0][0].value<QImage>(), expected);
    }

    void whoBeginsToWatchAStillScreenNeedNotWait()
    {
        config()->setAppConfig("screenSync.frameIntervalMs", 20);
        FakeDeskDuplManager manager;
        const auto capture = manager.captures["A"];
        capture->tellsOfChange = true;
        capture->become(positionFrame());
        const auto mode = loaded<FullScreenMode>(2, 0, &manager);
        config()->setAppConfig("screenSync.frameIntervalMs", QJsonValue::Null);
        QTRY_COMPARE(capture->periods.value(capture->periods.size() - 1), 1000); // it rests
        capture->periods.clear();
        QSignalSpy snapshots(mode.get(), &FullScreenMode::frameSnapshot);
        QTRY_COMPARE(snapshots.size(), 1);
        QCOMPARE(capture->periods.value(0), 20); // no mere look
    }

    void whatShowsNoPictureIsDarkAndSaysWhy()
    {
        const auto mode = loaded<FullScreenMode>(10);
        colorsOf(*mode, positionFrame());
        QSignalSpy shown(mode.get(), &AbsScreenSync::updateColors);
        mode->setScreenSize(QSize(0, 67));
        mode->frameInput(positionFrame());
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(shown.first().at(0).value<QVector<LV_RGB>>(), QVector<LV_RGB>(10, {0, 0, 0}));
        QVERIFY(mode->effectProperty("notice") != QJsonValue(""));
        mode->setScreenSize(QSize(120, 67));
        colorsOf(*mode, positionFrame());
        QCOMPARE(mode->effectProperty("notice"), QJsonValue(""));
    }

    void aLayoutIsReadKeyByKey()
    {
        LedMap map = LedMap::defaultGrid(5);
        const QJsonArray leds{led(0, 9, 9),  led(6, 9, 9),    led(-2147483647 - 1, 9, 9),
                              "odd",         led(5, 49, 29),  led(1, 50, 7),
                              led(2, 7, 30), led(3, -1, "2"), led(4, 1.5, 8)};
        map.apply({{"screenWidth", 50}, {"key_len", 1}, {"key_wid", 30}, {"key_array", leds}});
        QCOMPARE(map.screenSize, QSize(50, 30));
        QCOMPARE(map.points, (QVector<QPoint>{{0, 7}, {7, 0}, {2, 0}, {3, 8}, {49, 29}}));

        map.apply({{"ledMap", "odd"}, {"key_array", QJsonArray{led(1, 1, 1)}}, {"screenHeight", "odd"}});
        QCOMPARE(map.points.at(0), QPoint(0, 7));
        QCOMPARE(map.screenSize, QSize(50, 30));
    }

    void theFullScreenReadsOnePixelOfTheCanvas()
    {
        // Row by row; what lies below the canvas reads the nearest pixel.
        QCOMPARE(colorsOf(*loaded<FullScreenMode>(8100), positionFrame())[8099], (LV_RGB{118, 198, 7}));
        const auto mode = loaded<FullScreenMode>(122);
        QCOMPARE(colorsOf(*mode, positionFrame())[121], (LV_RGB{2, 3, 7}));
        mode->setScreenSize(QSize(60, 67)); // every canvas pixel is the mean of two columns
        mode->setLEDPos(0, QPoint(30, 66));
        QCOMPARE(colorsOf(*mode, positionFrame())[0], (LV_RGB{121, 198, 7}));
    }

    void theCinemaReadsTheCentreOfTheFrame()
    {
        const auto mode = loaded<CinemaScreen>(1);
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        frame(cv::Rect(12, 6, 96, 53)).setTo(cv::Scalar(200, 0, 0, 255));
        for (const QPoint corner : {QPoint(0, 0), QPoint(119, 66)}) {
            mode->setLEDPos(0, corner);
            QCOMPARE(colorsOf(*mode, frame).value(0), (LV_RGB{200, 0, 0}));
        }
        frame.col(12).setTo(cv::Scalar(0, 0, 200, 255));
        mode->setLEDPos(0, QPoint(0, 30));
        QCOMPARE(colorsOf(*mode, frame).value(0), (LV_RGB{0, 0, 200}));
        QVERIFY(colorsOf(*mode, positionFrame(1, 1)).isEmpty());
    }

    void editsAreCheckedAndStored()
    {
        const auto mode = loaded<FullScreenMode>(2);
        for (const QSize refused : {QSize(301, 200), QSize(300, 201), QSize(-1, 5)})
            mode->setScreenSize(refused);
        QVERIFY(storedMap().isEmpty());
        mode->setScreenSize(QSize(300, 200));
        mode->setEffectProperty("LEDPos", led(1, 299, 199));
        for (const QPoint refused : {QPoint(300, 0), QPoint(0, 200), QPoint(-1, 0)})
            mode->setLEDPos(0, refused);
        mode->setLEDPos(2, QPoint(0, 0));
        mode->setLEDPos(-1, QPoint(0, 0));
        const QJsonArray leds{led(1, 0, 0), led(2, 299, 199)};
        QCOMPARE(storedMap(), (QJsonObject{{"screenWidth", 300}, {"screenHeight", 200}, {"ledMap", leds}}));

        mode->setScreenSize(QSize(100, 50)); // to the border, and not back
        mode->setScreenSize(QSize(200, 100));
        QCOMPARE(layoutOf(*mode), (QJsonArray{led(0, 0, 0), led(1, 99, 49)}));
        mode->setEffectProperty("LEDMap",
                                QJsonArray{led(0, 7, 8), led(1, 9, 9), led(2, 1, 1)}); // one too many
        QCOMPARE(storedMap()["ledMap"].toArray(), (QJsonArray{led(1, 7, 8), led(2, 9, 9)}));
    }

    void theUsersLayoutOutlivesTheDefaultFileUntilAReset()
    {
        writeDefaultFile(R"({"key_len": 40, "key_wid": 20, "key_array": [{"id": 1, "x": 5, "y": 6}]})");
        const auto first = loaded<FullScreenMode>(1);
        QCOMPARE(layoutOf(*first), QJsonArray{led(0, 5, 6)});
        first->setLEDPos(0, QPoint(39, 19));
        first->unload();
        const auto worker = loaded<FullScreenMode>(1);
        QCOMPARE(layoutOf(*worker), QJsonArray{led(0, 39, 19)});
        const QJsonObject users = storedMap();
        QSignalSpy changes(worker.get(), &AbsScreenSync::effectPropertyChanged);
        worker->setEffectProperty("resetCmd", QJsonValue());
        QCOMPARE(changes.count(), 1); // the size stayed
        QCOMPARE(changes.takeFirst(), (QVariantList{"LEDMap", QJsonValue(QJsonArray{led(0, 5, 6)})}));

        writeDefaultFile("{ not JSON");
        worker->setEffectProperty("resetCmd", 1);
        const QJsonObject gridSize{{"w", 120}, {"h", 67}};
        QCOMPARE(changes.takeFirst(), (QVariantList{"screenSize", QJsonValue(gridSize)}));
        QCOMPARE(changes.takeFirst(), (QVariantList{"LEDMap", QJsonValue(QJsonArray{led(0, 0, 0)})}));
        QCOMPARE(storedMap(), users);
    }

    void aStripThatGrowsAgainFindsItsLayout()
    {
        writeDefaultFile(R"({"key_len": 200, "key_wid": 100, "key_array":
            [{"id": 1, "x": 10, "y": 1}, {"id": 2, "x": 20, "y": 2}, {"id": 3, "x": 199, "y": 3}]})");
        loaded<FullScreenMode>(1)->unload();
        QCOMPARE(layoutOf(*loaded<FullScreenMode>(3)),
                 (QJsonArray{led(0, 10, 1), led(1, 20, 2), led(2, 199, 3)})); // never set by the user

        loaded<FullScreenMode>(2)->setLEDPos(1, QPoint(55, 5));
        const auto shorter = loaded<FullScreenMode>(1);
        shorter->setScreenSize(QSize(100, 100));
        shorter->unload();
        const auto longer = loaded<FullScreenMode>(3);
        QCOMPARE(layoutOf(*longer), (QJsonArray{led(0, 10, 1), led(1, 55, 5), led(2, 99, 3)}));
        QCOMPARE(storedMap()["ledMap"].toArray().size(), 2);

        const auto reset = loaded<FullScreenMode>(1);
        reset->setEffectProperty("resetCmd", QJsonValue());
        reset->unload(); // the default is what the user wants now, for all LEDs
        QCOMPARE(layoutOf(*loaded<FullScreenMode>(2)), (QJsonArray{led(0, 10, 1), led(1, 20, 2)}));
    }

    void aCanvasOutsideTheLimitsIsCutToThem()
    {
        const LogCapture log;
        writeDefaultFile(R"({"key_len": 400, "key_wid": -5, "key_array": [{"id": 1, "x": 70000, "y": 6}]})");
        const auto mode = loaded<FullScreenMode>(1);
        QCOMPARE(mode->effectProperty("screenSize"), QJsonValue(QJsonObject{{"w", 300}, {"h", 0}}));
        QCOMPARE(log.count("[FullScreenMode]: The canvas"), 1);
        writeDefaultFile(R"({"key_len": 400, "key_wid": 200, "key_array": [{"id": 1, "x": 399, "y": 199}]})");
        mode->setEffectProperty("resetCmd", QJsonValue());
        QCOMPARE(colorsOf(*mode, positionFrame()).value(0), (LV_RGB{238, 198, 7}));
    }

private:
    void writeDefaultFile(const QByteArray& content)
    {
        QFile file("controler_config/LVTEST.json");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestScreenModes)
#include "tst_screen_modes.moc"
