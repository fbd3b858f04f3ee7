#include "FakeStrapList.h"
#include "MusicTestKit.h"
#include "effects/colorful/strapColors.h"
#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/Mode2/MusicMode2.h"
#include "effects/dynamicMusic/Mode3/MusicMode3.h"
#include "effects/dynamicMusic/Mode4/MusicMode4.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QtTest>

using namespace MusicTestKit;

namespace {

using Leds = QVector<int>;
using Meters = Running<MusicMode1>;
using Blocks = Running<MusicMode3>;
using Bands = Running<MusicMode4>;
using Sound = QVector<SoundChannel>;

const QString kEffect = "id.effect.dynamicMusic.test";
const LV_RGB kQuiet{0, 0, 255};

SoundChannel tone(float level)
{
    return {{{50, 0, level}}};
}

Fragment meter(int end, int dir = 0, int begin = 0, int soundChannel = 0)
{
    Fragment fragment;
    fragment.beginIndex = begin;
    fragment.endIndex = end;
    fragment.soundChannel = soundChannel;
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

/// What a level looks like.
LV_RGB shade(double level)
{
    return gradientColors({{0, Qt::blue}, {1, Qt::red}}, 300).at(qMin(299, int(300 * level / 80)));
}

/// A running mood with its gradients.
struct Mood : Watched<MusicMode2>
{
    explicit Mood(IColorStrapManager* straps)
        : Watched(kEffect)
    {
        DIColorStrapManager(straps);
        load(strip(20));
    }
    void hear(const Sound& sound)
    {
        AudioCapManager* manager = AudioCapManager::instance();
        emit manager->acquireCapturer("default")->spectrumsChanged(sound);
        manager->releaseCapturer("default");
        QCoreApplication::sendPostedEvents(this);
    }
    /// Of the first LED in the next picture.
    LV_RGB shown()
    {
        frames.clear();
        return frames.wait() ? last().first() : LV_RGB();
    }
};

ColorStrap plain(const QColor& color)
{
    return {"plain", {{0.5, color}}, color};
}

/// The same in all bands.
Sound hum(float level)
{
    const SoundChannel channel{{{50, 0, level}, {5000, 0, level}}};
    return {channel, channel};
}

/// What an effect shows of one sound, with a direction that is not taken over.
template <typename Effect>
Frame shown(unsigned nbLeds, const Sound& sound)
{
    Effect effect(kEffect, strip(nbLeds, 1));
    effect.spectrumUpdate(sound);
    return effect.last();
}

} // namespace

class TestMusicEffects : public MusicTest
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        ConfigurationManager::instance()->setAppConfig("devUpdateInterval", 10);
        setSources({kSpeaker});
    }

    void halvesFollowTheLengthOfTheStrip()
    {
        for (const unsigned nbLeds : {1U, 9U}) { // an unknown strip is taken for one of 1 LED at first
            Meters effect(kEffect, strip(nbLeds));
            effect.setStrength(0.5);
            effect.spectrumUpdate(Sound{tone(79)}); // 1 is added
            QCOMPARE(lit(effect.last()), nbLeds == 1 ? Leds{0} : (Leds{2, 3, 4, 5, 6}));
            effect.unload();
        }
        QCOMPARE(stored(kEffect, "fragments")["left"]["mulEnhance"].toDouble(), 0.5);
    }

    void meterRisesWithTheLoudestPointOfItsBand()
    {
        QCOMPARE(lit(LevelMeter::colors(meter(4), 40.0)), (Leds{0, 1}));
        QCOMPARE(lit(LevelMeter::colors(meter(4, 1), 40.0)), (Leds{2, 3}));
        QCOMPARE(lit(LevelMeter::colors(meter(4, 2), 80.0)), Leds());
        const Frame high = LevelMeter::colors(meter(100), 80.0);
        QVERIFY(high.first() == (LV_RGB{0, 255, 0}) && high.last() == (LV_RGB{255, 0, 0}));

        const SoundChannel all{{{20, 0, 10}, {100, 0, 50}, {150, 0, float(qQNaN())}, {300, 0, 70}}};
        QCOMPARE(LevelMeter::bandLevel(all, 20, 100), 50.0F);  // both ends belong to it
        QCOMPARE(LevelMeter::bandLevel(all, 110, 310), 70.0F); // begins with what is no number
        QCOMPARE(LevelMeter::bandLevel(all, 61, 99), 50.0F);   // none in it: the next one
        QCOMPARE(LevelMeter::heard(meter(4), {tone(float(qQNaN()))}), 0.0);

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
        // Of two that begin together the name decides.
        QJsonObject fragments{{"a", meter(13, 0, 10, 1).toJson()},
                              {"b", meter(4, 0, 2, 2).toJson()},
                              {"d", meter(0, 0, -1, 2).toJson()},
                              {"c", meter(0, 0, -1, 1).toJson()}};
        for (const auto& [key, value] : {std::pair("maxFrequency", 10.0),
                                         {"endIndex", 2.0},
                                         {"beginIndex", 2.5},
                                         {"beginIndex", -2147483648.0}}) {
            QJsonObject odd = meter(4, 0, 2, 1).toJson();
            odd[key] = value;
            fragments[QString("odd %1").arg(value)] = odd;
        }
        ConfigurationManager::instance()->setEffectJsonValue(kEffect, "LVTEST:01", "fragments", fragments);
        Meters effect(kEffect, strip(8, 1));
        effect.frames.clear();
        effect.spectrumUpdate(Sound());
        QCOMPARE(effect.frames.count(), 0); // nothing has come
        effect.spectrumUpdate(Sound{tone(80), tone(0)});
        QVERIFY(effect.last().size() == 8 && lit(effect.last()) == (Leds{1, 2, 3, 7})); // mirrored
        effect.onCtlDirChanged(0);
        effect.spectrumUpdate(Sound{tone(80), tone(0)});
        QCOMPARE(lit(effect.last()), (Leds{0, 4, 5, 6}));
        effect.unload();
        QCOMPARE(stored(kEffect, "fragments").toObject().keys(), (QStringList{"a", "b", "c", "d"}));
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

        Peaks effect(8, 3); // the whole strip in one colour after the other
        QCOMPARE(effect.at("1"), Frame(3, LV_RGB{5, 0, 0}));
        for (int step = 0; step < 50 + 51 + 40 + 2; ++step) // two steps beyond the end of red
            effect.at("1");
        QCOMPARE(effect.last(), Frame(3, LV_RGB{250, 255, 200}));
    }

    void fileOfTheDeviceSaysWhereTheBarsLie()
    {
        const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QVERIFY(QDir().mkpath(own + "/controler_config"));
        const auto frame = [path = own + "/controler_config/LVTEST_01.json"](const QByteArray& json) {
            QFile file(path);
            const bool written = file.open(QIODevice::WriteOnly) && file.write(json) > 0 && file.flush();
            const Frame shown = written ? Peaks(1, 10).at("1") : Frame();
            return file.remove() ? shown : Frame();
        };
        const Frame eight = frame(R"({"key_num": 8, "key_music": [{"id": 1, "start": 6, "stop": 11,
            "direction": 1}, {"id": 2, "start": -1, "stop": 2, "direction": 0}]})");
        QVERIFY(eight.size() == 8 && lit(eight) == (Leds{0, 1, 5, 6, 7})); // what lies on the strip
        QCOMPARE(lit(frame(R"({"key_num": 2147483647, "key_array": [[], {"id": 1, "x": 1e99, "y": 2}],
            "key_music": [7, {"id": 1, "start": 1.5, "stop": 5, "direction": 1},
            {"id": 2, "start": -4, "stop": 0, "direction": 0}, {"id": 3, "start": 1, "stop": 3, "direction": 0},
            {"id": 4, "start": -2147483648, "stop": 2147483647, "direction": 0}]})")),
                 (Leds{1, 2}));
        QCOMPARE(lit(frame(QByteArray(5000, '['))), (Leds{1, 2, 3, 4, 5, 6, 7, 8})); // of no use
    }

    void moodBreathesWithTheSound()
    {
        FakeStrapList straps({plain(QColor(200, 105, 9))});
        Mood effect(&straps);
        QCOMPARE(effect.shown(), (LV_RGB{20, 10, 0})); // before anything is heard
        effect.hear(Sound{{{{100, 0, 20}, {17000, 0, 80}}}, {{{15000, 0, 60}}}});
        QCOMPARE(effect.shown(), (LV_RGB{150, 78, 6})); // the louder side
        effect.setEffectProperty("strength", 0.505);
        effect.setEffectProperty("strength", "loud");
        effect.hear(hum(80));
        QCOMPARE(effect.shown(), (LV_RGB{101, 53, 4}));
        QCOMPARE(Mood(&straps).effectProperty("strength").toDouble(), 0.505);
        m_backend->offer({});
        QTRY_COMPARE(effect.shown(), kBlack);
        QCOMPARE(effect.shown(), kBlack); // and not for one picture only
    }

    void moodAndSoundAreOneSetOfProperties()
    {
        FakeStrapList straps({plain(Qt::white), {"ramp", {{0.999, Qt::white}}, Qt::black}});
        Mood effect(&straps);
        QCOMPARE(effect.effectProperty(EffectProperties::kLook).toObject().keys(),
                 (QStringList{"currentStrap", "range", "speed", "strength"}));
        effect.setEffectProperty("", QJsonObject{{"captureId", "tape"}, {"currentStrap", 1}, {"speed", 0.1}});
        QCOMPARE(stored(kEffect, "audioSource"), QJsonValue("tape"));
        effect.hear(hum(80));
        const int before = effect.shown().red;
        QTRY_VERIFY(effect.shown().red > before); // up the ramp
        effect.unload();
        QCOMPARE(stored(kEffect, "strapConfigs")["speed"].toDouble(), 0.1);
        effect.frames.clear();
        QVERIFY(!effect.frames.wait(100));
    }

    void peakFallsStraightAndInProportion()
    {
        PeakDecayFilter filter;
        const qint64 now = Q_INT64_C(1) << 40;
        QCOMPARE(filter.filter(qQNaN(), now), 0.0);
        QCOMPARE(filter.filter(1e9, now), 80.0);
        QCOMPARE(filter.filter(30.0, now + 125), 60.0); // held, and no new peak
        QCOMPARE(filter.filter(41.0, now + 250), 41.0); // one
        QCOMPARE(filter.filter(-3.0, now + 507), 0.0);
    }

    void levelTakesItsColourFromTheGradient()
    {
        QCOMPARE(shown<Blocks>(5, hum(20)), Frame(5, shade(21))); // 1 is added to all
        QCOMPARE(shown<Blocks>(5, hum(200)), Frame(5, shade(80)));
        ConfigurationManager::instance()->setAppConfig("effects.musicQuietLevel", 40);
        QCOMPARE(shown<Blocks>(5, hum(39)), Frame(5, shade(1)));
        FakeStrapList straps({plain(Qt::white)});
        Mood mood(&straps);
        mood.hear(hum(60));
        QCOMPARE(mood.shown(), (LV_RGB{127, 127, 127}));
    }

    void quietStateIsShownAndColourFallsAfterTheSound()
    {
        Blocks blocks(kEffect, strip(3));
        Bands bands(kEffect, strip(3));
        // The first for the new source, the last when it is certain that nothing plays.
        QTRY_VERIFY(blocks.frames.size() == 3 && bands.frames.size() == 3);
        for (const QSignalSpy* frames : {&blocks.frames, &bands.frames}) {
            QCOMPARE(frames->at(1).first().value<Frame>(), Frame(3, kQuiet));
            QCOMPARE(frames->at(2).first().value<Frame>(), Frame(3, kBlack));
        }
        const auto redAfterTheSound = [&blocks] {
            blocks.spectrumUpdate(hum(80));
            for (int i = 0; i < 10; ++i) // the mean of the last ten is silence
                blocks.spectrumUpdate(hum(-1));
            return blocks.last().first().red;
        };
        QTRY_VERIFY(redAfterTheSound() > 150); // again where half a second has passed meanwhile
    }

    void everyLedHasABandFromTheEndsToTheMiddle()
    {
        for (const int nbLeds : {1, 5, 24}) { // 24: as texts 10 comes before 2
            const int bands = (nbLeds + 1) / 2;
            for (int band = 0; band < bands; ++band) {
                const float hertz = 40 + 1600.F / float(bands) * (float(band) + 0.5F);
                const SoundChannel tone{{{hertz - 1, 0, 0}, {hertz, 0, 2}, {hertz + 1, 0, 0}}};
                Frame right(nbLeds, kQuiet);
                right[nbLeds - 1 - band] = shade(2.0 * 3 * (band + 1)); // the gain grows from the end on
                Frame left = 2 * band + 1 == nbLeds ? Frame(nbLeds, kQuiet) : right;
                std::reverse(left.begin(), left.end()); // the middle hears the right channel alone
                QCOMPARE(shown<Bands>(nbLeds, {tone, {}}), left);
                QCOMPARE(shown<Bands>(nbLeds, {{}, tone}), right);
            }
        }
        QCOMPARE(shown<Bands>(0, hum(80)), Frame());
        // Kept even if the program ends without a word.
        Bands(kEffect, strip(1)).setEffectProperty("strength", 0.5);
        QCOMPARE(shown<Bands>(1, hum(80)), Frame(1, shade(40)));
    }
};

QTEST_MAIN(TestMusicEffects)
#include "tst_music_effects.moc"
