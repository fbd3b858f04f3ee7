#include "PrivateBus.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTcpServer>
#include <QtTest>

namespace {

constexpr int kWaitMs = 30000;
constexpr int kLeds = 20;
const QString kId = "LV0127:01020304";

/// Answers every question for a version, which is all that is asked of it.
class FakePortal : public QDBusVirtualObject
{
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        questions += message.member();
        if (isSilent)
            return true;
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(4U))));
    }

    QStringList questions;
    bool isSilent = false;
};

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
    void cleanup() { m_program.reset(); }

    void tellsEachReasonAndWhatWorks()
    {
        using Mode = StripSimulator::ReplyMode;
        const std::pair<Mode, const char*> rows[] = {{Mode::Silent, "ttySIM0 does not answer"},
                                                     {Mode::Garbage, "ttySIM1 is not recognised ("},
                                                     {Mode::Silent, "The port ttySIM2 is in use: sleep ("}};
        std::vector<std::unique_ptr<StripSimulator>> strips;
        for (const auto& row : rows)
            strips.push_back(plugIn(int(strips.size()), row.first));
        MortalProcess other;
        other.setStandardInputFile(strips.back()->location());
        other.start("sleep", {"100"});
        QVERIFY(other.waitForStarted());
        // Its display takes connections and says nothing: that must not hold it up.
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        m_program->setDisplay("127.0.0.1:" + QByteArray::number(server.serverPort() - 6000));
        QString text = consult(1);
        QVERIFY(text.contains("There is no display"));
        m_program->environment.remove("DISPLAY");
        for (const auto& row : rows)
            QVERIFY2(text.contains(row.second), qPrintable(text));
        QCOMPARE(strips.back()->counters().probes, 0); // somebody has it

        strips.push_back(plugIn(3, Mode::Normal, "LV9999"));
        strips.front()->unplug();
        text = consult(0);
        QVERIFY2(text.contains("ttySIM3: LV9999 is ready"), qPrintable(text));
        for (const char* line : {"not known yet: LV9999", "No sound server", "is not running"})
            QVERIFY(text.contains(line));
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
        const QString text = consult(0);
        QVERIFY2(text.contains("ttySIM0: driven by the running Lumivar"), qPrintable(text));
        QVERIFY2(!text.contains("ttySIM1: driven") && text.contains("ttySIM1"), qPrintable(text));
        QVERIFY(text.contains(QString("running (%1)").arg(m_program->process().processId())));
        const auto present = strip->counters();
        QTRY_VERIFY_WITH_TIMEOUT(strip->counters().frames > present.frames, kWaitMs); // goes on
        QVERIFY(present.probes == 1 && !m_program->logText().contains("a second process was started"));
        QVERIFY(m_program->terminate());
        QVERIFY(consult(0).contains("LV0127 is ready")); // and without it
    }

    void looksForThePortalOfAWaylandDesktop()
    {
        PrivateBus bus;
        QVERIFY(bus.start());
        m_program->environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        m_program->environment.insert("WAYLAND_DISPLAY", "wayland-9");
        QVERIFY(consult(1).contains("has no portal"));
        FakePortal portal;
        QDBusConnection connection = bus.connection("portal");
        QVERIFY(connection.registerVirtualObject("/org/freedesktop/portal/desktop", &portal));
        QVERIFY(connection.registerService("org.freedesktop.portal.Desktop"));
        QVERIFY(consult(1).contains("asks you at the first use"));
        m_program->writeConfig("app.json", {{"runtime.screenCastToken", "token"}});
        QVERIFY(consult(1).contains("with your consent"));
        portal.isSilent = true;
        QVERIFY(consult(1).contains("does not answer"));
        QCOMPARE(portal.questions, QStringList({"Get", "Get", "Get"})); // no session, no dialog
    }

    void speaksTheUsersLanguageAndStandsInTheHelp()
    {
        m_program->environment.insert("LC_ALL", "de_DE.UTF-8");
        QVERIFY(consult(1).contains("Das Programm läuft nicht"));
        m_program->environment.insert("LC_ALL", "C"); // as over ssh
        m_program->writeConfig("app.json", {{"language", "zh"}});
        QVERIFY(consult(1).contains("程序没有在运行"));
        const auto help = m_program->startAnother({"--help"});
        QVERIFY(ProgramUnderTest::endsWell(*help));
        QVERIFY(help->readAllStandardOutput().contains("--doctor"));
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
    /// What it says; empty when it ends otherwise than so.
    QString consult(int exitCode)
    {
        const auto doctor = m_program->startAnother({"--doctor"});
        QTRY_LOOP_IMPL(doctor->state() == QProcess::NotRunning, kWaitMs, 20); // its partners live here
        const QString text = QString::fromUtf8(doctor->readAllStandardOutput());
        const bool isEnd = doctor->exitStatus() == QProcess::NormalExit && doctor->exitCode() == exitCode;
        return isEnd ? text : QString();
    }

    std::unique_ptr<ProgramUnderTest> m_program;
};

QTEST_GUILESS_MAIN(DoctorTest)
#include "tst_doctor.moc"
