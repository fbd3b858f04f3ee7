#include "MusicTestKit.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QtTest>

using namespace MusicTestKit;

namespace {

const QString kMeters = "id.effect.dynamicMusic.test";
const QString kPeaks = "id.effect.dynamicMusic.peakValues_8";

struct Listening : Running<AudioPeakValues>
{
    Listening()
        : Running(kPeaks, strip(4))
    {
    }
    QString sourceId() { return effectProperty("captureId").toString(); }
    /// What the latest announcement of a property said.
    QJsonValue announced(const char* key) const
    {
        QJsonValue latest = QJsonValue::Undefined;
        for (const QVariantList& change : changes)
            latest = change.at(0) == key ? change.at(1).toJsonValue() : latest;
        return latest;
    }

    QSignalSpy changes{this, &IEffectWorker::effectPropertyChanged};
};

/// A language in which the default source has one name.
class OtherLanguage : public QTranslator
{
public:
    QString translate(const char* context, const char*, const char*, int) const override
    {
        return qstrcmp(context, "AudioCapManager") == 0 ? "Default: %1" : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

/// Which source a music effect is on, while sources come and go.
class TestMusicSources : public MusicTest
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
        QTRY_COMPARE(m_backend->attached, QStringList{"headset"}); // the old one was given back
        QCOMPARE(stored(kMeters, "audioSource").toString(), QString("headset"));
        effect.unload();
        QTRY_VERIFY(m_backend->attached.isEmpty());
        m_backend->offer({});
        m_backend->offer({kSpeaker}); // comes after the end
        QTRY_COMPARE(m_manager->allCapturers().size(), 2);
        QVERIFY(m_backend->attached.isEmpty());
    }

    void sourceLivesOnFromItsLastReleaseNotFromAnEarlierOne()
    {
        constexpr int kLinger = 50;
        for (const bool isHeld : {true, false}) {
            setSources({kSpeaker}, kLinger);
            const auto acquire = [this] { return m_manager->acquireCapturer("default"); };
            const auto release = [this] { m_manager->releaseCapturer("default"); };
            acquire();
            release();
            QString atFirstEnd; // timers come in the order of their times, however late
            QTimer::singleShot(kLinger, [&] { atFirstEnd = m_backend->attached.value(0, "nothing"); });
            QTimer::singleShot(kLinger / 5, [&] {
                acquire();
                if (!isHeld)
                    release();
            });
            QTRY_COMPARE(atFirstEnd, QString("default"));
            if (isHeld)
                release();
            release(); // once too often
            QVERIFY(acquire());
            release();
            QTRY_VERIFY(m_backend->attached.isEmpty());
        }
    }

    void wantedSourceIsKeptWhileAnotherStandsIn()
    {
        setSources({kSpeaker});
        ConfigurationManager::instance()->setEffectJsonValue(kPeaks, "LVTEST:01", "audioSource", "headset");
        Listening effect;
        QCOMPARE(effect.sourceId(), QString("default"));
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(effect.sourceId(), QString("headset"));
        QTRY_COMPARE(m_backend->attached, QStringList{"headset"});
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(effect.sourceId(), QString("default"));
        effect.unload(); // the program quits while the headset is away
        QTRY_VERIFY(m_backend->attached.isEmpty());
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("headset"));

        Listening next;
        m_backend->offer({}); // the whole server
        QTRY_VERIFY(m_backend->attached.isEmpty());
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(next.sourceId(), QString("headset"));
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(next.sourceId(), QString("default"));
        next.changes.clear();
        next.setEffectProperty("captureId", "headset"); // is not there: the form goes back
        QCOMPARE(next.announced("captureId"), QJsonValue("default"));
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("headset"));
        next.setEffectProperty("captureId", "default"); // now it is what the user wants
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("default"));
    }

    void openFormIsToldOfEveryChange()
    {
        setSources({kSpeaker});
        Listening effect;
        const auto isTold = [&effect](int count, const QString& firstName) {
            const QJsonValue list = effect.announced("capturers");
            return list == effect.effectProperty("capturers") && list.toArray().size() == count &&
                   list[0]["desc"].toString() == firstName &&
                   effect.announced("captureId") == effect.effectProperty("captureId");
        };
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_VERIFY(isTold(3, "默认输出 (Speaker)"));
        OtherLanguage language;
        QCoreApplication::installTranslator(&language);
        QTRY_VERIFY(isTold(3, "Default: Speaker"));
        QCoreApplication::removeTranslator(&language);
        QTRY_VERIFY(isTold(3, "默认输出 (Speaker)"));
        m_backend->offer({});
        QTRY_VERIFY(isTold(0, QString()));
    }

    void stripIsDarkAndThePageSaysWhyWithoutASource()
    {
        setSources({});
        Listening effect;
        const QString notice = effect.effectProperty("notice").toString();
        QVERIFY(!notice.isEmpty());
        QVERIFY(!effect.effectProperty("").toObject().contains("notice"));
        QTRY_COMPARE(effect.last(), Frame(4, kBlack)); // what was there before is gone

        m_backend->offer({kSpeaker});
        QTRY_COMPARE(effect.announced("notice"), QJsonValue(""));
        speak("default", "1");
        QTRY_VERIFY(!lit(effect.last()).isEmpty());
        speak("default", "1"); // on its way while the source goes
        m_backend->offer({});
        QTRY_COMPARE(effect.announced("notice"), QJsonValue(notice));
        QVERIFY(!lit(effect.last()).isEmpty());
        QTRY_COMPARE(effect.last(), Frame(4, kBlack));

        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(effect.announced("notice"), QJsonValue(""));
        effect.changes.clear();
        effect.setEffectProperty("captureId", "headset"); // from one to the other: never without
        QVERIFY(effect.announced("notice").isUndefined());
    }

    void noticeTellsNoServerFromNoSourceAndLongSilenceFromAPause()
    {
        setSources({});
        Listening effect;
        const auto notices = [&effect] {
            QStringList texts;
            for (const QVariantList& change : effect.changes)
                texts += change.at(0) == "notice" ? QStringList(change.at(1).toJsonValue().toString())
                                                  : QStringList();
            return texts;
        };
        const QString noSource = effect.effectProperty("notice").toString();
        for (const bool isThere : {false, true}) {
            m_backend->isThere = isThere;
            m_backend->offer({});
            QTRY_COMPARE(notices().size(), 1 + isThere);
        }
        const QString noServer = notices().first();
        QVERIFY(noServer != noSource && notices().last() == noSource);

        constexpr int kSilenceMs = 200;
        effect.setSilenceMs(kSilenceMs);
        QElapsedTimer silence;
        silence.start();
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(effect.sourceId(), QString("default"));
        speak("default", "0.0000");
        QTRY_COMPARE(notices().size(), 4);
        QVERIFY(silence.elapsed() >= kSilenceMs);
        const QString quiet = notices().last();
        QVERIFY(!quiet.isEmpty() && quiet != noSource && quiet != noServer);
        speak("default", "0.0000");
        speak("default", "0.5000"); // gone with the first sound, and then it says nothing at all
        QTRY_COMPARE(notices(), QStringList({noServer, noSource, "", quiet, "", quiet}));
        effect.setEffectProperty("captureId", kSpeaker.id); // another one has its own time
        QCOMPARE(effect.effectProperty("notice"), QJsonValue(""));
    }

    void sourceThatSpeaksIsNotInterruptedByBlack()
    {
        setSources({kSpeaker});
        Listening effect;
        speak("default", "1");
        QTest::qWait(600); // long enough to go dark
        QCOMPARE(effect.frames.count(), 1);
        QCOMPARE(effect.changes.count(), 0);

        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(m_manager->allCapturers().size(), 3);
        speak("default", "1");                            // comes too late
        effect.setEffectProperty("captureId", "headset"); // which says nothing at all
        QTRY_COMPARE(effect.last(), Frame(4, kBlack));
        QCOMPARE(effect.effectProperty("notice"), QJsonValue(""));
    }

    void nothingIsHeardForAStripThatIsKeptDark()
    {
        setSources({kSpeaker, kHeadset});
        Listening effect;
        effect.onCtlDarkChanged(true);
        QTRY_VERIFY(m_backend->attached.isEmpty());
        effect.setEffectProperty("captureId", "headset");
        QVERIFY(m_backend->attached.isEmpty() && effect.effectProperty("notice") == QString());
        effect.onCtlDarkChanged(false);
        QCOMPARE(m_backend->attached, QStringList{"headset"});
        effect.unload();
        effect.onCtlDarkChanged(false); // was on its way
        QTRY_VERIFY(m_backend->attached.isEmpty());
    }

    void microphoneIsHeardOnlyWhenItIsChosen()
    {
        setSources({kHeadset});
        Listening effect;
        m_backend->offer({});
        QTRY_VERIFY(m_manager->allCapturers().isEmpty());
        m_backend->offer({kHeadset}); // not when it is there and not when it comes
        QTRY_VERIFY(!m_manager->allCapturers().isEmpty());
        QCOMPARE(effect.sourceId(), QString());
        QVERIFY(m_backend->attached.isEmpty());
        effect.unload();
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue(""));
    }

private:
    /// What a source that is in use lets everybody hear.
    void speak(const QString& id, const QString& peak)
    {
        emit m_manager->acquireCapturer(id)->channelsPeakValuesChanged({{peak}, {peak}});
        m_manager->releaseCapturer(id);
    }
};

QTEST_MAIN(TestMusicSources)
#include "tst_music_sources.moc"
