#include "LogCapture.h"
#include "controllers/AbsRGBController.h"
#include "support/config/ConfigurationManager.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

class RecordingController : public AbsRGBController
{
public:
    RecordingController()
    {
        m_options.model = "LV0127";
        m_options.serial = "AB";
        m_options.id = m_options.storeKey();
        m_options.portName = "ttyUSB0";
        m_options.brightness = 1.0F;
    }
    void writeColors(const QVector<LV_RGB>& colors) override { written.append(colors); }
    void rebuildHeader() override { ++headers; }
    ControlOptions& record() { return m_options; }

    QVector<QVector<LV_RGB>> written;
    int headers = 0;
};

} // namespace

class ColourPipelineTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void oneByteGoesThroughBrightnessThenGamma_data()
    {
        QTest::addColumn<float>("brightness");
        QTest::addColumn<float>("gama");
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("expected");
        QTest::newRow("half of white is cut") << 0.5F << 1.0F << 255 << 127;
        QTest::newRow("gamma on top of brightness") << 0.5F << 2.0F << 255 << 63;
        QTest::newRow("gamma below one lifts the darks") << 1.0F << 0.5F << 16 << 64;
        QTest::newRow("single precision: 0.7 of 10 is 7") << 0.7F << 1.0F << 10 << 7;
        QTest::newRow("above one wraps as a byte does") << 2.0F << 1.0F << 200 << 144;
        const float nan = std::numeric_limits<float>::quiet_NaN();
        QTest::newRow("no number") << nan << 1.0F << 200 << 0;
        QTest::newRow("infinite power") << 0.0F << -1.0F << 200 << 0;
    }
    void oneByteGoesThroughBrightnessThenGamma()
    {
        QFETCH(float, brightness);
        QFETCH(float, gama);
        QFETCH(int, raw);
        QFETCH(int, expected);
        RecordingController controller;
        controller.record().brightness = brightness;
        controller.record().gama = gama;
        const auto byte = static_cast<uint8_t>(raw);
        controller.update({{byte, 0, 0}, {0, byte, 0}, {0, 0, byte}});
        const auto out = static_cast<uint8_t>(expected);
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{out, 0, 0}, {0, out, 0}, {0, 0, out}}));
    }

    void aSwitchedOffDeviceGetsBlackOfItsLength()
    {
        RecordingController controller;
        controller.setNbLeds(3);
        QSignalSpy changed(&controller, &AbsRGBController::enableChanged);
        controller.update({{1, 2, 3}});
        controller.setEnable(false);
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.update({{9, 9, 9}});
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.setEnable(true);
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{9, 9, 9}}));
        QCOMPARE(changed.count(), 2);
    }

    void anIdleDeviceIsRepaintedAndThePaceIsReported()
    {
        LogCapture log;
        RecordingController controller;
        controller.update({{1, 2, 3}});
        QTRY_VERIFY_WITH_TIMEOUT(log.contains("[[loop]][Controller]LV0127:AB, Avg update interval: "), 20000);
        QVERIFY(controller.written.size() >= 4);
        // The timer may come a little early, and that is no refresh worth a line.
        const QString line = "The automatic refresh of the controller is triggered";
        QTRY_COMPARE_WITH_TIMEOUT(log.count(line), 3, 60000);
        const int shown = controller.written.size();
        QTRY_VERIFY_WITH_TIMEOUT(controller.written.size() >= shown + 5, 20000);
        QCOMPARE(log.count(line), 3); // no news any more
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{1, 2, 3}}));
    }

    void settersSaveAndTellOnlyChanges()
    {
        RecordingController controller;
        QSignalSpy brightness(&controller, &AbsRGBController::brightnessChanged);
        controller.setBrightness(1.0F);
        QVERIFY(brightness.isEmpty() && controller.written.isEmpty());
        controller.setBrightness(0.25F);
        QVERIFY(brightness.count() == 1 && controller.written.size() == 1);
        controller.setNbLeds(7);
        controller.setNbLeds(7);
        QCOMPARE(controller.headers, 1);
        const QJsonObject object = ConfigurationManager::instance()->controllerJsonObj("LV0127:AB");
        QCOMPARE(object.value("brightness").toDouble(), 0.25);
        QCOMPARE(object.value("nbLeds").toInt(), 7);
        QCOMPARE(object.size(), 10);
    }

    void settingsComeBackFromTheStore()
    {
        auto& object = ConfigurationManager::instance()->controllerJsonObj("LV0127:AB");
        object = {{"kindName", "ttyUSB0"}, {"brightness", 0.0}, {"nbLeds", -5}};
        RecordingController controller;
        QVERIFY(controller.loadConfig());
        QCOMPARE(controller.options().kindName, "LV0127"); // a port name is no name
        QCOMPARE(controller.options().brightness, 0.0F);
        QCOMPARE(controller.options().nbLeds, 0U); // and no device has minus five LEDs
        object = {{"enable", false}};
        QVERIFY(controller.loadConfig());
        QCOMPARE(controller.options().brightness, 0.8F);
        QVERIFY(!controller.options().enable);
    }

    void whatIsNoUsableNumberDoesNotDarkenTheStrip()
    {
        auto* config = ConfigurationManager::instance();
        auto& object = config->controllerJsonObj("LV0127:AB");
        for (const QJsonValue& bad : {QJsonValue("nan"), QJsonValue(), QJsonValue(QJsonObject()),
                                      QJsonValue(-1), QJsonValue(1e300), QJsonValue(true)}) {
            const LogCapture log;
            object = {{"brightness", bad}, {"nbLeds", bad}};
            config->setAppConfig("runtime.gama", bad);
            RecordingController controller;
            controller.record().nbLeds = 120; // of the model
            for (int again = 0; again < 2; ++again)
                QVERIFY(controller.loadConfig());
            QCOMPARE(controller.options().brightness, 0.8F);
            QCOMPARE(controller.options().nbLeds, 120U);
            QCOMPARE(controller.options().gama, 1.0F);
            for (const char* name : {"brightness LV0127:AB", "nbLeds LV0127:AB"})
                QCOMPARE(log.count(QString("The stored %1 does not count").arg(name)), 1);
            QCOMPARE(log.count("The stored runtime.gama does not count"), bad.isNull() ? 0 : 1); // none
            // What the user wrote stays until the user chooses something else.
            controller.saveConfig();
            QCOMPARE(object.value("brightness"), bad);
            QCOMPARE(object.value("nbLeds"), bad);
            controller.setBrightness(0.5F);
            controller.setNbLeds(7);
            QCOMPARE(object.value("brightness").toDouble(), 0.5);
            QCOMPARE(object.value("nbLeds").toInt(), 7);
        }
        for (double gama : {0.0, 100.0}) { // both would be black
            config->setAppConfig("runtime.gama", gama);
            QCOMPARE(RecordingController().options().gama, 1.0F);
        }
        object = {{"nbLeds", 3.5}};
        RecordingController controller;
        controller.record().nbLeds = 120;
        QVERIFY(controller.loadConfig());
        QCOMPARE(controller.options().nbLeds, 120U);
    }

    void theGammaOfTheSettingsIsFollowed()
    {
        auto* config = ConfigurationManager::instance();
        config->setAppConfig("runtime.gama", 1.5);
        RecordingController controller;
        QCOMPARE(controller.options().gama, 1.5F);
        config->setAppConfig("runtime.gama", 2.0);
        QTRY_COMPARE(controller.options().gama, 2.0F);
        QVERIFY(controller.written.isEmpty()); // waits for the next run
    }
};

QTEST_GUILESS_MAIN(ColourPipelineTest)
#include "tst_colour_pipeline.moc"
