#include "FakeController.h"
#include "LogCapture.h"
#include "controllers/VTController.h"
#include "controllers/VTControllerEnumerator.h"
#include "support/config/ConfigurationManager.h"

#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

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
        const float nan = std::numeric_limits<float>::quiet_NaN();
        RecordingController controller;
        for (const auto& [brightness, gama, raw, out] :
             {std::tuple<float, float, uint8_t, uint8_t>(0.5F, 2.0F, 255, 63), // gamma on top of brightness
              {0.7F, 1.0F, 10, 7},                                             // in single precision
              {nan, 1.0F, 200, 0},
              {0.0F, -1.0F, 200, 0}}) {
            controller.record().brightness = brightness;
            controller.record().gama = gama;
            controller.update({{raw, 0, 0}, {0, raw, 0}, {0, 0, raw}});
            QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{out, 0, 0}, {0, out, 0}, {0, 0, out}}));
        }
    }

    void aSwitchedOffDeviceGetsBlackOfItsLength()
    {
        RecordingController controller;
        controller.setNbLeds(3);
        controller.setEnable(false);
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.update({{9, 9, 9}});
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(3));
        controller.setEnable(true);
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{9, 9, 9}}));
    }

    void aDeviceThatIsKeptDarkGetsOneBlackPictureAndThenNothing()
    {
        RecordingController controller;
        RecordingController other;
        controller.setNbLeds(3);
        controller.setDark(true);
        controller.setDark(true);
        controller.update({{8, 8, 8}});
        controller.setEnable(false);
        controller.setEnable(true);
        controller.setBrightness(0.5F);
        QTRY_VERIFY_WITH_TIMEOUT(other.written.size() >= 2, 20000); // which is repainted meanwhile
        QCOMPARE(controller.written, (QVector<QVector<LV_RGB>>{QVector<LV_RGB>(3)}));
        controller.setNbLeds(4); // as far as it reaches now
        QCOMPARE(controller.written.last(), QVector<LV_RGB>(4));
        controller.setDark(false);
        QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{4, 4, 4}}));
        QTRY_VERIFY_WITH_TIMEOUT(controller.written.size() > 3, 20000);
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
        }
        auto& object = ConfigurationManager::instance()->controllerJsonObj("LV0127:AB");
        object["kindName"] = "ttyUSB0";
        object["enable"] = false;
        RecordingController controller;
        QVERIFY(controller.loadConfig());
        QCOMPARE(controller.options().kindName, "LV0127"); // a port name is no name
        QVERIFY(controller.options().brightness == 0.0F && !controller.options().enable);
        QCOMPARE(controller.options().nbLeds, 7U);
    }

    void whatIsNoUsableNumberDoesNotDarkenTheStrip()
    {
        auto* config = ConfigurationManager::instance();
        auto& object = config->controllerJsonObj("LV0127:AB");
        for (const QJsonValue& bad : {QJsonValue("nan"), QJsonValue(), QJsonValue(-1), QJsonValue(1e300)}) {
            const LogCapture log;
            object = {{"brightness", bad}, {"nbLeds", bad}};
            config->setAppConfig("runtime.gama", bad);
            RecordingController controller;
            controller.record().nbLeds = 120; // of the model
            QVERIFY(controller.loadConfig() && controller.loadConfig());
            QVERIFY(controller.options().brightness == 0.8F && controller.options().gama == 1.0F);
            QCOMPARE(controller.options().nbLeds, 120U);
            // One line for each setting, however often it is read; null in the settings is none.
            QCOMPARE(log.count("does not count"), bad.isNull() ? 2 : 3);
            // What the user wrote stays until the user chooses something else.
            controller.saveConfig();
            QVERIFY(object.value("brightness") == bad && object.value("nbLeds") == bad);
            controller.setNbLeds(7);
            QCOMPARE(object.value("nbLeds").toInt(), 7);
        }
        config->setAppConfig("runtime.gama", 100.0); // would be black
        QCOMPARE(RecordingController().options().gama, 1.0F);
    }

    void theGammaOfTheSettingsIsFollowed()
    {
        auto* config = ConfigurationManager::instance();
        RecordingController controller;
        config->setAppConfig("runtime.gama", 2.0);
        QTRY_COMPARE(controller.options().gama, 2.0F);
        QVERIFY(controller.written.isEmpty()); // waits for the next run
        controller.setGama(1.2F);
        QCOMPARE(controller.written.size(), 1);
        QCOMPARE(config->appConfig("runtime.gama"), QJsonValue(2.0));
    }

    void threeVirtualDevicesComeAndOneSends()
    {
        QUdpSocket listener;
        QVERIFY(listener.bind(QHostAddress::LocalHost, 65330));
        ConfigurationManager::instance()->setAppConfig("runtime.gama", 2.0);
        QList<AbsRGBControllerPtr> devices;
        VTControllerEnumerator enumerator;
        connect(&enumerator, &IDeviceEnumerator::deviceEnabled, this,
                [&](const AbsRGBControllerPtr& device) { devices.append(device); });
        QTRY_COMPARE(devices.size(), 3);
        for (const auto& device : qAsConst(devices))
            QCOMPARE(device->options().gama, 2.0F); // as every device
        QCOMPARE(devices.at(2)->options().id, "LV0N03:0987654321");
        QVERIFY(devices.at(2)->options().nbLeds == 253U && devices.at(2)->options().brightness == 0.6F);

        // Each has its own colour, so that a datagram tells whose it is.
        for (int i = 0; i < devices.size(); ++i)
            devices.at(i)->writeColors({{static_cast<uint8_t>(i), 7, 255}, {1, 2, 3}});
        QTRY_VERIFY(listener.hasPendingDatagrams());
        QCOMPARE(listener.receiveDatagram().data().toHex(),
                 QByteArray("0207ff010203")); // not padded to the LED count
        QVERIFY(!listener.hasPendingDatagrams());
    }
};

QTEST_GUILESS_MAIN(ColourPipelineTest)
#include "tst_colour_pipeline.moc"
