#include "FakeStrapList.h"
#include "MusicTestKit.h"
#include "effects/colorful/strapColors.h"
#include "effects/dynamicMusic/Mode2/MusicMode2.h"
#include "effects/dynamicMusic/Mode3/MusicMode3.h"
#include "effects/dynamicMusic/Mode4/MusicMode4.h"

#include <QtTest>
#include <cmath>

using namespace MusicTestKit;

namespace {

using Blocks = Running<MusicMode3>;
using Bands = Running<MusicMode4>;
using Sound = QVector<SoundChannel>;

const QString kEffect = "id.effect.dynamicMusic.test";
const LV_RGB kQuiet{0, 0, 255};

/// What a level looks like.
LV_RGB shade(double level)
{
    return gradientColors({{0, Qt::blue}, {1, Qt::red}}, 300).at(qMin(299, int(300 * level / 80)));
}

/// A running mood with its gradients.
struct Mood : MusicMode2
{
    explicit Mood(IColorStrapManager* straps)
        : MusicMode2(entry(kEffect), nullptr)
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
        m_manager.reset(); // first: there is one instance
        auto backend = std::make_unique<FakeAudioBackend>();
        m_backend = backend.get();
        m_backend->list = {kSpeaker};
        m_manager = std::make_unique<AudioCapManager>(std::move(backend), 0);
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

        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        straps.setStrap(1, {"broken", {}, Qt::red}); // the mood goes to another by itself, and says so
        QTRY_VERIFY(changes.count() == 1 && changes[0][0] == "currentStrap");
        effect.unload();
        QCOMPARE(stored(kEffect, "strapConfigs")["speed"].toDouble(), 0.1);
        effect.frames.clear();
        QVERIFY(!effect.frames.wait(100));
    }

    void peakFallsStraightAndInProportion()
    {
        PeakDecayFilter filter;
        const qint64 now = Q_INT64_C(1) << 40;
        QCOMPARE(filter.filter(0.0, now), 0.0);
        QCOMPARE(filter.filter(std::nan(""), now), 0.0); // without a moment between
        QCOMPARE(filter.filter(1e9, now), 80.0);
        QCOMPARE(filter.filter(30.0, now + 125), 60.0); // held, and no new peak
        QCOMPARE(filter.filter(41.0, now + 250), 41.0); // one
        QCOMPARE(filter.filter(-3.0, now + 507), 0.0);
    }

    void levelTakesItsColourFromTheGradient()
    {
        const auto shown = [](float level) {
            Blocks effect(kEffect, strip(5));
            effect.spectrumUpdate(hum(level));
            return effect.last();
        };
        QCOMPARE(shown(20), Frame(5, shade(21))); // 1 is added to all
        QCOMPARE(shown(200), Frame(5, shade(80)));
        ConfigurationManager::instance()->setAppConfig("effects.musicQuietLevel", 40);
        QCOMPARE(shown(39), Frame(5, shade(1)));
        QCOMPARE(shown(60), Frame(5, shade(41)));
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
        const auto shown = [](int nbLeds, const Sound& sound) {
            Bands effect(kEffect, strip(nbLeds, 1)); // the direction is not taken over
            effect.spectrumUpdate(sound);
            return effect.last();
        };
        for (const int nbLeds : {1, 5, 24}) { // 24: as texts 10 comes before 2
            const int bands = (nbLeds + 1) / 2;
            for (int band = 0; band < bands; ++band) {
                const float hertz = 40 + 1600.F / float(bands) * (float(band) + 0.5F);
                const SoundChannel tone{{{hertz - 1, 0, 0}, {hertz, 0, 2}, {hertz + 1, 0, 0}}};
                Frame right(nbLeds, kQuiet);
                right[nbLeds - 1 - band] = shade(2.0 * 3 * (band + 1)); // the gain grows from the end on
                Frame left = 2 * band + 1 == nbLeds ? Frame(nbLeds, kQuiet) : right;
                std::reverse(left.begin(), left.end()); // the middle hears the right channel alone
                QCOMPARE(shown(nbLeds, {tone, {}}), left);
                QCOMPARE(shown(nbLeds, {{}, tone}), right);
            }
        }
        QCOMPARE(shown(300, hum(80)), Frame(300, shade(80)));
        QCOMPARE(shown(0, hum(80)), Frame());
    }

    void onlyTheStrengthOfTheBandsIsChosen()
    {
        Bands first(kEffect, strip(1));
        first.setEffectProperty("", QJsonObject{{"captureId", "default"}}); // says nothing of the strength
        first.setEffectProperty("strength", "loud");
        QCOMPARE(first.effectProperty(EffectProperties::kLook).toObject(), (QJsonObject{{"strength", 3.0}}));
        first.setEffectProperty("strength", 0.5);
        first.spectrumUpdate(hum(80));
        QCOMPARE(first.last(), Frame(1, shade(40))); // and here the program may end without a word
        QCOMPARE(Bands(kEffect, strip(1)).effectProperty("strength").toDouble(), 0.5);
    }

private:
    std::unique_ptr<AudioCapManager> m_manager;
    FakeAudioBackend* m_backend = nullptr;
};

QTEST_MAIN(TestMusicModes)
#include "tst_music_modes.moc"
