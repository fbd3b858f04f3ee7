#include "FakeController.h"
#include "LogCapture.h"
#include "support/config/ConfigurationManager.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

class RecordingController : public FakeController
{
public:
    RecordingController()
        : FakeController("LV0127:AB", 0)
    {
        m_options.portName = "ttyUSB0";
    }
    void writeColors(const QVector<LV_RGB>& colors) override { written.append(colors); }
    ControlOptions& record() { return m_options; }

    QVector<QVector<LV_RGB>> written;
};

} // namespace

class ColourPipelineTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void oneByteGoesThroughBrightnessThenGamma()
    {
        struct Row
        {
            float brightness, gama;
            uint8_t raw, out;
        };
        const float nan = std::numeric_limits<float>::quiet_NaN();
        RecordingController controller;
        for (const Row& row : {Row{0.5F, 2.0F, 255, 63}, // gamma on top of brightness
                               Row{0.7F, 1.0F, 10, 7},   // in single precision
                               Row{nan, 1.0F, 200, 0}, Row{0.0F, -1.0F, 200, 0}}) {
            controller.record().brightness = row.brightness;
            controller.record().gama = row.gama;
            controller.update({{row.raw, 0, 0}, {0, row.raw, 0}, {0, 0, row.raw}});
            QCOMPARE(controller.written.last(),
                     (QVector<LV_RGB>{{row.out, 0, 0}, {0, row.out, 0}, {0, 0, row.out}}));
        }
    }

    void aSwitchedOffDeviceGetsBlackOfItsLength()
    {
        RecordingController controller;
        controller.setNbLeds(3);
        controller.update({{1, 2, 3}});
        controller.setEnable(false);
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.update({{9, 9, 9}});
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.setEnable(true);
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{9, 9, 9}}));
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

    void settingsComeBackFromTheStore()
    {
        {
            RecordingController controller;
            controller.setBrightness(1.0F);
            QVERIFY(controller.written.isEmpty()); // it was so before
            controller.setBrightness(0.0F);
            QCOMPARE(controller.written.size(), 1);
            controller.setNbLeds(7);
            controller.setNbLeds(7);
            QCOMPARE(controller.counts.size(), 1);
        }
        auto& object = ConfigurationManager::instance()->controllerJsonObj("LV0127:AB");
        object["kindName"] = "ttyUSB0";
        RecordingController controller;
        QVERIFY(controller.loadConfig());
        QCOMPARE(controller.options().kindName, "LV0127"); // a port name is no name
        QCOMPARE(controller.options().brightness, 0.0F);
        QCOMPARE(controller.options().nbLeds, 7U);
        object = {{"enable", false}};
        QVERIFY(controller.loadConfig());
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
            QVERIFY(controller.loadConfig() && controller.loadConfig());
            QCOMPARE(controller.options().brightness, 0.8F);
            QCOMPARE(controller.options().nbLeds, 120U);
            QCOMPARE(controller.options().gama, 1.0F);
            // One line for each setting, however often it is read; null in the settings is none.
            QCOMPARE(log.count("does not count"), bad.isNull() ? 2 : 3);
            // What the user wrote stays until the user chooses something else.
            controller.saveConfig();
            QCOMPARE(object.value("brightness"), bad);
            QCOMPARE(object.value("nbLeds"), bad);
            controller.setNbLeds(7);
            QCOMPARE(object.value("nbLeds").toInt(), 7);
        }
        for (double gama : {0.0, 100.0}) { // both would be black
            config->setAppConfig("runtime.gama", gama);
            QCOMPARE(RecordingController().options().gama, 1.0F);
        }
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
        controller.setGama(1.2F);
        QCOMPARE(controller.written.size(), 1);
        QCOMPARE(config->appConfig("runtime.gama"), QJsonValue(2.0));
    }
};

QTEST_GUILESS_MAIN(ColourPipelineTest)
#include "tst_colour_pipeline.moc"
