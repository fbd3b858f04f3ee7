#include "FakeLogind.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "VirtualDisplay.h"

#include <QtTest>

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 15000)

class SessionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        QVERIFY(m_bus->start());
        m_logind = std::make_unique<FakeLogind>(*m_bus);
        QVERIFY(m_logind->comes());
        m_program = std::make_unique<ProgramUnderTest>();
        for (const char* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            m_program->environment.insert(bus, m_bus->address());
        m_program->writeConfig("controllers.json",
                               {{"LV0127:01020304", storedStrip("id.effect.singleColor.singleColor1", 120)}});
        m_options.portsFile = m_program->portsFile();
        m_options.bytesPerSecond = 11520;
        m_strip = std::make_unique<StripSimulator>(m_options);
        QVERIFY(m_strip->plugIn());
    }
    void cleanup()
    {
        m_strip.reset();
        m_program.reset();
        m_logind.reset();
        m_bus.reset();
    }

    void everySleepWaitsForTheStripAndEndsInLight()
    {
        start();
        for (int round = 1; round <= 10; ++round) {
            sleep();
            if (round == 1) { // the button counts, and shows later
                for (const char* enable : {"0", "1"}) {
                    m_strip->pressButton();
                    TRY(m_program->logText().contains(QString("enable status changed to ") + enable));
                    QVERIFY(!isLit());
                }
            }
            resume();
            TRY(isLit() && m_logind->held == 1);
        }
        QCOMPARE(m_logind->taken, 11);
    }

    void stripMayComeBackBeforeTheMachineOrAfterIt()
    {
        start();
        for (const bool isEarly : {true, false}) {
            sleep();
            m_strip->unplug();
            TRY(m_program->logText().count("has been removed") == (isEarly ? 1 : 2));
            if (isEarly) {
                QVERIFY(m_strip->plugIn());
                TRY(m_program->logText("devices").contains("Asked after the machine's sleep"));
            }
            resume();
            QVERIFY(m_strip->plugIn());
            TRY(isLit() && m_logind->held == 1);
        }
    }

    void portThatIsBeingProbedIsLetGoAndAskedAgain()
    {
        m_strip->setReplyMode(StripSimulator::ReplyMode::Silent);
        m_program->start();
        TRY(m_strip->counters().probes == 1 && m_logind->held == 1);
        QVERIFY(hasStripOpen());
        m_logind->prepareFor("Sleep", true);
        TRY(m_logind->held == 0);
        QVERIFY(!hasStripOpen());
        m_strip->setReplyMode(StripSimulator::ReplyMode::Normal);
        resume();
        TRY(isLit());
    }

    void sleepIsOverWhenTheManagerSaysSoOrIsGone()
    {
        m_logind->goes();
        m_logind->isLocked = true;
        m_program->start();
        TRY(isLit());
        m_logind->refuses = true;
        QVERIFY(m_logind->comes()); // late
        TRY(!isLit());
        m_logind->setLocked(false);
        TRY(isLit());
        m_logind->prepareFor("Sleep", true); // waits for nobody, and it is dark all the same
        TRY(!isLit() && m_logind->asked > 0);
        m_logind->asked = 0;
        TRY(m_logind->asked > 0);
        QVERIFY(!isLit());
        m_logind->refuses = false;
        m_logind->isPreparing = false; // without a word
        TRY(isLit() && m_logind->held == 1);
        sleep();
        m_logind->goes();
        TRY(isLit());
        QVERIFY(m_logind->comes());
        TRY(m_logind->held == 1);
        sleep();
        m_bus->stop();
        TRY(isLit());
        QVERIFY(m_program->terminate());
    }

    void lightIsOffWhileTheScreenIs()
    {
        m_logind->isSaverActive = true; // before there is a device
        m_program->start();
        TRY(m_strip->counters().frames > 0 && m_logind->held == 1);
        m_logind->setLocked(true);
        m_logind->setSaverActive(false);
        m_logind->prepareFor("Sleep", true);
        TRY(m_logind->held == 0);
        resume();
        TRY(m_logind->held == 1);
        for (const StripFrame& frame : m_strip->frames())
            QCOMPARE(frame.colors.count(LV_RGB{}), frame.colors.size());
        m_logind->setLocked(false);
        TRY(isLit());
        m_logind->setLocked(true);
        TRY(!isLit());
        m_logind->prepareFor("Sleep", true);
        m_logind->isLocked = false; // unheard
        resume();
        TRY(isLit());
    }

    void lightStaysOnWhereTheUserWantsIt()
    {
        m_program->writeConfig("app.json", {{"lightsOffWhileLocked", false}});
        start();
        m_logind->setLocked(true);
        m_strip->clear();
        TRY(m_strip->frames().size() > 2);
        QVERIFY(isLit());
        sleep(); // then it is off in any case
    }

    void lockNeedNotWaitForADialog()
    {
        VirtualDisplay display(QSize(1280, 720));
        QVERIFY(display.start());
        m_program->setDisplay(display.name());
        start();
        m_options.portName = "ttySIM9";
        m_options.model = "LV9999"; // whose LEDs only the user knows
        StripSimulator unknown(m_options);
        QVERIFY(unknown.plugIn());
        TRY(unknown.counters().frames > 0);
        for (const bool locked : {true, false}) {
            m_logind->setLocked(locked);
            TRY(isLit() != locked);
        }
    }

    void shutdownWaitsForTheStripAndEndsTheProgram()
    {
        start();
        m_logind->prepareFor("Shutdown", true);
        TRY(m_logind->held == 0);
        QVERIFY(!isLit() && m_strip->lastFrame().lastByteMs <= m_logind->releasedMs);
        QVERIFY(ProgramUnderTest::endsWell(m_program->process()));
    }

private:
    bool isLit() const
    {
        const QVector<LV_RGB> shown = m_strip->shownColors();
        return shown.count(LV_RGB{}) < shown.size();
    }
    void start()
    {
        m_program->start();
        TRY(isLit() && m_logind->held == 1);
    }
    /// Black is on the strip before the machine may go on.
    void sleep()
    {
        m_logind->prepareFor("Sleep", true);
        TRY(m_logind->held == 0);
        QVERIFY(!isLit() && m_strip->lastFrame().lastByteMs <= m_logind->releasedMs);
    }
    void resume() { m_logind->prepareFor("Sleep", false); }
    bool hasStripOpen() const
    {
        const QString port = QFileInfo(m_strip->location()).symLinkTarget();
        const QDir files(QString("/proc/%1/fd").arg(m_program->process().processId()));
        const QFileInfoList open = files.entryInfoList(QDir::Files | QDir::System);
        return std::any_of(open.begin(), open.end(),
                           [&port](const QFileInfo& file) { return file.symLinkTarget() == port; });
    }

    StripSimulator::Options m_options;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<FakeLogind> m_logind;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(SessionTest)
#include "tst_session.moc"
