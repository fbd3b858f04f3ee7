#include "LoginManager.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "system/WindowsSession.h"

#include <QtTest>
#include <csignal>

#define TRY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 15000)

class SessionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_bus.start());
        m_logind = std::make_unique<LoginManager>(m_bus);
        m_program = std::make_unique<ProgramUnderTest>();
        for (const char* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            m_program->environment.insert(bus, m_bus.address());
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
        m_bus.stop();
    }

    void everySleepWaitsForTheStripAndEndsInLight()
    {
        constexpr int kBack = 2, kLate = 3; // the rounds in which the strip goes, and when it comes
        start();
        for (int round = 1; round <= kLate; ++round) {
            sleep();
            for (const char* enable : {"0", "1"}) { // the button counts, and shows later
                if (round > 1)
                    break;
                m_strip->pressButton();
                TRY(m_program->logText().contains(QString("enable status changed to ") + enable));
                QVERIFY(!m_strip->isLit());
            }
            if (round == kBack || round == kLate) {
                m_strip->unplug();
                TRY(m_program->logText().count("has been removed") == round - 1);
            }
            if (round == kBack) {
                QVERIFY(m_strip->plugIn());
                TRY(m_program->logText("devices").contains("Asked after the machine's sleep"));
            }
            resume();
            QVERIFY(m_strip->isPlugged() || m_strip->plugIn());
            TRY(m_strip->isLit() && m_logind->held == 1);
        }
    }

    void nothingIsDarkForGoodWhereNobodyTellsOfTheEnd()
    {
        m_logind->leave();
        m_logind->isLocked = m_logind->refuses = true;
        m_program->start();
        TRY(m_strip->isLit());
        m_logind->come(); // late
        TRY(!m_strip->isLit());
        m_logind->setLocked(false);
        TRY(m_strip->isLit());
        m_logind->prepareFor("Sleep", true); // waits for nobody, and it is dark all the same
        TRY(!m_strip->isLit() && m_logind->asked > 0);
        QVERIFY(!m_strip->isLit());
        m_logind->refuses = m_logind->isPreparing = false; // without a word
        TRY(m_strip->isLit() && m_logind->held == 1);
        sleep();
        m_logind->leave();
        TRY(m_strip->isLit());
        m_logind->come();
        TRY(m_logind->held == 1);
        m_logind->setSaverActive(true);
        sleep();
        m_bus.stop();
        TRY(m_strip->isLit());
        QVERIFY(m_program->terminate());
    }

    void lightIsOffWhileTheScreenIs()
    {
        m_logind->isSaverActive = true; // before there is a device
        m_program->start();
        TRY(m_strip->counters().frames > 0 && m_logind->held == 1);
        m_logind->setLocked(true);
        m_logind->setSaverActive(false);
        sleep();
        resume();
        TRY(m_logind->held == 1);
        for (const StripFrame& frame : m_strip->frames())
            QCOMPARE(frame.colors.count(LV_RGB{}), frame.colors.size());
        m_logind->setLocked(false);
        TRY(m_strip->isLit());
        m_logind->setLocked(true);
        TRY(!m_strip->isLit());
        sleep();
        m_logind->isLocked = false; // unheard
        resume();
        TRY(m_strip->isLit());
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
            TRY(m_strip->isLit() != locked);
        }
    }

    void lightStaysOnWhereTheUserWantsItUntilTheEnd()
    {
        m_program->writeConfig("app.json", {{"lightsOffWhileLocked", false}});
        start();
        m_logind->setLocked(true);
        m_strip->clear();
        TRY(m_strip->frames().size() > 2);
        QVERIFY(m_strip->isLit());
        sleep("Shutdown");
        QVERIFY(ProgramUnderTest::endsWell(m_program->process()));
    }

    void messagesOfWindowsCountOnceInAnyOrder()
    {
        using News = WindowsSession::News;
        constexpr quint32 kPower = 0x218, kSession = 0x2B1, kEnd = 0x16;
        const std::tuple<quint32, quint64, News> rows[] = {
            {kPower, 0x12, News::None}, // nothing was said before
            {kPower, 4, News::AboutToSleep}, {kPower, 4, News::None},
            {kPower, 0xA, News::None}, // the battery's
            {kPower, 7, News::Resumed},      {kPower, 0x12, News::None},
            {kSession, 7, News::ScreenOff},  {kSession, 3, News::None},
            {kSession, 8, News::ScreenOn},   {kEnd, 0, News::None},
            {kEnd, 1, News::Ends},           {kEnd, 1, News::None},
        };
        WindowsSession session;
        for (const auto& [message, parameter, news] : rows)
            QCOMPARE(session.hear(message, parameter), news);

        QCOMPARE(session.hearDisplay(1), News::None);
        QCOMPARE(session.setLocked(true), News::ScreenOff);
        QCOMPARE(session.hearDisplay(0), News::None);
        QCOMPARE(session.hear(kSession, 8), News::None);
        QCOMPARE(session.hearDisplay(2), News::ScreenOn); // dimmed
        QVERIFY(!session.isScreenOff());
    }

private:
    void start()
    {
        m_program->start();
        TRY(m_strip->isLit() && m_logind->held == 1);
    }
    /// Black is on its way to the strip before the machine may go on: it gets there without the program.
    void sleep(const QString& what = "Sleep")
    {
        const auto pid = static_cast<pid_t>(m_program->process().processId());
        connect(m_logind.get(), &LoginManager::released, this, [pid] { ::kill(pid, SIGSTOP); });
        m_logind->prepareFor(what, true);
        TRY(m_logind->held == 0);
        TRY(!m_strip->isLit());
        m_logind->disconnect(this);
        ::kill(pid, SIGCONT);
    }
    void resume() { m_logind->prepareFor("Sleep", false); }

    StripSimulator::Options m_options;
    PrivateBus m_bus;
    std::unique_ptr<LoginManager> m_logind;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(SessionTest)
#include "tst_session.moc"
