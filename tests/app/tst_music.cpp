#include "ProgramUnderTest.h"
#include "SoundServer.h"
#include "StripSimulator.h"
#include "TonePlayer.h"

#include <QtTest>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kLeds = 120;
const QString kStripId = "LV0127:01020304";
const QString kBars = "id.effect.dynamicMusic.peakValues_1";
const QString kWholeStrip = "id.effect.dynamicMusic.peakValues_8";

constexpr TonePlayer::Tone kTone{440, 0.6F};
constexpr int kLitByTone = 70; ///< two bars of 59 steps each, 0.6 of them
constexpr TonePlayer::Tone kSoftTone{440, 0.3F};
constexpr int kLitBySoftTone = 34;

/// How many LEDs have light; -1 before the first frame.
int lit(const StripSimulator& strip)
{
    const QVector<LV_RGB> shown = strip.shownColors();
    return shown.isEmpty() ? -1 : shown.size() - shown.count(LV_RGB{});
}

/// Whether the program has a connection to the server.
bool isClientOf(const SoundServer& server)
{
    QByteArray clients;
    return server.control({"list", "clients"}, &clients) &&
           clients.contains("application.name = \"Lumivar\"");
}

int recordings(const SoundServer& server)
{
    QByteArray recordings;
    return server.control({"list", "short", "source-outputs"}, &recordings) ? recordings.count('\n') : -1;
}

} // namespace

/// The whole program on a music effect, with a real sound server.
class MusicTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_server = std::make_unique<SoundServer>();
        m_server->useHere(); // the program takes over the environment
        m_program = std::make_unique<ProgramUnderTest>();
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        options.bytesPerSecond = 11520;
        m_strip = std::make_unique<StripSimulator>(options);
        QVERIFY(m_strip->plugIn());
    }
    void cleanup()
    {
        m_program.reset();
        m_strip.reset();
        m_server.reset();
    }

    void stripFollowsTheSoundThroughAllChangesOfTheServer()
    {
        QVERIFY(m_server->start());
        QVERIFY(m_server->addSink("second"));
        start(kBars);
        {
            TonePlayer player(m_server->address(), "first");
            player.play(kTone);
            QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLitByTone, kWaitMs);
            player.play({});
            QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), 0, kWaitMs);
            player.play(kTone);
            QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLitByTone, kWaitMs);
            m_server->stop();
        }
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), 0, kWaitMs);

        QVERIFY(m_server->start());
        QVERIFY(m_server->addSink("second"));
        TonePlayer first(m_server->address(), "first");
        TonePlayer second(m_server->address(), "second");
        first.play(kTone);
        second.play(kSoftTone);
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLitByTone, kWaitMs);
        QVERIFY(m_server->removeSink("first")); // pulled out: what it played is lost or goes to the other one
        first.play({});
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLitBySoftTone, kWaitMs);
        QCOMPARE(recordings(*m_server), 1);

        QVERIFY(m_program->terminate()); // in the middle of the tone
        QTRY_COMPARE(lit(*m_strip), 0);
        QVERIFY(!isClientOf(*m_server));
    }

    void soundServerMayComeLater()
    {
        start(kWholeStrip);
        QTRY_VERIFY_WITH_TIMEOUT(m_program->logText().contains("There is no sound server"), kWaitMs);
        QVERIFY(m_server->start());
        TonePlayer player(m_server->address(), "first");
        player.play(kTone);
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLeds, kWaitMs);
        QVERIFY(isClientOf(*m_server));
        QVERIFY(m_program->terminate());
        QTRY_COMPARE(lit(*m_strip), 0);
    }

    void followsAnotherDefaultLoudspeaker()
    {
        QVERIFY(m_server->start());
        QVERIFY(m_server->addSink("second"));
        TonePlayer player(m_server->address(), "second");
        player.play(kTone);
        start(kBars);
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), 0, kWaitMs); // nothing plays on the default one
        QVERIFY(m_server->setDefaultSink("second"));
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLitByTone, kWaitMs);
        QVERIFY(m_program->terminate());
    }

    void otherEffectsLeaveTheSoundServerAlone()
    {
        QVERIFY(m_server->start());
        start("id.effect.singleColor.singleColor1");
        QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), kLeds, kWaitMs);
        QVERIFY(!isClientOf(*m_server));
        QVERIFY(m_program->terminate());
    }

private:
    void start(const QString& effect)
    {
        m_program->writeConfig("controllers.json",
                               {{kStripId, QJsonObject{{"brightness", 0.8},
                                                       {"enable", true},
                                                       {"nbLeds", kLeds},
                                                       {"workMode", effect.section('.', 0, -2)},
                                                       {"subMode", effect}}}});
        m_program->start();
    }

    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(MusicTest)
#include "tst_music.moc"
