#include "ProgramUnderTest.h"
#include "ScreenPortal.h"
#include "StoredStrip.h"
#include "StripSimulator.h"

#include <QTcpServer>
#include <QtTest>

namespace {

constexpr int kWaitMs = 30000;
constexpr int kLeds = 20;
const QString kId = "LV0127:01020304";

} // namespace

/// `lumivar --doctor`, a whole program beside devices, other programs and itself.
class DoctorTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_program = std::make_unique<ProgramUnderTest>();
        m_program->environment.insert("LC_ALL", "C");
        m_program->environment.insert("PULSE_SERVER", "unix:/nowhere");
        m_program->environment.remove("DBUS_SESSION_BUS_ADDRESS");
    }

    void tellsEachReasonAndWhatWorks()
    {
        using Mode = StripSimulator::ReplyMode;
        std::vector<std::unique_ptr<StripSimulator>> strips;
        for (const Mode mode : {Mode::Silent, Mode::Garbage, Mode::Silent})
            strips.push_back(plugIn(int(strips.size()), mode));
        MortalProcess other;
        other.setStandardInputFile(strips.back()->location());
        other.start("sleep", {"100"});
        QVERIFY(other.waitForStarted());
        // Its display takes connections and says nothing: that must not hold it up.
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        m_program->setDisplay("127.0.0.1:" + QByteArray::number(server.serverPort() - 6000));
        QVERIFY(says(1, {"ttySIM0 does not answer", "ttySIM1 is not recognised (",
                         "The port ttySIM2 is in use: sleep (", "There is no display"}));
        m_program->environment.remove("DISPLAY");
        QCOMPARE(strips.back()->counters().probes, 0); // somebody has it

        strips.push_back(plugIn(3, Mode::Normal, "LV9999"));
        strips.front()->unplug();
        QVERIFY(says(
            0, {"ttySIM3: LV9999 is ready", "not known yet: LV9999", "No sound server", "is not running"}));
        QVERIFY(!QFile::exists(m_program->configFile({}))); // stores nothing
        QVERIFY(QDir(m_program->path("run")).isEmpty());    // and locks nothing
    }

    void leavesTheRunningProgramAndItsStripAlone()
    {
        const auto strip = plugIn(0, StripSimulator::ReplyMode::Normal);
        m_program->writeConfig("controllers.json",
                               {{kId, storedStrip("id.effect.singleColor.singleColor1", kLeds)}});
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(strip->counters().frames > 2, kWaitMs);
        const auto mute = plugIn(1, StripSimulator::ReplyMode::Silent);
        QTRY_VERIFY_WITH_TIMEOUT(mute->counters().probes > 0, kWaitMs); // has it open, and no device
        const auto process = QString("running (%1)").arg(m_program->process().processId());
        QVERIFY(says(0, {"ttySIM0: driven by the running Lumivar", "ttySIM1", process}, "ttySIM1: driven"));
        const auto present = strip->counters();
        QTRY_VERIFY_WITH_TIMEOUT(strip->counters().frames > present.frames, kWaitMs); // goes on
        QVERIFY(present.probes == 1 && !m_program->logText().contains("a second process was started"));
        QVERIFY(m_program->terminate());
        QVERIFY(says(0, {"LV0127 is ready"})); // and without it
    }

    void looksForThePortalOfAWaylandDesktop()
    {
        PrivateBus bus;
        QVERIFY(bus.start());
        m_program->environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        m_program->environment.insert("WAYLAND_DISPLAY", "wayland-9");
        QVERIFY(says(1, {"has no portal"}));
        ScreenPortal portal(bus);
        QVERIFY(portal.come());
        QVERIFY(says(1, {"asks you at the first use"}));
        m_program->writeConfig("app.json", {{"runtime.screenCastToken", "token"}});
        QVERIFY(says(1, {"with your consent"}));
        portal.faults["Get"] = ScreenPortal::Fault::Silent;
        QVERIFY(says(1, {"does not answer"}));
        QCOMPARE(portal.calls, QStringList({"Get", "Get", "Get"})); // no session, no dialog
    }

    void speaksTheUsersLanguage()
    {
        m_program->environment.insert("LC_ALL", "de_DE.UTF-8");
        QVERIFY(says(1, {"Das Programm läuft nicht"}));
        m_program->environment.insert("LC_ALL", "C"); // as over ssh
        m_program->writeConfig("app.json", {{"language", "zh"}});
        QVERIFY(says(1, {"程序没有在运行"}));
    }

private:
    std::unique_ptr<StripSimulator> plugIn(int number, StripSimulator::ReplyMode mode,
                                           const QByteArray& model = "LV0127")
    {
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        options.portName = QString("ttySIM%1").arg(number);
        options.replyMode = mode;
        options.model = model;
        auto strip = std::make_unique<StripSimulator>(options);
        return strip->plugIn() ? std::move(strip) : nullptr;
    }
    /// Whether it ends so, says all of that and not the last.
    bool says(int exitCode, const QStringList& all, const QString& never = {})
    {
        const auto doctor = m_program->startAnother({"--doctor"});
        QTRY_LOOP_IMPL(doctor->state() == QProcess::NotRunning, kWaitMs, 20); // its partners live here
        const QString text = QString::fromUtf8(doctor->readAllStandardOutput());
        qInfo().noquote() << text;
        return doctor->exitStatus() == QProcess::NormalExit && doctor->exitCode() == exitCode &&
               (never.isEmpty() || !text.contains(never)) &&
               std::all_of(all.begin(), all.end(), [&](const QString& each) { return text.contains(each); });
    }

    std::unique_ptr<ProgramUnderTest> m_program;
};

QTEST_GUILESS_MAIN(DoctorTest)
#include "tst_doctor.moc"
