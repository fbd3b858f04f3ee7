// Audio capture from real sound servers that the tests start, kill and change.
#include "SoundServer.h"
#include "TonePlayer.h"
#include "support/audio/AudioBackend.h"
#include "support/audio/AudioCapManager.h"

#include <QtTest>

namespace {
constexpr int kPatienceMs = 20000;
const QString kFirst = QStringLiteral("first.monitor");
const QString kSecond = QStringLiteral("second.monitor");

TonePlayer::Tone tone(float hertz)
{
    return {hertz, 0.1F};
}

/// Listens as an effect does.
class Listener : public QObject
{
public:
    Listener(AudioCapManager& manager, const QString& id)
        : m_manager(manager)
        , m_id(id)
        , m_capturer(manager.acquireCapturer(id))
    {
        const auto take = [this](const QVector<SoundChannel>& channels) { m_channels = channels; };
        connect(m_capturer.data(), &AudioCapturer::spectrumsChanged, this, take, Qt::QueuedConnection);
    }
    ~Listener() override { m_manager.releaseCapturer(m_id); }

    /// The level around a frequency; -1 before the first spectrum.
    float level(float hertz, int channel = 0) const
    {
        float loudest = -1;
        for (const Spectrum& point : m_channels.value(channel).spectrums)
            loudest = qAbs(point.frequency - hertz) < 30 ? qMax(loudest, point.level) : loudest;
        return loudest;
    }
    bool hears(float hertz, int channel = 0) const { return qAbs(level(hertz, channel) - 60) < 3; }

private:
    AudioCapManager& m_manager;
    const QString m_id;
    const QSharedPointer<AudioCapturer> m_capturer;
    QVector<SoundChannel> m_channels;
};

/// How many recordings the server carries.
int recordings(const SoundServer& server)
{
    QByteArray output;
    return server.control({"list", "source-outputs"}, &output) ? output.count("n.name = \"Lumivar\"") : -1;
}
} // namespace

class TestAudioCapture : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_server = std::make_unique<SoundServer>();
        m_server->useHere();
        QVERIFY(m_server->start());
    }
    void cleanup() { m_server.reset(); }

    void hearsEachSideOfTheDefaultLoudspeakerInOneRecordingForAll()
    {
        AudioCapManager manager(createAudioBackend());
        QCOMPARE(manager.allCapturers(), QList<QString>({manager.defaultCapturer(), kFirst}));
        QCOMPARE(manager.capturerDesc(kFirst), "Monitor of first");
        QCOMPARE(recordings(*m_server), 0);
        TonePlayer player(m_server->address(), "first");
        auto other = std::make_unique<Listener>(manager, manager.defaultCapturer());
        {
            const Listener listener(manager, manager.defaultCapturer());
            player.play(tone(440), tone(3000));
            QTRY_VERIFY_WITH_TIMEOUT(listener.hears(440, 0) && listener.level(3000, 0) < 5, kPatienceMs);
            QTRY_VERIFY_WITH_TIMEOUT(listener.hears(3000, 1) && listener.level(440, 1) < 5, kPatienceMs);
            QTRY_VERIFY_WITH_TIMEOUT(other->hears(440), kPatienceMs);
            QCOMPARE(recordings(*m_server), 1);
        }
        player.play({}); // the other one hears on
        QTRY_COMPARE_WITH_TIMEOUT(other->level(440), 0.F, kPatienceMs);
        other.reset();
        QTRY_COMPARE_WITH_TIMEOUT(recordings(*m_server), 0, kPatienceMs);
    }

    void followsTheDefaultLoudspeaker()
    {
        QVERIFY(m_server->addSink("second"));
        AudioCapManager manager(createAudioBackend());
        QSignalSpy changed(&manager, &AudioCapManager::capturersChanged);
        const Listener follower(manager, manager.defaultCapturer());
        const Listener stayer(manager, kFirst);
        // The server takes along what plays on the default, but not what was begun elsewhere.
        TonePlayer secondPlayer(m_server->address(), "second");
        secondPlayer.play(tone(3000));
        QVERIFY(m_server->setDefaultSink("second"));
        QTRY_VERIFY_WITH_TIMEOUT(follower.hears(3000), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(manager.capturerDesc(manager.defaultCapturer()),
                                  "默认输出 (Monitor of second)", kPatienceMs);
        QVERIFY(!changed.isEmpty());
        TonePlayer firstPlayer(m_server->address(), "first");
        firstPlayer.play(tone(440));
        QTRY_VERIFY_WITH_TIMEOUT(stayer.hears(440) && !stayer.hears(3000), kPatienceMs);
        QVERIFY(!follower.hears(440));

        // The default is pulled out: the follower moves on by itself.
        QVERIFY(m_server->removeSink("second"));
        QTRY_VERIFY_WITH_TIMEOUT(follower.hears(440), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(manager.allCapturers(), QList<QString>({"default", kFirst}), kPatienceMs);
    }

    void tellsOfASourceThatGoesAndFeedsItsCapturerWhenItIsBack()
    {
        AudioCapManager manager(createAudioBackend());
        std::unique_ptr<Listener> listener;
        for (const auto& [rate, channels] : {std::pair(192000, 2), {48000, 1}, {48000, 6}}) {
            QVERIFY(m_server->addSink("second", rate, channels));
            QTRY_VERIFY_WITH_TIMEOUT(manager.allCapturers().contains(kSecond), kPatienceMs);
            if (!listener)
                listener = std::make_unique<Listener>(manager, kSecond);
            TonePlayer player(m_server->address(), "second");
            player.play(tone(3000));
            const auto isHeard = [&](int side) { return qAbs(listener->level(3000, side) - 60) < 8; };
            QTRY_VERIFY_WITH_TIMEOUT(isHeard(0) && isHeard(1), kPatienceMs);
            QVERIFY(m_server->removeSink("second"));
            QTRY_VERIFY_WITH_TIMEOUT(!manager.allCapturers().contains(kSecond), kPatienceMs);
            QVERIFY(manager.acquireCapturer(kSecond).isNull());
            QTRY_COMPARE_WITH_TIMEOUT(listener->level(3000), 0.F, kPatienceMs);
        }
    }

    void survivesTheServer()
    {
        m_server->stop();
        AudioCapManager manager(createAudioBackend());
        QVERIFY(manager.acquireCapturer(kFirst).isNull() && !manager.isServerThere());
        QVERIFY(m_server->start());
        QTRY_VERIFY_WITH_TIMEOUT(!manager.defaultCapturer().isEmpty(), kPatienceMs);
        const Listener listener(manager, manager.defaultCapturer());
        for (const float hertz : {440.F, 3000.F}) {
            TonePlayer player(m_server->address(), "first");
            player.play(tone(hertz));
            QTRY_VERIFY_WITH_TIMEOUT(listener.hears(hertz), kPatienceMs);
            m_server->stop();
            QTRY_VERIFY_WITH_TIMEOUT(manager.allCapturers().isEmpty(), kPatienceMs);
            QVERIFY(!manager.isServerThere());
            QTRY_COMPARE_WITH_TIMEOUT(listener.level(hertz), 0.F, kPatienceMs);
            QVERIFY(m_server->start());
        }
    }

    void neverHangsWithAServerThatAnswersNothing()
    {
        m_server->freeze();
        QVERIFY(AudioCapManager(createAudioBackend()).allCapturers().isEmpty()); // ends while it connects
        AudioCapManager manager(createAudioBackend(), 0);
        m_server->thaw();
        QTRY_VERIFY_WITH_TIMEOUT(manager.allCapturers().contains(kFirst), kPatienceMs);
        m_server->freeze(); // a recording is over before it begins
        QVERIFY(manager.acquireCapturer(kFirst));
        manager.releaseCapturer(kFirst);
        QCoreApplication::processEvents();
        m_server->thaw();
        const Listener listener(manager, kFirst);
        QTRY_COMPARE_WITH_TIMEOUT(listener.level(440), 0.F, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(recordings(*m_server), 1, kPatienceMs);
        m_server->freeze(); // ends while it records
    }

private:
    std::unique_ptr<SoundServer> m_server;
};

QTEST_GUILESS_MAIN(TestAudioCapture)
#include "tst_audio_capture.moc"
