#include "MusicTestKit.h"
#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QJsonArray>
#include <QTranslator>
#include <QtTest>

using namespace MusicTestKit;

namespace {

const QString kPeaks = "id.effect.dynamicMusic.peakValues_8";
const QString kMeters = "id.effect.dynamicMusic.test";

QString stateOf(IEffectWorker& effect)
{
    return effect.effectProperty("captureId").toString();
}

/// What the latest announcement of a property said.
QJsonValue announced(const QSignalSpy& changes, const char* key)
{
    for (int i = changes.size() - 1; i >= 0; --i) {
        if (changes.at(i).at(0) == key)
            return changes.at(i).at(1).toJsonValue();
    }
    return QJsonValue::Undefined;
}

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
        QTRY_COMPARE(m_backend->attached, QStringList{"headset"}); // the old one was given back
        QCOMPARE(stored(kMeters, "audioSource").toString(), QString("headset"));
        effect.unload();
        QTRY_VERIFY(m_backend->attached.isEmpty());
        m_backend->offer({});
        m_backend->offer({kSpeaker}); // comes after the end
        QTRY_COMPARE(m_manager->allCapturers().size(), 2);
        QVERIFY(m_backend->attached.isEmpty());
    }

    void recordingGoesOnFromOneEffectToTheNext()
    {
        setSources({kSpeaker}, 24 * 3600 * 1000);
        Running<AudioPeakValues>(kPeaks, strip(4)).unload();
        QCoreApplication::processEvents();
        const Running<MusicMode1> next(kMeters, strip(4));
        QCOMPARE(m_backend->attached, QStringList{"default"});
        QCOMPARE(m_backend->begun, 1);
    }

    void sourceLivesOnFromItsLastReleaseNotFromAnEarlierOne()
    {
        constexpr int kLinger = 50;
        for (const bool isHeld : {true, false}) {
            setSources({kSpeaker}, kLinger);
            m_manager->acquireCapturer("default");
            m_manager->releaseCapturer("default");
            QString atFirstEnd; // timers come in the order of their times, however late
            QTimer::singleShot(kLinger, [&] { atFirstEnd = m_backend->attached.value(0, "nothing"); });
            QTimer::singleShot(kLinger / 5, [&] {
                m_manager->acquireCapturer("default");
                if (!isHeld)
                    m_manager->releaseCapturer("default");
            });
            QTRY_COMPARE(atFirstEnd, QString("default"));
            if (isHeld)
                m_manager->releaseCapturer("default");
            m_manager->releaseCapturer("default"); // once too often
            QVERIFY(m_manager->acquireCapturer("default"));
            m_manager->releaseCapturer("default");
            QTRY_VERIFY(m_backend->attached.isEmpty());
        }
    }

    void wantedSourceIsKeptWhileAnotherStandsIn()
    {
        setSources({kSpeaker});
        ConfigurationManager::instance()->setEffectJsonValue(kPeaks, "LVTEST:01", "audioSource", "headset");
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        QCOMPARE(stateOf(effect), QString("default"));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(effect), QString("headset"));
        QTRY_COMPARE(m_backend->attached, QStringList{"headset"});
        QCOMPARE(effect.effectProperty("").toObject()["capturers"].toArray().size(), 3);
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(stateOf(effect), QString("default"));
        QCOMPARE(announced(changes, "captureId"), QJsonValue("default"));
        effect.unload(); // the program quits while the headset is away
        QTRY_VERIFY(m_backend->attached.isEmpty());
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("headset"));

        Running<AudioPeakValues> next(kPeaks, strip(4));
        m_backend->offer({}); // the whole server
        QTRY_VERIFY(m_backend->attached.isEmpty());
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(next), QString("headset"));
        m_backend->offer({kSpeaker});
        QTRY_COMPARE(stateOf(next), QString("default"));
        QSignalSpy answers(&next, &IEffectWorker::effectPropertyChanged);
        next.setEffectProperty("captureId", "headset"); // is not there: the form goes back
        QCOMPARE(announced(answers, "captureId"), QJsonValue("default"));
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("headset"));
        answers.clear();
        next.setEffectProperty("captureId", "default");                   // now it is what the user wants
        QCOMPARE(announced(answers, "captureId"), QJsonValue("default")); // the last word to an open form
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue("default"));
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(m_manager->allCapturers().size(), 3);
        QCOMPARE(stateOf(next), QString("default"));
    }

    void openFormIsToldOfEveryChange()
    {
        setSources({kSpeaker});
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        const auto isTold = [&] {
            const QJsonObject all = effect.effectProperty("").toObject();
            return announced(changes, "capturers") == all["capturers"] &&
                   announced(changes, "captureId") == all["captureId"];
        };
        const auto firstName = [&] { return announced(changes, "capturers")[0]["desc"].toString(); };
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(announced(changes, "capturers").toArray().size(), 3);
        QVERIFY(isTold());
        OtherLanguage language;
        QCoreApplication::installTranslator(&language);
        QTRY_COMPARE(firstName(), QString("Default: Speaker"));
        QVERIFY(isTold());
        QCoreApplication::removeTranslator(&language);
        QTRY_COMPARE(firstName(), QString("默认输出 (Speaker)"));
        m_backend->offer({});
        QTRY_COMPARE(announced(changes, "capturers"), QJsonValue(QJsonArray()));
        QVERIFY(isTold());
    }

    void stripIsDarkAndThePageSaysWhyWithoutASource()
    {
        setSources({});
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        const QString notice = effect.effectProperty("notice").toString();
        QVERIFY(!notice.isEmpty());
        QVERIFY(!effect.effectProperty("").toObject().contains("notice"));
        QTRY_COMPARE(effect.last(), Frame(4, kBlack)); // what was there before is gone

        m_backend->offer({kSpeaker});
        QTRY_COMPARE(announced(changes, "notice"), QJsonValue(""));
        speak("default", "1");
        QTRY_VERIFY(!lit(effect.last()).isEmpty());
        speak("default", "1"); // on its way while the source goes
        m_backend->offer({});
        QTRY_COMPARE(announced(changes, "notice"), QJsonValue(notice));
        QVERIFY(!lit(effect.last()).isEmpty());
        QTRY_COMPARE(effect.last(), Frame(4, kBlack));

        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(announced(changes, "notice"), QJsonValue(""));
        changes.clear();
        effect.setEffectProperty("captureId", "headset"); // from one to the other: never without
        QVERIFY(announced(changes, "notice").isUndefined());
    }

    void sourceThatSpeaksIsNotInterruptedByBlack()
    {
        setSources({kSpeaker});
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        speak("default", "1");
        bool isOver = false;
        QTimer::singleShot(600, [&isOver] { isOver = true; });
        QTRY_VERIFY(isOver);
        QCOMPARE(effect.frames.count(), 1);
        QCOMPARE(changes.count(), 0);

        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(m_manager->allCapturers().size(), 3);
        speak("default", "1");                            // comes too late
        effect.setEffectProperty("captureId", "headset"); // which says nothing at all
        QTRY_COMPARE(effect.last(), Frame(4, kBlack));
        QCOMPARE(effect.effectProperty("notice"), QJsonValue(""));
    }

    void microphoneIsHeardOnlyWhenItIsChosen()
    {
        setSources({kHeadset});
        Running<AudioPeakValues> effect(kPeaks, strip(4));
        m_backend->offer({});
        QTRY_VERIFY(m_manager->allCapturers().isEmpty());
        m_backend->offer({kHeadset}); // not when it is there and not when it comes
        QTRY_VERIFY(!m_manager->allCapturers().isEmpty());
        QCOMPARE(stateOf(effect), QString());
        QVERIFY(m_backend->attached.isEmpty());
        effect.unload();
        QCOMPARE(stored(kPeaks, "audioSource"), QJsonValue(""));

        Running<AudioPeakValues> next(kPeaks, strip(4));
        m_backend->offer({kSpeaker, kHeadset});
        QTRY_COMPARE(stateOf(next), QString("default"));
        next.setEffectProperty("captureId", "headset");
        QCOMPARE(stateOf(next), QString("headset"));
    }

private:
    void setSources(const AudioSources& sources, int lingerMs = 0)
    {
        m_manager.reset(); // first: there is one instance
        auto backend = std::make_unique<FakeAudioBackend>();
        m_backend = backend.get();
        m_backend->list = sources;
        m_manager = std::make_unique<AudioCapManager>(std::move(backend), lingerMs);
    }

    /// What a source that is in use lets everybody hear.
    void speak(const QString& id, const QString& peak)
    {
        emit m_manager->acquireCapturer(id)->channelsPeakValuesChanged({{peak}, {peak}});
        m_manager->releaseCapturer(id);
    }

    std::unique_ptr<AudioCapManager> m_manager;
    FakeAudioBackend* m_backend = nullptr;
};

QTEST_MAIN(TestMusicSources)
#include "tst_music_sources.moc"
