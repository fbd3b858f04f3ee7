#include "LogCapture.h"
#include "MusicTestKit.h"
#include "SoundServer.h"
#include "TonePlayer.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QJsonArray>
#include <QtTest>
#include <algorithm>

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

    void unknownSourceGivesTheDefault()
    {
        setSources({kSpeaker, kHeadset});
        choose("gone");
        LogCapture log;
        AudioPeakValues effect(entry(kPeaks), nullptr);
        QCOMPARE(effect.load(strip(4)), 0);
        QVERIFY(log.contains("[AbsMusicEffect]: Not found this audio capturer: gone"));
        QVERIFY(log.contains("[AbsMusicEffect]: Using default audio capturer"));
        QVERIFY(log.contains("[AbsMusicEffect]: " + kPeaks + " is connected to the default"));
        QCOMPARE(stored(kPeaks, "audioSource").toString(), QString("default"));
        QCOMPARE(effect.effectProperty("capturers").toArray().size(), 3);
        QCOMPARE(effect.effectProperty("").toObject().keys(), (QStringList{"captureId", "capturers"}));
        QVERIFY(effect.effectProperty("strength").isNull());
    }

    void changeOfSourceStartsDark()
    {
        setSources({kSpeaker, kHeadset});
        MusicMode1 effect(entry(kMeters), nullptr);
        effect.load(strip(3));
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.setEffectProperty("captureId", "default"); // is there already
        effect.setEffectProperty("captureId", "");
        effect.setEffectProperty("", QJsonObject{{"strength", 1.0}});
        QCOMPARE(frames.count(), 0);
        effect.setEffectProperty("", QJsonObject{{"captureId", "headset"}});
        QCOMPARE(lastFrame(frames), Frame(3, kBlack));
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
        setSources({kSpeaker, kHeadset});
        choose("headset");
        AudioPeakValues effect(entry(kPeaks), nullptr);
        effect.load(strip(4));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        QCOMPARE(stateOf(effect), QString("headset"));
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(stateOf(effect), QString("default"));
        QCOMPARE(changes.last().at(1).toJsonValue().toString(), QString("default"));
        QVERIFY(std::any_of(changes.begin(), changes.end(), [](const QList<QVariant>& change) {
            return change.at(0) == "capturers" && change.at(1).toJsonValue().toArray().size() == 2;
        }));
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(effect), QString("headset"));
        QCOMPARE(m_backend->attached, QStringList{"headset"});

        m_backend->offer({}); // the whole server: its capturer goes on by itself
        QTRY_VERIFY(m_manager->allCapturers().isEmpty());
        QCOMPARE(stateOf(effect), QString("headset"));
        m_backend->offer({kSpeaker}); // back, but without the headset
        QTRY_COMPARE(stateOf(effect), QString("default"));
        effect.unload();
        QVERIFY(m_backend->attached.isEmpty());
    }

    void withoutAnySourceItWaits_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("bound");
        QTest::newRow("first run") << ""
                                   << "[AbsMusicEffect]: Not connected to any capturer, controller: LVTEST:01"
                                   << "default";
        QTest::newRow("chosen before") << "headset"
                                       << "The list of audio capturer is empty! "
                                       << "headset";
    }
    void withoutAnySourceItWaits()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, message);
        setSources({});
        choose(chosen);
        const LogCapture log;
        AudioPeakValues effect(entry(kPeaks), nullptr);
        QCOMPARE(effect.load(strip(4)), 0);
        QCOMPARE(log.count(message), 1);
        QCOMPARE(stateOf(effect), QString());
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_VERIFY(!stateOf(effect).isEmpty());
        QTEST(stateOf(effect), "bound");
        QCOMPARE(m_backend->attached, QStringList{stateOf(effect)});
        effect.unload();
        QTEST(stored(kPeaks, "audioSource").toString(), "bound");
    }

    void lightFollowsRealSoundOverARestartOfTheServer()
    {
        m_manager.reset();
        SoundServer server;
        server.useHere();
        m_manager = std::make_unique<AudioCapManager>(createAudioBackend());
        AudioPeakValues bars(entry("id.effect.dynamicMusic.peakValues_1"), nullptr);
        MusicMode1 meters(entry(kMeters), nullptr);
        QSignalSpy barFrames(&bars, &IEffectWorker::updateColors);
        QSignalSpy meterFrames(&meters, &IEffectWorker::updateColors);
        bars.load(strip(20));
        meters.load(strip(20));
        const auto lit = [](const QSignalSpy& frames) {
            const Frame frame = lastFrame(frames);
            return frame.size() - frame.count(kBlack);
        };
        for (int round = 0; round < 2; ++round) {
            barFrames.clear();
            meterFrames.clear();
            QVERIFY(server.start());
            TonePlayer player(server.address(), "first");
            player.play({100, 0.6F});
            QTRY_COMPARE_WITH_TIMEOUT(lit(barFrames), 10, 20000); // trunc(0.6 * 9) on each side
            QTRY_VERIFY_WITH_TIMEOUT(lit(meterFrames) >= 18, 20000);
            player.play({100, 0});
            QTRY_COMPARE_WITH_TIMEOUT(lit(barFrames), 0, 20000);
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
