#include "ScreenTestKit.h"
#include "effects/screenSync/LedMap.h"
#include "effects/screenSync/ScreenBand.h"
#include "effects/screenSync/subModes/BottomHalfScreen.h"
#include "effects/screenSync/subModes/CinemaScreen.h"
#include "effects/screenSync/subModes/LeftHalfScreen.h"
#include "effects/screenSync/subModes/RightHalfScreen.h"
#include "effects/screenSync/subModes/TopHalfScreen.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>
#include <opencv2/imgproc.hpp>
#include <thread>

using namespace ScreenTestKit;

namespace {

const QString kEffect = QStringLiteral("id.effect.screenSync.fullScreen");
const QString kController = QStringLiteral("LVTEST:01");

QJsonObject led(int id, QJsonValue x, QJsonValue y)
{
    return {{"id", id}, {"x", x}, {"y", y}};
}

QJsonObject storedMap()
{
    return config()->effectJsonValue(kEffect, kController, "map").toObject();
}

template <typename Mode>
std::unique_ptr<AbsScreenSync> loaded(unsigned nbLeds, unsigned direction = 0)
{
    auto worker = std::make_unique<Mode>(effect(kEffect), nullptr);
    worker->load(controller(nbLeds, direction));
    passThrough(*worker);
    return worker;
}

QVector<LV_RGB> colorsOf(AbsScreenSync& worker, const cv::Mat& frame)
{
    QSignalSpy spy(&worker, &AbsScreenSync::updateColors);
    worker.frameInput(frame);
    return spy.isEmpty() ? QVector<LV_RGB>() : spy.last().at(0).value<QVector<LV_RGB>>();
}

} // namespace

class TestScreenModes : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        resetConfig();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("controler_config"));
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }

    // --- half screens ---

    void aHalfScreenReadsTheCentreOfItsBand_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("nbLeds");
        QTest::addColumn<int>("led");
        QTest::addColumn<int>("red");   // 2 * column
        QTest::addColumn<int>("green"); // 3 * row
        QTest::addColumn<int>("redMirrored");
        // The centres: row 6 of 13, row 33 of all 67, column 11.5 of 24, column 24 + 47 of the 95 from 24 to
        // 118.
        QTest::newRow("top, left end") << 0 << 120 << 0 << 0 << 18 << 238;
        QTest::newRow("top, right end") << 0 << 120 << 119 << 238 << 18 << 0;
        QTest::newRow("bottom") << 1 << 120 << 10 << 20 << 99 << 218;
        QTest::newRow("left, lowest") << 2 << 67 << 0 << 23 << 198 << 215;
        QTest::newRow("left, highest") << 2 << 67 << 66 << 23 << 0 << 215;
        QTest::newRow("right, highest") << 3 << 67 << 0 << 142 << 0 << 96;
        QTest::newRow("right, lowest") << 3 << 67 << 66 << 142 << 198 << 96;
    }
    void aHalfScreenReadsTheCentreOfItsBand()
    {
        QFETCH(int, mode);
        QFETCH(int, nbLeds);
        QFETCH(int, led);
        for (const bool mirrored : {false, true}) {
            const auto n = static_cast<unsigned>(nbLeds);
            const std::unique_ptr<AbsScreenSync> worker = mode == 0   ? loaded<TopHalfScreen>(n, mirrored)
                                                          : mode == 1 ? loaded<BottomHalfScreen>(n, mirrored)
                                                          : mode == 2 ? loaded<LeftHalfScreen>(n, mirrored)
                                                                      : loaded<RightHalfScreen>(n, mirrored);
            const QVector<LV_RGB> colors = colorsOf(*worker, positionFrame());
            QCOMPARE(colors.size(), nbLeds);
            if (mirrored)
                QTEST(static_cast<int>(colors[led].red), "redMirrored");
            else
                QTEST(static_cast<int>(colors[led].red), "red");
            QTEST(static_cast<int>(colors[led].green), "green");
            QCOMPARE(static_cast<int>(colors[led].blue), 7);
        }
    }

    void theBottomRespondsToTheWholePicture()
    {
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        frame.rowRange(67 - 13, 67).setTo(cv::Scalar(255, 0, 0, 255));
        const auto worker = loaded<BottomHalfScreen>(30);
        QCOMPARE(colorsOf(*worker, frame), QVector<LV_RGB>(30));
    }

    void frameAndStripMayBeTooSmall()
    {
        const cv::Mat tiny = positionFrame(3, 4);
        const auto top = loaded<TopHalfScreen>(10);
        const auto bottom = loaded<BottomHalfScreen>(10);
        const auto right = loaded<RightHalfScreen>(10);
        const auto none = loaded<LeftHalfScreen>(0);
        const LogCatcher log;
        for (int i = 0; i < 3; ++i)
            QVERIFY(colorsOf(*top, tiny).isEmpty());
        QCOMPARE(log.count("[AbsScreenSync]: The frame is skipped"), 1);
        QCOMPARE(colorsOf(*top, positionFrame()).size(), 10);
        QCOMPARE(colorsOf(*bottom, tiny).size(), 10);
        QCOMPARE(colorsOf(*right, tiny).size(), 10); // the first two of three columns
        QVERIFY(colorsOf(*right, positionFrame(1, 4)).isEmpty());
        QSignalSpy spy(none.get(), &AbsScreenSync::updateColors);
        none->frameInput(positionFrame());
        QCOMPARE(spy.count(), 0);
        QVERIFY_EXCEPTION_THROWN(bandColors(kTopBand, cv::Mat(67, 120, CV_8UC3), 10), cv::Exception);
    }

    // --- the layout as a value ---

    void theDefaultGridFillsTheCanvasRowByRow()
    {
        const LedMap map = LedMap::defaultGrid(8100);
        QCOMPARE(map.screenSize, QSize(120, 67));
        QCOMPARE(map.points[0], QPoint(0, 0));
        QCOMPARE(map.points[121], QPoint(1, 1));
        QCOMPARE(map.points[8099], QPoint(59, 67)); // below the canvas
        QVector<LV_RGB> colors(8100);
        readColors(positionFrame(), map.points, colors);
        QCOMPARE(colors[8099], (LV_RGB{118, 198, 7})); // the nearest pixel
    }

    void aLayoutIsReadKeyByKey()
    {
        LedMap map = LedMap::defaultGrid(5);
        const QJsonArray leds{
            led(0, 9, 9),          led(6, 9, 9),  led(-2147483647 - 1, 9, 9),
            QJsonObject{{"x", 9}}, "odd",         led(5, 49, 29),
            led(1, 50, 7),         led(2, 7, 30), led(3, -1, "2"),
            led(4, 1.5, 8),
        };
        map.apply({{"screenWidth", 50}, {"key_len", 1}, {"key_wid", 30}, {"key_array", leds}});
        QCOMPARE(map.screenSize, QSize(50, 30));
        QCOMPARE(map.points, (QVector<QPoint>{{0, 7}, {7, 0}, {2, 0}, {3, 8}, {49, 29}}));

        LedMap again = LedMap::defaultGrid(5);
        again.apply(map.toConfig());
        QCOMPARE(again.points, map.points);
        QCOMPARE(again.screenSize, map.screenSize);
        again.apply({{"ledMap", "odd"}, {"key_array", QJsonArray{led(1, 1, 1)}}, {"screenHeight", "odd"}});
        QCOMPARE(again.points, map.points);
        QCOMPARE(again.screenSize, map.screenSize);
    }

    // --- the full screen and the cinema ---

    void theFullScreenReadsOnePixelOfTheCanvas()
    {
        const auto worker = loaded<FullScreenMode>(122);
        auto& mode = static_cast<FullScreenMode&>(*worker);
        QSignalSpy snapshots(&mode, &FullScreenMode::frameSnapshot);
        QVector<LV_RGB> colors = colorsOf(mode, positionFrame());
        QCOMPARE(colors[119], (LV_RGB{238, 0, 7}));
        QCOMPARE(colors[121], (LV_RGB{2, 3, 7}));

        mode.setScreenSize(QSize(60, 67)); // every canvas pixel is the mean of two columns
        mode.setLEDPos(0, QPoint(30, 66));
        colors = colorsOf(mode, positionFrame());
        QCOMPARE(colors[0], (LV_RGB{121, 198, 7}));
        QCOMPARE(snapshots.count(), 2);
        const QImage picture = snapshots.last().at(0).value<QImage>();
        QCOMPARE(picture.size(), QSize(60, 67));
        QCOMPARE(picture.pixelColor(30, 66), QColor(121, 198, 7));

        mode.setScreenSize(QSize(0, 67)); // legal, but no canvas to read
        QVERIFY(colorsOf(mode, positionFrame()).isEmpty());
        mode.setScreenSize(QSize(120, 67)); // the columns are lost, the rows are not
        QCOMPARE(colorsOf(mode, positionFrame())[121], (LV_RGB{0, 3, 7}));
    }

    void theCinemaReadsTheCentreOfTheFrame()
    {
        const auto worker = loaded<CinemaScreen>(1);
        auto& mode = static_cast<FullScreenMode&>(*worker);
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        frame(cv::Rect(12, 6, 96, 53)).setTo(cv::Scalar(200, 0, 0, 255));
        for (const QPoint corner : {QPoint(0, 0), QPoint(119, 0), QPoint(0, 66), QPoint(119, 66)}) {
            mode.setLEDPos(0, corner);
            QCOMPARE(colorsOf(mode, frame).value(0), (LV_RGB{200, 0, 0}));
        }
        frame.col(12).setTo(cv::Scalar(0, 0, 200, 255));
        mode.setLEDPos(0, QPoint(0, 30));
        QCOMPARE(colorsOf(mode, frame).value(0), (LV_RGB{0, 0, 200}));
        QVERIFY(colorsOf(mode, positionFrame(1, 1)).isEmpty());
    }

    void editsAreCheckedAndStored()
    {
        const auto worker = loaded<FullScreenMode>(2);
        auto& mode = static_cast<FullScreenMode&>(*worker);
        for (const QSize refused : {QSize(301, 200), QSize(300, 201), QSize(-1, 5), QSize(5, -1)})
            mode.setScreenSize(refused);
        QVERIFY(storedMap().isEmpty());
        mode.setScreenSize(QSize(300, 200));
        QCOMPARE(storedMap()["screenWidth"], QJsonValue(300));
        QCOMPARE(storedMap()["screenHeight"], QJsonValue(200));
        mode.setLEDPos(1, QPoint(299, 199));

        const QJsonObject before = storedMap();
        mode.setLEDPos(0, QPoint(300, 0));
        mode.setLEDPos(0, QPoint(0, 200));
        mode.setLEDPos(0, QPoint(-1, 0));
        mode.setLEDPos(2, QPoint(0, 0));
        mode.setLEDPos(-1, QPoint(0, 0));
        QCOMPARE(storedMap(), before);
        QCOMPARE(before["ledMap"].toArray(), (QJsonArray{led(1, 0, 0), led(2, 299, 199)}));

        mode.setScreenSize(QSize(100, 50)); // to the border, and not back
        mode.setScreenSize(QSize(200, 100));
        QCOMPARE(mode.effectProperty("LEDMap").toArray(), (QJsonArray{led(0, 0, 0), led(1, 99, 49)}));
        mode.setScreenSize(QSize(0, 100));
        QCOMPARE(storedMap()["ledMap"].toArray().at(1).toObject(), led(2, -1, 49));
    }

    void theUsersLayoutOutlivesTheDefaultFile()
    {
        writeDefaultFile(R"({"key_len": 40, "key_wid": 20, "key_array": [{"id": 1, "x": 5, "y": 6}]})");
        {
            const auto worker = loaded<FullScreenMode>(1);
            QCOMPARE(worker->effectProperty("LEDMap").toArray(), QJsonArray{led(0, 5, 6)});
            worker->setEffectProperty("LEDPos", led(0, 39, 19));
            worker->unload();
        }
        const auto worker = loaded<FullScreenMode>(1);
        QCOMPARE(worker->effectProperty("screenSize").toObject(), (QJsonObject{{"w", 40}, {"h", 20}}));
        QCOMPARE(worker->effectProperty("LEDMap").toArray(), QJsonArray{led(0, 39, 19)});
    }

    void aResetRestoresTheDefaultLayout()
    {
        const auto worker = loaded<FullScreenMode>(1);
        worker->setEffectProperty("screenSize", QJsonObject{{"w", 50}, {"h", 50}});
        worker->setEffectProperty("LEDPos", led(0, 8, 9));
        const QJsonObject users = storedMap();
        QSignalSpy changes(worker.get(), &AbsScreenSync::effectPropertyChanged);
        const LogCatcher log;

        worker->setEffectProperty("resetCmd", QJsonValue());
        QCOMPARE(log.count("[FullScreenMode]: Not found default LED configuration file"), 1);
        QCOMPARE(changes.count(), 2);
        QCOMPARE(changes[0].at(0).toString(), QString("screenSize"));
        QCOMPARE(changes[0].at(1).toJsonValue().toObject(), (QJsonObject{{"w", 120}, {"h", 67}}));
        QCOMPARE(changes[1].at(0).toString(), QString("LEDMap"));
        QCOMPARE(changes[1].at(1).toJsonValue().toArray(), QJsonArray{led(0, 0, 0)});

        writeDefaultFile("{ not JSON");
        worker->setEffectProperty("resetCmd", 1);
        QCOMPARE(log.count("[FullScreenMode]: Failed to parser default LED configuration json file"), 1);
        QCOMPARE(changes.count(), 3); // the size stayed
        writeDefaultFile(R"({"key_array": [{"id": 1, "x": 5, "y": 6}]})");
        worker->setEffectProperty("resetCmd", 1);
        QCOMPARE(changes.last().at(1).toJsonValue().toArray(), QJsonArray{led(0, 5, 6)});
        QCOMPARE(storedMap(), users);
    }

    void theFullScreenAddsItsPropertiesToTheBase()
    {
        const auto source = loaded<FullScreenMode>(2, 1);
        source->setEffectProperty("LEDMap", QJsonArray{led(0, 3, 4), led(1, 200, 4), led(7, 1, 1)});
        QSignalSpy turned(static_cast<FullScreenMode*>(source.get()), &FullScreenMode::deviceDirChanged);
        source->onCtlDirChanged(3);
        QCOMPARE(turned.value(0).value(0).toInt(), 3);
        const QJsonObject all = source->effectProperty("").toObject();
        QCOMPARE(all.size(), 4 + 7);
        QCOMPARE(all["deviceDir"], QJsonValue(3));
        QCOMPARE(all["effectObject"].toString().toULongLong(nullptr, 16),
                 static_cast<qulonglong>(reinterpret_cast<quintptr>(source.get())));
        QVERIFY(source->effectProperty("nothing").isNull());

        const auto copy = loaded<FullScreenMode>(2);
        copy->setEffectProperty("", all);
        QCOMPARE(copy->effectProperty("LEDMap").toArray(), (QJsonArray{led(0, 3, 4), led(1, 1, 0)}));
        QCOMPARE(copy->effectProperty("blur"), source->effectProperty("blur"));
        copy->setEffectProperty("", QJsonObject{{"saturation", 0.5}}); // the layout is not named
        QCOMPARE(copy->effectProperty("screenSize"), source->effectProperty("screenSize"));
    }

    void anAbsurdCanvasOfALayoutFileIsNotDrawn()
    {
        writeDefaultFile(R"({"key_len": 2000000, "key_wid": 2000000})");
        const auto worker = loaded<FullScreenMode>(1);
        QVERIFY(colorsOf(*worker, positionFrame()).isEmpty());
        worker->setEffectProperty("screenSize", QJsonObject{{"w", 300}, {"h", 200}});
        QCOMPARE(colorsOf(*worker, positionFrame()).size(), 1);
    }

    void theLayoutMayBeEditedWhileFramesRun()
    {
        const auto worker = loaded<FullScreenMode>(60);
        auto& mode = static_cast<FullScreenMode&>(*worker);
        std::thread editor([&mode] {
            for (int i = 0; i < 120; ++i) {
                mode.setScreenSize(QSize(60 + i, 40 + i % 20));
                mode.setLEDPos(i % 60, QPoint(i % 60, i % 40));
            }
        });
        for (int i = 0; i < 60; ++i)
            QCOMPARE(colorsOf(mode, positionFrame()).size(), 60);
        editor.join();
        QCOMPARE(storedMap()["screenWidth"], QJsonValue(179));
        QCOMPARE(mode.effectProperty("LEDMap").toArray().at(59).toObject(), led(59, 59, 39));
    }

    void allModesCanBeBuiltByTheirMetaObject()
    {
        for (const QMetaObject* meta :
             {&FullScreenMode::staticMetaObject, &CinemaScreen::staticMetaObject,
              &TopHalfScreen::staticMetaObject, &BottomHalfScreen::staticMetaObject,
              &LeftHalfScreen::staticMetaObject, &RightHalfScreen::staticMetaObject}) {
            const std::unique_ptr<QObject> built(
                meta->newInstance(Q_ARG(const EffectWorkerOptions&, effect(kEffect)),
                                  Q_ARG(QObject*, static_cast<QObject*>(nullptr))));
            auto* worker = qobject_cast<AbsScreenSync*>(built.get());
            QVERIFY2(worker, meta->className());
            QCOMPARE(worker->options().id, kEffect);
            QVERIFY(meta->indexOfMethod("DIDeskDuplication(IDeskDuplManager*)") >= 0);
        }
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
