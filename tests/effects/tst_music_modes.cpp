#include "FakeStrapList.h"
#include "MusicTestKit.h"
#include "effects/dynamicMusic/Mode2/MusicMode2.h"
#include "effects/dynamicMusic/Mode3/MusicMode3.h"
#include "effects/dynamicMusic/Mode4/MusicMode4.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QtTest>
#include <limits>

using namespace MusicTestKit;

namespace {

using Blocks = Running<MusicMode3>;
using Bands = Running<MusicMode4>;
using Sound = QVector<SoundChannel>;

const QString kEffect = "id.effect.dynamicMusic.test";
const LV_RGB kQuiet{0, 0, 255};

/// What a level looks like, drawn afresh.
LV_RGB shade(double level)
{
    QImage row(300, 1, QImage::Format_RGB888);
    QLinearGradient gradient(0, 0, 300, 0);
    gradient.setColorAt(0.0, QColor(0, 0, 255));
    gradient.setColorAt(1.0, QColor(255, 0, 0));
    QPainter(&row).fillRect(row.rect(), gradient);
    const QColor color = row.pixelColor(qMin(299, int(300 * level / 80.0)), 0);
    return {std::uint8_t(color.red()), std::uint8_t(color.green()), std::uint8_t(color.blue())};
}

/// A running mood: the straps are handed over before the load, and a source is bound that may be silent.
struct Mood : MusicMode2
{
    explicit Mood(IColorStrapManager* straps, const ControlOptions& options = strip(4))
        : MusicMode2(entry(kEffect), nullptr)
    {
        DIColorStrapManager(straps);
        load(options);
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
        return frames.wait() ? frames.first().first().value<Frame>().first() : LV_RGB();
    }

    QSignalSpy frames{this, &IEffectWorker::updateColors};
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

/// Silent but for one of the bands of a strip, from its ends to the middle, on one channel.
Sound bandOf(int nbLeds, int channel, int band, float level)
{
    const int bands = (nbLeds + 1) / 2;
    Sound sound(2);
    for (int i = 0; i < bands; ++i) {
        const float hertz = 40 + 1600.F / bands * (i + 0.5F);
        sound[0].spectrums += {hertz, 0, 0};
        sound[1].spectrums += {hertz, 0, 0};
    }
    sound[channel].spectrums[band].level = level;
    return sound;
}

} // namespace

/// The modes beyond the meters.
class TestMusicModes : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        ConfigurationManager::instance()->setAppConfig("devUpdateInterval", 10);
        setSources({});
    }

    void moodBreathesWithTheSound()
    {
        setSources({kSpeaker});
        FakeStrapList straps({plain(QColor(200, 105, 9))});
        Mood effect(&straps);
        QCOMPARE(effect.shown(), (LV_RGB{20, 10, 0})); // before anything is heard
        effect.hear(Sound{{{{100, 0, 20}, {17000, 0, 80}}}, {{{15000, 0, 60}}}});
        QCOMPARE(effect.shown(), (LV_RGB{150, 78, 6})); // the louder side
        effect.hear(hum(80));
        QCOMPARE(effect.shown(), (LV_RGB{200, 105, 9}));
        effect.setEffectProperty("strength", 0.505);
        effect.setEffectProperty("strength", "loud");
        effect.hear(hum(80));
        QCOMPARE(effect.shown(), (LV_RGB{101, 53, 4}));
        QCOMPARE(Mood(&straps).effectProperty("strength").toDouble(), 0.505);
        effect.hear(hum(0));
        QCOMPARE(effect.shown(), kBlack);
    }

    void moodIsDarkWithoutASource()
    {
        setSources({kSpeaker});
        FakeStrapList straps({plain(Qt::white)});
        Mood effect(&straps);
        QTRY_COMPARE(effect.shown(), kBlack); // it says nothing
        effect.hear(hum(80));
        QCOMPARE(effect.shown(), (LV_RGB{255, 255, 255}));
        m_backend->offer({});
        QTRY_COMPARE(effect.shown(), kBlack);
        QCOMPARE(effect.shown(), kBlack); // and not for one picture only
    }

    void moodAndSoundAreOneSetOfProperties()
    {
        setSources({kSpeaker});
        FakeStrapList straps({plain(Qt::white), plain(Qt::red)});
        Mood effect(&straps, strip(4, 1));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        const QStringList look{"currentStrap", "range", "speed", "strength"};
        QCOMPARE(effect.effectProperty(EffectProperties::kLook).toObject().keys(), look);
        const QJsonObject all = effect.effectProperty("").toObject();
        for (const QString& key : look + QStringList{"captureId", "capturers", "colorStrapManager"})
            QVERIFY2(all.contains(key) && all[key] == effect.effectProperty(key), qPrintable(key));
        QCOMPARE(effect.effectProperty("colour"), QJsonValue(QJsonValue::Null));
        effect.setEffectProperty("",
                                 QJsonObject{{"captureId", "tape"}, {"currentStrap", 1}, {"speed", 0.25}});
        QCOMPARE(stored(kEffect, "audioSource"), QJsonValue("tape"));
        effect.hear(hum(80));
        QCOMPARE(effect.shown(), (LV_RGB{255, 0, 0}));
        changes.clear();
        straps.setStrap(1, {"broken", {}, Qt::red}); // the mood goes to another by itself, and says so
        QTRY_VERIFY(changes.count() > 0);
        QCOMPARE(changes.last().first().toString(), QString("currentStrap"));
        effect.unload();
        QCOMPARE(stored(kEffect, "strapConfigs")["speed"].toDouble(), 0.25);
        effect.frames.clear();
        QVERIFY(!effect.frames.wait(100));
    }

    void moodFollowsTheDirection()
    {
        // One cycle is a ramp of 40 colours on 20 LEDs: what is where tells which way it goes.
        setSources({kSpeaker});
        FakeStrapList straps({{"ramp", {{0.999, Qt::white}}, Qt::black}});
        ConfigurationManager::instance()->setEffectJsonValue(kEffect, "LVTEST:01", "strapConfigs",
                                                             QJsonObject{{"speed", 1.0}});
        Mood effect(&straps, strip(20, 1));
        effect.hear(hum(80));
        const auto step = [&effect] { // of a few LEDs, but over the ramp's end
            int before = effect.shown().red;
            int moved = 0;
            for (int i = 0; i < 200 && (moved == 0 || qAbs(moved) >= 100); ++i) {
                moved = effect.shown().red - before;
                before += moved;
            }
            return moved;
        };
        QVERIFY(step() < 0);
        effect.onCtlDirChanged(0);
        QVERIFY(step() > 0);
    }

    void peakFallsStraightAndInProportion()
    {
        PeakDecayFilter filter;
        qint64 now = Q_INT64_C(1) << 40;
        QCOMPARE(filter.filter(1e9, now), 80.0);
        QCOMPARE(filter.filter(30.0, now + 125), 60.0); // held, and no new peak
        QCOMPARE(filter.filter(0.0, now + 250), 40.0);
        QCOMPARE(filter.filter(41.0, now + 250), 41.0); // one
        QCOMPARE(filter.filter(40.0, now += 250), 41.0);
        QCOMPARE(filter.filter(-3.0, now + 257), 0.0);
        QCOMPARE(filter.filter(7.0, now + 258), 7.0);
        QCOMPARE(PeakDecayFilter(2.0).filter(0.0), 0.0);
    }

    void nothingThatIsNoNumberComesOutOfAPeak()
    {
        PeakDecayFilter filter;
        constexpr qint64 kNow = Q_INT64_C(1) << 40;
        for (int i = 0; i < 2; ++i) // the second time without a moment between
            QCOMPARE(filter.filter(0.0, kNow), 0.0);
        QCOMPARE(filter.filter(std::numeric_limits<double>::quiet_NaN(), kNow), 0.0);
        QCOMPARE(filter.filter(5.0, kNow), 5.0);
    }

    void levelTakesItsColourFromTheGradient()
    {
        for (const float level : {0.F, 1.F, 20.F, 39.9F, 79.F, 200.F}) {
            Blocks effect(kEffect, strip(5));
            effect.spectrumUpdate(hum(level - 1)); // 1 is added to all
            QCOMPARE(effect.last(), Frame(5, shade(level)));
        }
        QCOMPARE(shade(0), kQuiet);
        Blocks effect(kEffect, strip(1));
        effect.spectrumUpdate(hum(80));
        QVERIFY(effect.last().first().red >= 254);
    }

    void whatIsQuietIsNotShownAndTheRestFillsTheScale()
    {
        ConfigurationManager::instance()->setAppConfig("effects.musicQuietLevel", 40);
        Blocks effect(kEffect, strip(1));
        effect.spectrumUpdate(hum(39));
        QCOMPARE(effect.last(), Frame(1, shade(1))); // 1 is added to all
        effect.spectrumUpdate(hum(60));
        QCOMPARE(effect.last(), Frame(1, shade(41)));
        setSources({kSpeaker});
        FakeStrapList straps({plain(Qt::white)});
        Mood mood(&straps);
        mood.hear(hum(60));
        QCOMPARE(mood.shown(), (LV_RGB{127, 127, 127}));
        ConfigurationManager::instance()->setAppConfig("effects.musicQuietLevel", 80); // nothing were left
        Blocks next(kEffect, strip(1));
        next.spectrumUpdate(hum(39));
        QCOMPARE(next.last(), Frame(1, shade(40)));
    }

    void colourFallsAfterTheSound()
    {
        const auto redAfterTheSound = [] {
            Blocks effect(kEffect, strip(3));
            effect.spectrumUpdate(hum(80));
            for (int i = 0; i < 10; ++i) // the mean of the last ten is silence
                effect.spectrumUpdate(hum(-1));
            return effect.last().first().red;
        };
        QTRY_VERIFY(redAfterTheSound() > 150); // again where half a second has passed meanwhile
        Blocks effect(kEffect, strip(3));
        effect.spectrumUpdate(hum(80));
        const auto laterOn = [&effect] {
            effect.spectrumUpdate(hum(-1));
            return effect.last();
        };
        QTRY_COMPARE(laterOn(), Frame(3, kQuiet));
    }

    void quietStateIsShownUntilItIsCertainThatNothingPlays()
    {
        Blocks blocks(kEffect, strip(3));
        Bands bands(kEffect, strip(4));
        QVERIFY(blocks.frames.isEmpty() && bands.frames.isEmpty());
        QTRY_VERIFY(blocks.frames.size() == 2 && bands.frames.size() == 2);
        QCOMPARE(blocks.frames.first().first().value<Frame>(), Frame(3, kQuiet));
        QCOMPARE(bands.frames.first().first().value<Frame>(), Frame(4, kQuiet));
        QVERIFY(blocks.last() == Frame(3, kBlack) && bands.last() == Frame(4, kBlack));
    }

    void everyLedHasABandFromTheEndsToTheMiddle()
    {
        for (const int nbLeds : {1, 2, 5, 24}) { // 24: as texts 10 comes before 2
            for (int band = 0; band < (nbLeds + 1) / 2; ++band) {
                // The gain is 3, and grows with the distance from the end.
                const LV_RGB lit = shade(2.0 * 3 * (band + 1));
                const bool isMiddle = 2 * band + 1 == nbLeds; // hears the right channel alone
                Frame left(nbLeds, kQuiet);
                Frame right = left;
                left[band] = isMiddle ? kQuiet : lit;
                right[nbLeds - 1 - band] = lit;
                Bands effect(kEffect, strip(nbLeds));
                effect.spectrumUpdate(bandOf(nbLeds, 0, band, 2));
                QCOMPARE(effect.last(), left);
                Bands other(kEffect, strip(nbLeds));
                other.spectrumUpdate(bandOf(nbLeds, 1, band, 2));
                QCOMPARE(other.last(), right);
            }
        }
        Bands loud(kEffect, strip(300));
        loud.spectrumUpdate(hum(80));
        QCOMPARE(loud.last(), Frame(300, shade(80)));
        Bands none(kEffect, strip(0));
        none.spectrumUpdate(hum(80));
        QCOMPARE(none.last(), Frame());
        QCOMPARE(none.frames.size(), 1);
    }

    void bandsFollowFromTheStripAndNotFromTheStore()
    {
        ConfigurationManager::instance()->setEffectJsonValue(
            kEffect, "LVTEST:01", "fragments",
            QJsonObject{{"x", QJsonObject{{"endIndex", 3}, {"maxFrequency", 100}}}});
        Bands(kEffect, strip(1)).unload();
        const QJsonObject fragments = stored(kEffect, "fragments").toObject();
        QCOMPARE(fragments.keys(), QStringList("0"));
        const QJsonObject expected{
            {"beginIndex", 0},    {"endIndex", 1},        {"dbEnhance", 0},    {"mulEnhance", 3},
            {"minFrequency", 40}, {"maxFrequency", 1640}, {"soundChannel", 2}, {"dir", 0}};
        QCOMPARE(fragments["0"].toObject(), expected);
    }

    void directionOfTheBandsIsTheOneTheyAreTold()
    {
        Bands effect(kEffect, strip(4, 1));
        effect.spectrumUpdate(bandOf(4, 0, 0, 10));
        QCOMPARE(effect.last().first(), shade(30));
        effect.onCtlDirChanged(1);
        effect.spectrumUpdate(bandOf(4, 0, 0, 10));
        QCOMPARE(effect.last().last(), shade(30));
    }

    void chosenStrengthOfTheBandsComesBack()
    {
        Bands first(kEffect, strip(2));
        QCOMPARE(first.effectProperty("strength").toDouble(), 3.0);
        first.setEffectProperty("strength", 0.5); // the program may end here without a word
        Bands next(kEffect, strip(2));
        QCOMPARE(next.effectProperty("strength").toDouble(), 0.5);
        next.spectrumUpdate(hum(80));
        QCOMPARE(next.last(), Frame(2, shade(40)));
    }

private:
    void setSources(const AudioSources& sources)
    {
        m_manager.reset(); // first: there is one instance
        auto backend = std::make_unique<FakeAudioBackend>();
        m_backend = backend.get();
        m_backend->list = sources;
        m_manager = std::make_unique<AudioCapManager>(std::move(backend), 0);
    }

    std::unique_ptr<AudioCapManager> m_manager;
    FakeAudioBackend* m_backend = nullptr;
};

QTEST_MAIN(TestMusicModes)
#include "tst_music_modes.moc"
