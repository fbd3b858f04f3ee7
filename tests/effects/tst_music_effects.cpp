#include "LogCapture.h"
#include "MusicTestKit.h"
#include "effects/InternalEffectFactory.h"
#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QDir>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QtTest>
#include <cmath>
#include <limits>

using namespace MusicTestKit;

namespace {

const QString kMeters = "id.effect.dynamicMusic.test";
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

QString peakEffect(int variant)
{
    return QStringLiteral("id.effect.dynamicMusic.peakValues_%1").arg(variant);
}

SoundChannel channel(const QVector<QPair<float, float>>& points)
{
    SoundChannel result;
    for (const auto& point : points)
        result.spectrums.append({point.first, 0.0F, point.second});
    return result;
}

SoundChannel tone(float level)
{
    return channel({{50, level}});
}

Fragment meter(int count, int dir = 0)
{
    Fragment fragment;
    fragment.endIndex = count;
    fragment.maxFrequency = 200.0;
    fragment.dir = dir;
    return fragment;
}

QVector<int> litLeds(const Frame& frame)
{
    QVector<int> lit;
    for (int i = 0; i < frame.size(); ++i) {
        if (frame.at(i) != kBlack)
            lit.append(i);
    }
    return lit;
}

void store(const QJsonObject& fragments)
{
    ConfigurationManager::instance()->setEffectJsonValue(kMeters, "LVTEST:01", "fragments", fragments);
}

Frame peakFrame(AudioPeakValues& effect, const QString& peak)
{
    QSignalSpy frames(&effect, &IEffectWorker::updateColors);
    effect.peakValuesChanged({{peak}, {"1.0"}});
    return lastFrame(frames);
}

/// What the peak effect shows for one peak on a strip.
Frame peakFrame(int variant, unsigned nbLeds, const QString& peak)
{
    AudioPeakValues effect(entry(peakEffect(variant)), nullptr);
    effect.load(strip(nbLeds));
    return peakFrame(effect, peak);
}

} // namespace

class TestMusicEffects : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        m_manager = std::make_unique<AudioCapManager>(std::make_unique<FakeAudioBackend>());
        const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        m_ownFile = own + "/controler_config/LVTEST_01.json";
        QVERIFY(QDir().mkpath(own + "/controler_config"));
        QFile::remove(m_ownFile);
    }

    void brokenFragmentsAreDropped_data()
    {
        const char* const band = "The interval between minFrequency and maxFreqnency is at least 10Hz";
        const char* const size = "because endIndex and beginIndex are separated by at least one lamp bead";
        const char* const type = "not a number of the right kind";
        QTest::addColumn<QString>("members");
        QTest::addColumn<QString>("reason");
        QTest::newRow("good") << R"("endIndex": 4, "maxFrequency": 10.1)"
                              << "";
        QTest::newRow("empty") << R"("beginIndex": 4, "endIndex": 4, "maxFrequency": 200)" << size;
        QTest::newRow("narrow") << R"("endIndex": 4, "minFrequency": 50, "maxFrequency": 60.0)" << band;
        QTest::newRow("text") << R"("endIndex": "4", "maxFrequency": 200)" << type;
        QTest::newRow("fraction") << R"("endIndex": 4.5, "maxFrequency": 200)" << type;
        QTest::newRow("huge") << R"("beginIndex": -2147483648, "endIndex": 2147483647, "maxFrequency": 200)"
                              << "no strip has that many";
    }
    void brokenFragmentsAreDropped()
    {
        QFETCH(QString, members);
        QFETCH(QString, reason);
        store(QJsonDocument::fromJson(("{\"odd\": {" + members + "}, \"list\": []}").toUtf8()).object());
        const LogCapture log;
        MusicMode1 effect(entry(kMeters), nullptr);
        effect.load(strip(5));
        effect.unload();
        QCOMPARE(log.count("The configuration odd is illegal"), reason.isEmpty() ? 0 : 1);
        QVERIFY(log.contains(reason) && log.contains("The configuration list is illegal"));
        QCOMPARE(log.contains("The default configuration is generated for LVTEST:01"), !reason.isEmpty());
        QCOMPARE(stored(kMeters, "fragments").toObject().contains("odd"), reason.isEmpty());
    }

    void oddStripHasAMiddle()
    {
        MusicMode1 effect(entry(kMeters), nullptr);
        effect.load(strip(5));
        effect.unload();
        QStringList parts;
        const QJsonObject all = stored(kMeters, "fragments").toObject();
        for (const QString& name : all.keys())
            parts += QString("%1 %2-%3 %4")
                         .arg(name)
                         .arg(all[name]["beginIndex"].toInt())
                         .arg(all[name]["endIndex"].toInt())
                         .arg(all[name]["dir"].toInt());
        QCOMPARE(parts.join(", "), QString("left 0-2 1, mid 2-3 0, right 3-5 0"));
        QCOMPARE(stored(kMeters, "strength").toDouble(), 2.0);
    }

    void meterRisesWithTheLevel()
    {
        QCOMPARE(litLeds(LevelMeter::colors(meter(10), 80.0)).size(), 10);
        QCOMPARE(litLeds(LevelMeter::colors(meter(10), 79.9)).size(), 9);
        QCOMPARE(litLeds(LevelMeter::colors(meter(1), 0.1)).size(), 1);
        QCOMPARE(litLeds(LevelMeter::colors(meter(4), 40.0)), (QVector<int>{0, 1}));
        QCOMPARE(litLeds(LevelMeter::colors(meter(4, 1), 40.0)), (QVector<int>{2, 3}));
        QVERIFY(litLeds(LevelMeter::colors(meter(4, 2), 80.0)).isEmpty());
        QVERIFY(litLeds(LevelMeter::colors(meter(4), std::nan(""))).isEmpty());
        QCOMPARE(litLeds(LevelMeter::colors(meter(4), 1e300)).size(), 4);

        const Frame high = LevelMeter::colors(meter(100), 80.0);
        QCOMPARE(high.first(), (LV_RGB{0, 255, 0}));
        QCOMPARE(high.last(), (LV_RGB{255, 0, 0}));
        const LV_RGB middle = LevelMeter::meterColor(2, 1); // hue (1 - sin(0.5 / 3) * 2.5) / 3: 70.24 degrees
        QVERIFY(qAbs(middle.red - 211.5) < 1.0 && middle.green == 255 && middle.blue == 0);
    }

    void bandTakesItsLoudestPoint()
    {
        const SoundChannel sound = channel({{20, 10}, {60, 30}, {100, 50}, {150, kNoNumber}, {300, 70}});
        QCOMPARE(LevelMeter::bandLevel(sound, 20, 100), 50.0F); // both ends belong to it
        QCOMPARE(LevelMeter::bandLevel(sound, 100, 200), 50.0F);
        QCOMPARE(LevelMeter::bandLevel(sound, 110, 310), 70.0F); // begins with what is no number
        QCOMPARE(LevelMeter::bandLevel(sound, 61, 99), 50.0F);   // none in it: the next one
        QCOMPARE(LevelMeter::bandLevel(sound, 301, 400), 0.0F);
        QCOMPARE(LevelMeter::bandLevel({}, 0, 400), 0.0F);
        QCOMPARE(LevelMeter::heard(meter(4), {channel({{50, kNoNumber}})}), 0.0);
    }

    void fragmentHearsItsChannel()
    {
        Fragment fragment = meter(4);
        const QVector<SoundChannel> both{tone(10), tone(20)};
        fragment.dbEnhance = 5.0;
        fragment.mulEnhance = 2.0;
        QCOMPARE(LevelMeter::heard(fragment, both), 50.0);
        fragment.soundChannel = 1;
        QCOMPARE(LevelMeter::heard(fragment, both), 30.0);
        fragment.soundChannel = 2;
        QCOMPARE(LevelMeter::heard(fragment, both), 50.0);
        QCOMPARE(LevelMeter::heard(fragment, {tone(10)}), 30.0); // one serves for both
        QCOMPARE(LevelMeter::heard(fragment, {}), 0.0);
        fragment.mulEnhance = 9.0;
        QCOMPARE(LevelMeter::heard(fragment, both), 80.0);
    }

    void levelSinksSlowly()
    {
        QList<double> history;
        QCOMPARE(LevelMeter::smooth(history, 80.0), 80.0);
        for (int i = 2; i <= 10; ++i)
            QCOMPARE(LevelMeter::smooth(history, 0.0), 80.0 / i);
        QCOMPARE(LevelMeter::smooth(history, 0.0), 0.0);
        QCOMPARE(LevelMeter::smooth(history, 80.0), 80.0); // up at once
    }

    void pictureHasTheLengthOfTheStrip()
    {
        store({{"one", meter(4).toJson()}});
        MusicMode1 effect(entry(kMeters), nullptr);
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.load(strip(6, 1));
        effect.spectrumUpdate(QVector<SoundChannel>());
        QCOMPARE(frames.count(), 0); // nothing has come
        effect.spectrumUpdate(QVector<SoundChannel>{tone(40), tone(0)});
        QCOMPARE(lastFrame(frames).size(), 6);
        QCOMPARE(litLeds(lastFrame(frames)), (QVector<int>{4, 5})); // mirrored
        effect.onCtlDirChanged(0);
        effect.spectrumUpdate(QVector<SoundChannel>{tone(40)});
        QCOMPARE(litLeds(lastFrame(frames)), (QVector<int>{0, 1}));

        MusicMode1 shorter(entry(kMeters), nullptr);
        QSignalSpy cut(&shorter, &IEffectWorker::updateColors);
        shorter.load(strip(3));
        shorter.spectrumUpdate(QVector<SoundChannel>{tone(80), tone(80)});
        QCOMPARE(litLeds(lastFrame(cut)), (QVector<int>{0, 1, 2}));
    }

    void strengthIsTheGainOfAllFragments()
    {
        Fragment quiet = meter(4);
        quiet.mulEnhance = 0.25;
        store({{"one", quiet.toJson()}});
        MusicMode1 effect(entry(kMeters), nullptr);
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.load(strip(4));
        effect.setEffectProperty("", QJsonObject{{"captureId", "default"}}); // says nothing of the strength
        QCOMPARE(effect.effectProperty("").toObject()["strength"].toDouble(), 2.0);
        effect.setEffectProperty("", QJsonObject{{"strength", 1.0}});
        effect.setEffectProperty("strength", "loud");
        effect.spectrumUpdate(QVector<SoundChannel>{tone(40)});
        QCOMPARE(litLeds(lastFrame(frames)).size(), 2);
        QCOMPARE(stored(kMeters, "strength").toDouble(), 1.0);
        effect.unload();
        QCOMPARE(stored(kMeters, "fragments")["one"]["mulEnhance"].toDouble(), 1.0);
    }

    void entryThatNamesTheMetersIsEnough()
    {
        const InternalEffectFactory factory(nullptr); // registers the classes
        const std::unique_ptr<IEffectWorker> worker(
            InternalEffectFactory::createByTypeName("MusicMode1*", entry(kMeters)));
        QVERIFY(qobject_cast<MusicMode1*>(worker.get()) && worker->options().id == kMeters);
        QVERIFY(QMetaType::type("MMSOptWidget*"));
    }

    void barsGrowFromTheMiddle_data()
    {
        QTest::addColumn<int>("variant");
        QTest::addColumn<QString>("peak");
        QTest::addColumn<QVector<int>>("lit"); // of 20 LEDs in two segments of length 9
        QTest::newRow("half") << 1 << "0.5" << QVector<int>{6, 7, 8, 9, 10, 11, 12, 13};
        QTest::newRow("one colour") << 4 << "0.25" << QVector<int>{8, 9, 10, 11};
        QTest::newRow("full") << 3 << "1"
                              << (QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9} +
                                  QVector<int>{10, 11, 12, 13, 14, 15, 16, 17, 18});
        QTest::newRow("silence") << 2 << "0" << QVector<int>();
        QTest::newRow("no number") << 7 << "nan" << QVector<int>();
        QTest::newRow("endless") << 5 << "inf" << QVector<int>();
    }
    void barsGrowFromTheMiddle()
    {
        QFETCH(int, variant);
        QFETCH(QString, peak);
        const Frame frame = peakFrame(variant, 20, peak);
        QCOMPARE(frame.size(), 20);
        QTEST(litLeds(frame), "lit");
    }

    void paletteIsDimmedByThePeak()
    {
        const Frame loud = peakFrame(1, 20, "1");
        QCOMPARE(loud.at(9), (LV_RGB{41, 255, 217})); // the foot of both bars
        QCOMPARE(loud.at(10), loud.at(9));
        QCOMPARE(loud.at(1), (LV_RGB{251, 34, 176})); // 8/9 of the height: the ninth band
        QCOMPARE(peakFrame(1, 20, "0.5").at(9), (LV_RGB{20, 127, 108}));
        QCOMPARE(peakFrame(1, 20, "0.2").at(9), (LV_RGB{16, 102, 86})); // never below 40 percent

        const PeakBars::Variant rotating = PeakBars::variantOf(5);
        for (int k = 0; k < 10; ++k)
            QCOMPARE(PeakBars::paletteColor(rotating, k, 1003),
                     PeakBars::paletteColor(PeakBars::variantOf(1), (13 - k) % 10, 0));
    }

    void wholeStripWalksThroughColours()
    {
        AudioPeakValues effect(entry(peakEffect(8)), nullptr);
        effect.load(strip(3));
        QCOMPARE(peakFrame(effect, "1"), Frame(3, LV_RGB{5, 0, 0}));
        Frame frame;
        const auto walk = [&](int steps) {
            for (int i = 0; i < steps; ++i)
                frame = peakFrame(effect, "1");
            return frame.first();
        };
        QCOMPARE(walk(101), (LV_RGB{255, 255, 0}));
        QCOMPARE(walk(40), (LV_RGB{255, 255, 200}));
        QCOMPARE(walk(2), (LV_RGB{250, 255, 200})); // one step to turn round
        QCOMPARE(walk(50 + 51 + 10), (LV_RGB{0, 0, 150}));
        QCOMPARE(walk(2), (LV_RGB{5, 0, 150}));
        QCOMPARE(peakFrame(effect, "0.5").first(), (LV_RGB{5, 0, 75}));
        QCOMPARE(peakFrame(effect, "0").first(), kBlack);
    }

    void emptyPeaksAreQuiet()
    {
        AudioPeakValues effect(entry(peakEffect(1)), nullptr);
        effect.load(strip(1));
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.peakValuesChanged({});
        QCOMPARE(frames.count(), 0);
        effect.peakValuesChanged({{}});
        QCOMPARE(lastFrame(frames), Frame(1, kBlack));
        QCOMPARE(peakFrame(1, 0, "1").size(), 0);
    }

    void fileOfTheDeviceSaysWhereTheBarsLie_data()
    {
        QTest::addColumn<QString>("json");
        QTest::addColumn<QString>("warning");
        QTest::addColumn<int>("leds"); // the strip has 10
        QTest::addColumn<QVector<int>>("lit");
        const QVector<int> byDefault{1, 2, 3, 4, 5, 6, 7, 8};
        QTest::newRow("bars")
            << R"({"key_num": 8, "key_music": [{"id": 1, "start": 3, "stop": 5, "direction": 1}]})"
            << "" << 8 << QVector<int>{2, 3};
        QTest::newRow("outside") << R"({"key_music": [{"id": 1, "start": 0, "stop": 5, "direction": 1},
            {"id": 2, "start": 5, "stop": 11, "direction": 0}, {"id": 3, "start": 1, "stop": 2147483647,
            "direction": 0}, {"id": 4, "start": -2147483648, "stop": 2147483647, "direction": 0}]})"
                                 << "The segment 4 is illegal" << 10 << byDefault;
        QTest::newRow("types") << R"({"screenWidth": "x", "key_music": [7, {"id": 1, "start": 1.5, "stop": 5,
            "direction": 1}, {"id": 1, "start": 1e99, "stop": 5, "direction": 1}, {"id": 2, "start": 1, "stop": 3,
            "direction": 0}], "key_array": [[], {"id": 1, "x": "a", "y": 2}]})"
                               << "key_music has illegal elements: 3" << 10 << QVector<int>{1, 2};
        QTest::newRow("huge") << R"({"key_num": 2147483647})"
                              << "key_num is illegal" << 10 << byDefault;
        QTest::newRow("cut") << R"({"key_num": 8,)"
                             << "***QIndependentObject::readJson" << 10 << byDefault;
        QTest::newRow("list") << "[1, 2]"
                              << "***QIndependentObject::readJson not an object" << 10 << byDefault;
        QTest::newRow("deep") << QString(5000, '[') << "***QIndependentObject::readJson" << 10 << byDefault;
    }
    void fileOfTheDeviceSaysWhereTheBarsLie()
    {
        QFETCH(QString, json);
        QFETCH(QString, warning);
        QFile file(m_ownFile);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(json.toUtf8()) > 0);
        file.close();
        const LogCapture log;
        const Frame frame = peakFrame(1, 10, "1");
        QTEST(frame.size(), "leds");
        QTEST(litLeds(frame), "lit");
        QVERIFY(log.contains(warning) && !log.contains("File not exists!"));
    }

    void shippedFilesFitTheirModels()
    {
        QDir::setCurrent(QCoreApplication::applicationDirPath() + "/../bin");
        QFile table("controler_config/LVController.json");
        QVERIFY(table.open(QIODevice::ReadOnly));
        const QJsonObject models = QJsonDocument::fromJson(table.readAll()).object();
        const QStringList files = QDir("effects/dynamicMusic").entryList({"*.json"});
        QVERIFY(files.contains("LV0N03.json"));
        for (const QString& name : files) {
            ConfigurationManager::instance()->reset();
            const LogCapture log;
            ControlOptions device = strip(static_cast<unsigned>(models[name.left(6)]["nbLeds"].toInt()));
            device.model = name.left(6);
            MusicMode1 effect(entry(kMeters), nullptr);
            effect.load(device);
            effect.unload();
            QVERIFY2(!log.contains("illegal") && !log.contains("No configuration"), qPrintable(name));
            int leds = 0;
            const QJsonObject fragments = stored(kMeters, "fragments").toObject();
            for (const QJsonValue& fragment : fragments)
                leds += fragment["endIndex"].toInt() - fragment["beginIndex"].toInt();
            QCOMPARE(leds, static_cast<int>(device.nbLeds));
        }
    }

private:
    std::unique_ptr<AudioCapManager> m_manager;
    QString m_ownFile;
};

QTEST_MAIN(TestMusicEffects)
#include "tst_music_effects.moc"
