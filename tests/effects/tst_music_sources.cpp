#include "LogCapture.h"
#include "MusicTestKit.h"
#include "SoundServer.h"
#include "TonePlayer.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QJsonArray>
#include <QtTest>

using namespace MusicTestKit;

namespace {

const QString kPeaks = "id.effect.dynamicMusic.peakValues_8";
const QString kMeters = "id.effect.dynamicMusic.test";

void choose(const QString& id)
{
    ConfigurationManager::instance()->setEffectJsonValue(kPeaks, "LVTEST:01", "audioSource", id);
}

QString stateOf(IEffectWorker& effect)
{
    return effect.effectProperty("captureId").toString();
}

} // namespace

/// Which source a music effect is on, while sources come and go.
class TestMusicSources : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void changeOfSourceStartsDark()
    {
        setSources({kSpeaker, kHeadset});
        Running<MusicMode1> effect(kMeters, strip(3));
        effect.frames.clear();
        effect.setEffectProperty("captureId", "default"); // is there already
        effect.setEffectProperty("captureId", "");
        effect.setEffectProperty("", QJsonObject{{"strength", 1.0}});
        QCOMPARE(effect.frames.count(), 0);
        effect.setEffectProperty("", QJsonObject{{"captureId", "headset"}});
        QCOMPARE(effect.last(), Frame(3, kBlack));
        QCOMPARE(m_backend->attached, QStringList{"headset"}); // the old one was given back
        QCOMPARE(stored(kMeters, "audioSource").toString(), QString("headset"));
        effect.unload();
        QVERIFY(m_backend->attached.isEmpty());
        m_backend->offer({});
        m_backend->offer({kSpeaker}); // comes after the end
        QTRY_COMPARE(m_manager->allCapturers().size(), 2);
        QVERIFY(m_backend->attached.isEmpty());
    }

    void lostSourceIsReplacedUntilItReturns()
    {
        setSources({kSpeaker});
        choose("headset");
        const LogCapture log;
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        QVERIFY(log.contains("[AbsMusicEffect]: Not found this audio capturer: headset"));
        QVERIFY(log.contains("[AbsMusicEffect]: " + kPeaks + " is connected to the default"));
        QCOMPARE(stored(kPeaks, "audioSource").toString(), QString("default"));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(effect), QString("headset"));
        QCOMPARE(m_backend->attached, QStringList{"headset"});
        QCOMPARE(effect.effectProperty("").toObject()["capturers"].toArray().size(), 3);
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(stateOf(effect), QString("default"));
        QCOMPARE(changes.last().at(1).toJsonValue(), QJsonValue("default"));

        m_backend->offer({}); // the whole server: its capturer goes on by itself
        QTRY_VERIFY(m_manager->allCapturers().isEmpty());
        QCOMPARE(stateOf(effect), QString("default"));
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(effect), QString("headset"));
        effect.unload();
        QVERIFY(m_backend->attached.isEmpty());
    }

    void withoutAnySourceItWaits()
    {
        for (const QString& chosen : {QString(), QString("headset")}) {
            setSources({});
            choose(chosen);
            const LogCapture log;
            Running<AudioPeakValues>(kPeaks, strip(4)).unload();
            QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue(chosen)); // for the next time
            QCOMPARE(log.contains("to any capturer, controller: LVTEST:01"), chosen.isEmpty());
            QCOMPARE(log.contains("The list of audio capturer is empty! "), !chosen.isEmpty());
            Running<AudioPeakValues> effect(kPeaks, strip(4));
            m_backend->offer({kSpeaker, kHeadset});
            QTRY_COMPARE(stateOf(effect), chosen.isEmpty() ? QString("default") : chosen);
            QCOMPARE(m_backend->attached, QStringList{stateOf(effect)});
            effect.unload();
        }
    }

    void lightFollowsRealSoundOverARestartOfTheServer()
    {
        m_manager.reset();
        SoundServer server;
        server.useHere();
        m_manager = std::make_unique<AudioCapManager>(createAudioBackend());
        Running<AudioPeakValues> bars("id.effect.dynamicMusic.peakValues_1", strip(20));
        Running<MusicMode1> meters(kMeters, strip(20));
        for (int round = 0; round < 2; ++round) {
            bars.frames.clear();
            meters.frames.clear();
            QVERIFY(server.start());
            TonePlayer player(server.address(), "first");
            player.play({100, 0.6F});
            QTRY_COMPARE_WITH_TIMEOUT(lit(bars.last()).size(), 10, 20000); // trunc(0.6 * 9) on each side
            QTRY_VERIFY_WITH_TIMEOUT(lit(meters.last()).size() >= 18, 20000);
            player.play({100, 0});
            QTRY_COMPARE_WITH_TIMEOUT(lit(bars.last()).size(), 0, 20000);
            server.stop();
        }
        bars.unload();
        meters.unload();
    }

private:
    void setSources(const AudioSources& sources)
    {
        m_manager.reset(); // first: there is one instance
        auto backend = std::make_unique<FakeAudioBackend>();
        m_backend = backend.get();
        m_backend->list = sources;
        m_manager = std::make_unique<AudioCapManager>(std::move(backend));
    }

    std::unique_ptr<AudioCapManager> m_manager;
    FakeAudioBackend* m_backend = nullptr;
};

QTEST_MAIN(TestMusicSources)
#include "tst_music_sources.moc"
