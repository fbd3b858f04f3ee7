#include "FakeController.h"
#include "LogCapture.h"
#include "controllers/VTController.h"
#include "controllers/VTControllerEnumerator.h"
#include "support/config/ConfigurationManager.h"

#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

#include <QRandomGenerator>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

using Pipeline = ColorCorrection::Pipeline;

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

    void withoutCorrectionEveryByteIsAsItWas()
    {
        ColorPipeline pipeline;
        for (const float brightness : {0.05F, 0.3F, 0.8F, 1.0F})
            for (const float gama : {0.5F, 1.0F, 1.3F, 5.0F})
                for (int raw = 0; raw < 256; ++raw) {
                    const double dimmed = static_cast<uint8_t>(static_cast<float>(raw) * brightness);
                    const auto out = static_cast<uint8_t>(std::pow(dimmed / 256, double(gama)) * 256);
                    pipeline.prepare(brightness, gama, {});
                    QCOMPARE(pipeline.apply({{0, uint8_t(raw), 0}}, 1).first(), (LV_RGB{0, out, 0}));
                }
    }

    void theLinearPipelineKeepsLevelsWhereItIsDim()
    {
        ColorPipeline pipeline;
        for (const auto& [brightness, gama, firstLit, most] :
             {std::tuple(0.05F, 1.0F, 59, 13), {0.2F, 1.0F, 32, 51}, {1.0F, 1 / 2.2F, 1, 255}}) {
            pipeline.prepare(brightness, gama, {Pipeline::Linear, 1.0, 0.5});
            QSet<int> levels;
            for (int raw = 0; raw < 256; ++raw) {
                const LV_RGB led = pipeline.apply({{uint8_t(raw), uint8_t(raw), 0}}, 1).first();
                QVERIFY((led.red > 0) == (raw >= firstLit) && std::abs(led.red - 2 * led.green) <= 1);
                levels += led.red;
            }
            QVERIFY(levels.size() == most + 1 && levels.contains(most));
        }
    }

    void thePowerLimitIsNeverPassedAndKeepsTheHue()
    {
        QRandomGenerator random(7);
        ColorPipeline pipeline;
        const auto bytesOf = [&](const QVector<LV_RGB>& picture, const ColorCorrection& correction) {
            pipeline.prepare(0.9F, 1.0F, correction);
            const auto out = pipeline.apply(picture, picture.size());
            const auto* first = reinterpret_cast<const uint8_t*>(out.constData());
            return std::vector<int>(first, first + 3 * out.size());
        };
        for (int turn = 0; turn < 2000; ++turn) {
            QVector<LV_RGB> picture(random.bounded(1, 300));
            for (LV_RGB& led : picture)
                led = {uint8_t(random.bounded(256)), uint8_t(random.bounded(256)), 0};
            picture[0] = {255, 255, 255};
            ColorCorrection correction{Pipeline(turn % 2), 1, 1, 1, random.bounded(20), 0, 10 + turn % 91};
            const std::vector<int> free = bytesOf(picture, correction);
            correction.powerLimitMa = random.bounded(1, 20 * picture.size() + 1);
            const std::vector<int> held = bytesOf(picture, correction);
            const int budget =
                std::max(0, correction.powerLimitMa - picture.size()) * 765 / correction.ledMilliAmps;
            const int wanted = std::accumulate(free.begin(), free.end(), 0);
            const int given = std::accumulate(held.begin(), held.end(), 0);
            QCOMPARE(pipeline.isLimited(), wanted > budget);
            QVERIFY(given <= budget && given >= std::min(wanted, budget - int(held.size())));
            for (std::size_t i = 0; i < held.size() && pipeline.isLimited(); ++i) // one factor, rounded down
                QVERIFY(held[i] <= (free[i] + 0.5) * (held[0] + 1) / (free[0] - 0.5) &&
                        held[i] >= (free[i] - 0.5) * held[0] / (free[0] + 0.5) - 1);
        }
    }

    void whatTheUserCorrectsIsShownAtOnceAndNeverInTheDark()
    {
        RecordingController controller;
        const QSignalSpy told(&controller, &AbsRGBController::powerLimitedChanged);
        controller.setNbLeds(4);
        controller.update({{0, 0, 0}, {4, 2, 0}, {9, 10, 0}});
        controller.setCorrection({Pipeline::Classic, 1.0, 1.0, 0.5, 10, 100});
        // As much white light for all three, tinted; the end that the effect leaves out stays black.
        const QVector<LV_RGB> lit{{10, 10, 5}, {10, 8, 3}, {9, 10, 0}, {}};
        QCOMPARE(controller.sentColors(), lit);
        controller.showWhite(true);
        QVERIFY(controller.isPowerLimited() && controller.sentColors() == QVector<LV_RGB>(4, {133, 133, 66}));
        controller.setEnable(false);
        controller.update({{4, 2, 0}});
        QVERIFY(!controller.isPowerLimited() && controller.sentColors() == QVector<LV_RGB>(4));
        controller.setEnable(true);
        QVERIFY(controller.isPowerLimited());
        controller.showWhite(false);
        QVERIFY(controller.isPowerLimited()); // the page's notice does not flicker
        QCOMPARE(controller.sentColors(), (QVector<LV_RGB>{{10, 8, 3}, {}, {}, {}}));
        QTRY_VERIFY_WITH_TIMEOUT(!controller.isPowerLimited(), 20000);
        QCOMPARE(told.size(), 4);
        controller.setDark(true);
        QCOMPARE(controller.sentColors(), QVector<LV_RGB>(4));
    }

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
