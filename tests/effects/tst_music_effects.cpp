#include "MusicTestKit.h"
#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QtTest>
#include <limits>

using namespace MusicTestKit;

namespace {

using Leds = QVector<int>;
using Meters = Running<MusicMode1>;
using Sound = QVector<SoundChannel>;

const QString kMeters = "id.effect.dynamicMusic.test";
constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();

SoundChannel tone(float level)
{
    return {{{50, 0, level}}};
}

Fragment meter(int count, int dir = 0)
{
    Fragment fragment;
    fragment.endIndex = count;
    fragment.maxFrequency = 200.0;
    fragment.dir = dir;
    return fragment;
}

/// What a peak effect shows on a strip.
struct Peaks : Running<AudioPeakValues>
{
    Peaks(int variant, unsigned nbLeds)
        : Running(QString("id.effect.dynamicMusic.peakValues_%1").arg(variant), strip(nbLeds))
    {
    }
    Frame at(const QString& peak)
    {
        peakValuesChanged({{peak}, {"1.0"}});
        return last();
    }
};

} // namespace

class TestMusicEffects : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        m_manager = std::make_unique<AudioCapManager>(std::make_unique<FakeAudioBackend>());
    }

    void halvesFollowTheLengthOfTheStrip()
    {
        for (const unsigned nbLeds : {1U, 9U}) { // an unknown strip is taken for one of 1 LED at first
            Meters effect(kMeters, strip(nbLeds));
            if (nbLeds == 1)
                effect.setStrength(0.5);
            effect.spectrumUpdate(Sound{tone(79)}); // 1 is added
            QCOMPARE(lit(effect.last()), nbLeds == 1 ? Leds{0} : (Leds{2, 3, 4, 5, 6}));
            effect.unload();
        }
        QCOMPARE(stored(kMeters, "fragments")["left"]["mulEnhance"].toDouble(), 0.5);
    }

    void meterRisesWithTheLevel()
    {
        QCOMPARE(lit(LevelMeter::colors(meter(10), 79.9)).size(), 9);
        QCOMPARE(lit(LevelMeter::colors(meter(4), 40.0)), (Leds{0, 1}));
        QCOMPARE(lit(LevelMeter::colors(meter(4, 1), 40.0)), (Leds{2, 3}));
        QCOMPARE(lit(LevelMeter::colors(meter(4, 2), 80.0)), Leds());
        const Frame high = LevelMeter::colors(meter(100), 80.0);
        QCOMPARE(high.first(), (LV_RGB{0, 255, 0}));
        QCOMPARE(high.last(), (LV_RGB{255, 0, 0}));
    }

    void fragmentHearsTheLoudestPointOfItsBand()
    {
        const SoundChannel all{{{20, 0, 10}, {100, 0, 50}, {150, 0, kNoNumber}, {300, 0, 70}}};
        QCOMPARE(LevelMeter::bandLevel(all, 20, 100), 50.0F);  // both ends belong to it
        QCOMPARE(LevelMeter::bandLevel(all, 110, 310), 70.0F); // begins with what is no number
        QCOMPARE(LevelMeter::bandLevel(all, 61, 99), 50.0F);   // none in it: the next one
        QCOMPARE(LevelMeter::heard(meter(4), {tone(kNoNumber)}), 0.0);

        Fragment fragment = meter(4);
        fragment.dbEnhance = 5.0;
        fragment.mulEnhance = 2.0;
        QCOMPARE(LevelMeter::heard(fragment, {tone(10), tone(20)}), 50.0);
        fragment.soundChannel = 2;
        QCOMPARE(LevelMeter::heard(fragment, {tone(10)}), 30.0); // one serves for both
        QCOMPARE(LevelMeter::heard(fragment, {tone(10), tone(70)}), 80.0);

        QList<double> history; // the level sinks slowly
        QCOMPARE(LevelMeter::smooth(history, 80.0), 80.0);
        for (int i = 2; i <= 10; ++i)
            QCOMPARE(LevelMeter::smooth(history, 0.0), 80.0 / i);
        QCOMPARE(LevelMeter::smooth(history, 0.0), 0.0);
    }

    void fragmentsLieByTheirFirstLedAndBrokenOnesAreDropped()
    {
        const auto from = [](int begin, int count, int soundChannel) {
            Fragment fragment = meter(begin + count);
            fragment.beginIndex = begin;
            fragment.soundChannel = soundChannel;
            return fragment.toJson();
        };
        // Of two that begin together the name decides.
        QJsonObject fragments{
            {"a", from(10, 3, 1)}, {"b", from(2, 2, 2)}, {"d", from(-1, 1, 2)}, {"c", from(-1, 1, 1)}};
        const QList<QPair<const char*, double>> broken{
            {"maxFrequency", 10.0}, {"endIndex", 2}, {"beginIndex", 2.5}, {"beginIndex", -2147483648.0}};
        for (const auto& [key, value] : broken) {
            QJsonObject odd = from(2, 2, 1);
            odd[key] = value;
            fragments[QString("odd %1").arg(value)] = odd;
        }
        ConfigurationManager::instance()->setEffectJsonValue(kMeters, "LVTEST:01", "fragments", fragments);
        Meters effect(kMeters, strip(8, 1));
        effect.spectrumUpdate(Sound());
        QCOMPARE(effect.frames.count(), 0); // nothing has come
        effect.spectrumUpdate(Sound{tone(80), tone(0)});
        QVERIFY(effect.last().size() == 8 && lit(effect.last()) == (Leds{1, 2, 3, 7})); // mirrored
        effect.onCtlDirChanged(0);
        effect.spectrumUpdate(Sound{tone(80), tone(0)});
        QCOMPARE(lit(effect.last()), (Leds{0, 4, 5, 6}));
        effect.unload();
        QCOMPARE(stored(kMeters, "fragments").toObject().keys(), (QStringList{"a", "b", "c", "d"}));
    }

    void barsGrowFromTheMiddleAndAreDimmedByThePeak()
    {
        // 20 LEDs in two segments of length 9
        QCOMPARE(lit(Peaks(1, 20).at("0.5")), (Leds{6, 7, 8, 9, 10, 11, 12, 13}));
        const Frame loud = Peaks(1, 20).at("1");
        QVERIFY(lit(loud).first() == 1 && lit(loud).last() == 18);
        QCOMPARE(loud.at(9), (LV_RGB{41, 255, 217}));                  // the foot
        QCOMPARE(loud.at(1), (LV_RGB{251, 34, 176}));                  // 8/9 of the height: the ninth band
        QCOMPARE(Peaks(1, 20).at("0.2").at(9), (LV_RGB{16, 102, 86})); // never below 40 percent
        QCOMPARE(Peaks(5, 20).at("inf"), Frame(20, kBlack));
        QCOMPARE(Peaks(1, 0).at("1"), Frame());

        Peaks effect(1, 1);
        effect.peakValuesChanged({});
        effect.peakValuesChanged({{}});
        QCOMPARE(effect.last(), Frame(1, kBlack));
    }

    void wholeStripWalksThroughColours()
    {
        Peaks effect(8, 3);
        QCOMPARE(effect.at("1"), Frame(3, LV_RGB{5, 0, 0}));
        for (int step = 0; step < 50 + 51 + 40 + 2; ++step) // two steps beyond the end of red
            effect.at("1");
        QCOMPARE(effect.last(), Frame(3, LV_RGB{250, 255, 200}));
        for (int step = 0; step < 50 + 51 + 10 + 2; ++step)
            effect.at("1");
        QCOMPARE(effect.at("0.5").first(), (LV_RGB{5, 0, 75}));
    }

    void fileOfTheDeviceSaysWhereTheBarsLie()
    {
        const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QVERIFY(QDir().mkpath(own + "/controler_config"));
        QFile file(own + "/controler_config/LVTEST_01.json");
        const auto frame = [&file](const QByteArray& json) {
            const bool written = file.open(QIODevice::WriteOnly) && file.write(json) > 0;
            file.close();
            return written ? Peaks(1, 10).at("1") : Frame();
        };
        const auto tidy = qScopeGuard([&file] { file.remove(); });
        const Frame eight =
            frame(R"({"key_num": 8, "key_music": [{"id": 1, "start": 3, "stop": 5, "direction": 1}]})");
        QVERIFY(eight.size() == 8 && lit(eight) == (Leds{2, 3}));
        QCOMPARE(lit(frame(R"({"key_num": 2147483647, "key_array": [[], {"id": 1, "x": 1e99, "y": 2}],
            "key_music": [7, {"id": 1, "start": 1.5, "stop": 5, "direction": 1},
            {"id": 2, "start": -4, "stop": 0, "direction": 0}, {"id": 3, "start": 1, "stop": 3, "direction": 0},
            {"id": 4, "start": -2147483648, "stop": 2147483647, "direction": 0}]})")),
                 (Leds{1, 2}));
        QCOMPARE(lit(frame(R"({"key_music": [{"id": 1, "start": 8, "stop": 11, "direction": 1},
            {"id": 2, "start": -1, "stop": 2, "direction": 0}]})")),
                 (Leds{0, 1, 7, 8, 9})); // what lies on the strip
        for (const QByteArray& useless :
             {QByteArray(R"({"key_music": [{"id": 1, "start": 11, "stop": 13, "direction": 1}]})"),
              QByteArray(5000, '[')})
            QCOMPARE(lit(frame(useless)), (Leds{1, 2, 3, 4, 5, 6, 7, 8}));
    }

private:
    std::unique_ptr<AudioCapManager> m_manager;
};

QTEST_MAIN(TestMusicEffects)
#include "tst_music_effects.moc"
