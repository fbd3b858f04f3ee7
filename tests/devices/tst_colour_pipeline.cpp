#include "FakeController.h"
#include "LogCapture.h"
#include "controllers/VTController.h"
#include "controllers/VTControllerEnumerator.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonDocument>
#include <QJsonObject>
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

    void oneByteGoesThroughBrightnessThenGamma()
    {
        RecordingController controller;
        for (const float brightness :
             {0.0F, 0.05F, 0.5F, 0.7F, 1.0F, std::numeric_limits<float>::quiet_NaN()})
            for (const float gama : {0.5F, 1.0F, 1.3F, 2.0F, 5.0F})
                for (int raw = 0; raw < 256; ++raw) {
                    const float scaled = std::fmax(float(raw) * brightness, 0.0F); // no number is black
                    const auto out = uint8_t(std::pow(uint8_t(scaled) / 256.0, double(gama)) * 256.0);
                    controller.record().brightness = brightness;
                    controller.record().gama = gama;
                    controller.update({{0, uint8_t(raw), 0}});
                    QCOMPARE(controller.written.last(), (QVector<LV_RGB>{{0, out, 0}}));
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
        const auto sum = [](const QVector<LV_RGB>& all) {
            const auto* first = reinterpret_cast<const uint8_t*>(all.constData());
            return std::accumulate(first, first + 3 * all.size(), 0);
        };
        for (int turn = 0; turn < 2000; ++turn) {
            const int leds = random.bounded(1, 300);
            QVector<LV_RGB> picture(leds, {255, 255, 255});
            auto* bytes = reinterpret_cast<uint8_t*>(picture.data());
            random.generate(bytes + 3, bytes + 3 * leds);
            ColorCorrection correction{Pipeline(turn % 2), 1, 1, 1, random.bounded(20), 0, 10 + turn % 91};
            pipeline.prepare(0.9F, 1.0F, correction);
            const QVector<LV_RGB> free = pipeline.apply(picture, leds);
            correction.powerLimitMa = random.bounded(1, 20 * leds + 1);
            pipeline.prepare(0.9F, 1.0F, correction);
            const QVector<LV_RGB> held = pipeline.apply(picture, leds);
            const int budget = std::max(0, correction.powerLimitMa - leds) * 765 / correction.ledMilliAmps;
            QVERIFY(sum(held) <= budget && sum(held) >= std::min(sum(free), budget - 3 * leds));
            const double factor = double(held[0].red) / free[0].red;
            for (int i = 0; i < leds; ++i) // rounded down
                QVERIFY(std::abs(held[i].red - factor * free[i].red) <= 2 &&
                        std::abs(held[i].blue - factor * free[i].blue) <= 2);
        }
    }

    void correctedLightIsShownAtOnceAndOffIsBlack()
    {
        RecordingController controller;
        const QSignalSpy told(&controller, &AbsRGBController::powerLimitedChanged);
        controller.setNbLeds(4);
        controller.update({{0, 0, 0}, {4, 2, 0}, {9, 10, 0}});
        controller.setCorrection({Pipeline::Classic, 1.0, 1.0, 0.5, 10, 100});
        // As much white light for all three, tinted; the end that the effect leaves out stays black.
        QCOMPARE(controller.sentColors(), (QVector<LV_RGB>{{10, 10, 5}, {10, 8, 3}, {9, 10, 0}, {}}));
        controller.showWhite(true);
        QVERIFY(controller.isPowerLimited() && controller.sentColors() == QVector<LV_RGB>(4, {133, 133, 66}));
        controller.setEnable(false);
        controller.update({{4, 2, 0}});
        QVERIFY(!controller.isPowerLimited() && controller.written.last() == QVector<LV_RGB>(4));
        controller.setEnable(true);
        controller.showWhite(false);
        QVERIFY(controller.isPowerLimited()); // the page's notice does not flicker
        QCOMPARE(controller.sentColors(), (QVector<LV_RGB>{{10, 8, 3}, {}, {}, {}}));
        QTRY_VERIFY_WITH_TIMEOUT(!controller.isPowerLimited(), 20000);
        QCOMPARE(told.size(), 4);
        controller.setBrightness(0.0F);
        QCOMPARE(controller.sentColors(), QVector<LV_RGB>(4));
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
        QCOMPARE(controller.sentColors(), QVector<LV_RGB>(4));
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
        QVERIFY(!object.contains("whiteRed") && !object.contains("colorPipeline")); // nobody chose
        for (const ColorCorrection& choice :
             {ColorCorrection{Pipeline::Linear, 0.1, 0.2, 0.3, 4, 5000, 60}, ColorCorrection()}) {
            auto* config = ConfigurationManager::instance();
            config->save();
            controller.setCorrection(choice);
            const auto stored = [config] {
                QFile file(config->configPath() + "/controllers.json");
                const bool isOpen = file.open(QIODevice::ReadOnly);
                return QJsonDocument::fromJson(isOpen ? file.readAll() : QByteArray())["LV0127:AB"];
            };
            QTRY_COMPARE(stored()["powerLimitMa"].toInt(-1), choice.powerLimitMa);
            RecordingController again;
            QVERIFY(again.loadConfig() && again.correction() == choice);
        }
    }

    void whatIsNoUsableNumberDoesNotDarkenTheStrip()
    {
        auto* config = ConfigurationManager::instance();
        auto& object = config->controllerJsonObj("LV0127:AB");
        for (const QJsonValue& bad : {QJsonValue("nan"), QJsonValue(), QJsonValue(-1), QJsonValue(1e300)}) {
            const LogCapture log;
            object = {{"brightness", bad}, {"nbLeds", bad}, {"minLight", bad}, {"colorPipeline", bad}};
            config->setAppConfig("runtime.gama", bad);
            RecordingController controller;
            controller.record().nbLeds = 120; // of the model
            QVERIFY(controller.loadConfig() && controller.loadConfig());
            QVERIFY(controller.options().brightness == 0.8F && controller.options().gama == 1.0F);
            QCOMPARE(controller.options().nbLeds, 120U);
            QVERIFY(controller.correction() == ColorCorrection());
            // One line for each number, however often it is read; null in the settings is none.
            QCOMPARE(log.count("does not count"), bad.isNull() ? 5 : 6);
            // What the user wrote stays until the user chooses something else.
            controller.saveConfig();
            controller.setCorrection({Pipeline::Linear});
            QVERIFY(object.value("brightness") == bad && object.value("nbLeds") == bad);
            QVERIFY(object.value("minLight") == bad && object.value("colorPipeline") == "linear");
            QVERIFY(!object.contains("whiteRed")); // nor is what nobody touched a choice
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
