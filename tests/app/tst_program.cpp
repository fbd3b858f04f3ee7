#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "SoundServer.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "TonePlayer.h"
#include "VirtualDisplay.h"

#include <QtTest>
#include <csignal>

namespace {

constexpr int kWaitMs = 15000;
constexpr QSize kScreen(1280, 720);
constexpr int kLeds = 120;
constexpr int kLeftmost = 31, kRightmost = 119; ///< LEDs, by the shipped map
constexpr std::uint8_t kFull = 204;             ///< full brightness of a strip at 0.8
constexpr LV_RGB kGreen{0, kFull, 0};
const QString kStripId = "LV0127:01020304";

constexpr TonePlayer::Tone kTone{440, 0.6F};
constexpr int kLitByTone = 70; ///< two bars of 59 steps each, 0.6 of them

/// How many LEDs have light.
int lit(const StripSimulator& strip)
{
    const QVector<LV_RGB> shown = strip.shownColors();
    return shown.size() - shown.count(LV_RGB{});
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_program = std::make_unique<ProgramUnderTest>();
        m_strip = makeStrip();
        QVERIFY(m_strip->plugIn());
    }
    void cleanup()
    {
        m_program.reset();
        m_strip.reset();
    }

    void stripFollowsTheScreenUntilTheEnd()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter screen(display.name());
        screen.fill(QRect(QPoint(), kScreen), Qt::red);
        m_program->setDisplay(display.name());
        store("id.effect.screenSync.fullScreen");
        m_program->start({"--auto_startup"}); // no window on the screen that is looked at
        QTRY_VERIFY_WITH_TIMEOUT(m_strip->shows({kFull, 0, 0}), kWaitMs);
        QCOMPARE(m_strip->shownColors().size(), kLeds);

        screen.fill({0, 0, kScreen.width() / 2, kScreen.height()}, Qt::green);
        screen.fill({kScreen.width() / 2, 0, kScreen.width() / 2, kScreen.height()}, Qt::blue);
        QTRY_COMPARE_WITH_TIMEOUT(m_strip->shownColors().at(kLeftmost), kGreen, kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_strip->shownColors().at(kRightmost), (LV_RGB{0, 0, kFull}), kWaitMs);

        m_strip->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(m_program->logText().contains("Device has failed: "), kWaitMs);
        screen.fill(QRect(QPoint(), kScreen), Qt::green);
        m_strip->clear();
        QVERIFY(m_strip->plugIn());
        QTRY_VERIFY_WITH_TIMEOUT(m_strip->shows(kGreen), kWaitMs);

        for (const LV_RGB color : {LV_RGB{}, kGreen}) {
            m_strip->pressButton();
            QTRY_VERIFY_WITH_TIMEOUT(m_strip->shows(color), kWaitMs);
        }
        endAndGoDark();
        const QJsonObject stored = m_program->readConfig("controllers.json")[kStripId].toObject();
        QCOMPARE(stored["subMode"].toString(), "id.effect.screenSync.fullScreen");
        QVERIFY(stored["enable"].toBool());

        m_program->start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(m_strip->shows(kGreen), kWaitMs);
        display.stop(); // and the toolkit ends the process
        QTRY_VERIFY_WITH_TIMEOUT(!m_program->isRunning(), kWaitMs);
        QTRY_VERIFY(m_strip->shows({}));
    }

    void stripFollowsTheSoundUntilTheEnd()
    {
        SoundServer server;
        QVERIFY(server.start());
        m_program->environment.insert("PULSE_SERVER", server.address());
        store("id.effect.dynamicMusic.peakValues_1");
        m_program->start();
        TonePlayer player(server.address(), "first");
        const auto releasePlayer = qScopeGuard([&server] { server.stop(); });
        for (const bool isLoud : {true, false, true}) {
            player.play(isLoud ? kTone : TonePlayer::Tone());
            QTRY_COMPARE_WITH_TIMEOUT(lit(*m_strip), isLoud ? kLitByTone : 0, kWaitMs);
        }
        server.freeze();
        endAndGoDark();
        const QString missed = "Not connected to any capturer";
        const int before = m_program->logText().count(missed);
        m_program->start(); // nor does it wait for an answer here
        QTRY_VERIFY_WITH_TIMEOUT(m_program->logText().count(missed) > before, kWaitMs);
        QVERIFY(m_program->terminate());
    }

    void tenStripsComeAndGoTogetherAlsoInACrash()
    {
        m_program->start();
        QTRY_COMPARE_WITH_TIMEOUT(m_strip->shownColors().size(), kLeds, kWaitMs); // the model's own count
        std::vector<std::unique_ptr<StripSimulator>> strips;
        for (int i = 1; i < 10; ++i) { // found because the list of ports changes
            strips.push_back(makeStrip(i));
            QVERIFY(strips.back()->plugIn());
        }
        for (const auto& strip : strips)
            QTRY_VERIFY_WITH_TIMEOUT(strip->counters().frames > 3, kWaitMs);
        QVERIFY(m_program->terminate());
        for (const auto& strip : strips)
            QTRY_VERIFY(strip->shows({}));
        QCOMPARE(m_program->readConfig("controllers.json").size(), 10);
        QCOMPARE(m_program->readConfig("controllers.json")[kStripId].toObject()["colorPipeline"], "linear");

        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(lit(*m_strip) > 0, kWaitMs);
        ::kill(static_cast<pid_t>(m_program->process().processId()), SIGSEGV);
        QTRY_VERIFY_WITH_TIMEOUT(!m_program->isRunning(), kWaitMs);
        QCOMPARE(m_program->process().exitStatus(), QProcess::CrashExit);
        QTRY_VERIFY(m_strip->shows({}));
    }

    void runsPluginsFromItsFolders()
    {
        const QDir folder(m_program->useCopyOfProgramFolder());
        folder.mkpath("deviceEnumerators");
        QVERIFY(QFile::copy(EXAMPLE_EFFECT, folder.filePath("effects/example.so")));
        QVERIFY(QFile::copy(EXAMPLE_ENUMERATOR, folder.filePath("deviceEnumerators/example.so")));
        store("id.effect.colorful.breathing");
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(m_strip->counters().frames > 5, kWaitMs);
        QVERIFY(m_program->terminate());
        QVERIFY(m_program->logText().contains(kStripId + " has connected to id.effect.colorful.breathing"));
        QCOMPARE(m_program->logText().count("A new controller has been added to manager: "), 2);
    }

    void survivesBrokenDataFiles()
    {
        const QByteArray wrongTypes = R"({"LV0127": [], "groups": {"id": 7}, "key_array": 5})";
        for (const QByteArray& contents : {wrongTypes, QByteArray(5000, '\xff')}) {
            init();
            const QDir folder(m_program->useCopyOfProgramFolder());
            store("id.effect.colorful.ColorMap_3");
            for (const char* file :
                 {"controler_config/LVController.json", "controler_config/LV0127.json", "effects/groups.json",
                  "effects/colorful/ColorMap_3.png", "images/products/LV0127.jpg", "effects/broken.so",
                  "deviceEnumerators/broken.so"})
                ProgramUnderTest::writeFile(folder.filePath(file), contents);
            m_program->start();
            QTRY_COMPARE_WITH_TIMEOUT(m_strip->shownColors().size(), kLeds, kWaitMs); // as stored
            QVERIFY(m_program->terminate());
        }
    }

private:
    std::unique_ptr<StripSimulator> makeStrip(int number = 0) const
    {
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        options.portName = QString("ttySIM%1").arg(number);
        options.bytesPerSecond = 11520;
        if (number > 0)
            options.serial[3] = static_cast<char>(0x40 + number);
        return std::make_unique<StripSimulator>(options);
    }
    void endAndGoDark() const
    {
        QVERIFY(m_program->terminate());
        QTRY_VERIFY(m_strip->shows({}));
    }
    /// What the program finds as the strip's last effect.
    void store(const QString& effect) const
    {
        m_program->writeConfig("controllers.json", {{kStripId, storedStrip(effect, kLeds, 0.8)}});
    }

    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
