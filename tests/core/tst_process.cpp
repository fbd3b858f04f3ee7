#include "ProgramUnderTest.h"

#include <QtTest>
#include <algorithm>
#include <csignal>
#include <unistd.h>
#include <vector>

/// The program as a process: one instance, its start in odd surroundings, its end on signals.
class tst_process : public QObject
{
    Q_OBJECT

private:
    static constexpr int kPatienceMs = 30000;
    static constexpr char kReady[] = "[CrashHandler]: dumps go to";
    static constexpr char kWokenUp[] = "[WakeUp]: a second process was started";

    std::unique_ptr<ProgramUnderTest> m_sandbox;

    int count(const char* text) const { return m_sandbox->standardError().count(text); }

    std::unique_ptr<QProcess> start(const QStringList& arguments = {})
    {
        return m_sandbox->startAnother(arguments);
    }

    /// The program when it has come up; null when it does not.
    std::unique_ptr<QProcess> startReady()
    {
        auto process = start();
        const auto isReady = [this] { return count(kReady) == 1; };
        return QTest::qWaitFor(isReady, kPatienceMs) ? std::move(process) : nullptr;
    }

    static bool endsWell(QProcess& process) { return ProgramUnderTest::endsWell(process); }
    static bool terminateWell(QProcess& process)
    {
        process.terminate();
        return endsWell(process);
    }

    /// Only root can give something away; others lay a link to what is root's.
    static void putSomebodyElses(const QString& path)
    {
        constexpr uid_t kNobody = 65534;
        QDir(path).removeRecursively();
        if (getuid() != 0) {
            QVERIFY(QFile::link("/etc", path));
            return;
        }
        path.endsWith(".lock") ? ProgramUnderTest::writeFile(path, {}) : void(QDir().mkpath(path));
        QCOMPARE(chown(path.toUtf8().constData(), kNobody, kNobody), 0);
    }

private slots:
    void init() { m_sandbox = std::make_unique<ProgramUnderTest>(); }

    void ofEightSimultaneousStartsOneRuns()
    {
        std::vector<std::unique_ptr<QProcess>> processes(8);
        for (auto& process : processes)
            process = start();
        const auto running = [](const auto& process) { return process->state() == QProcess::Running; };
        const auto nbRunning = [&] { return std::count_if(processes.begin(), processes.end(), running); };
        QTRY_VERIFY_WITH_TIMEOUT(count(kReady) >= 1 && nbRunning() <= 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 7, kPatienceMs);
        QVERIFY(nbRunning() == 1 && count(kReady) == 1);
        QVERIFY(terminateWell(**std::find_if(processes.begin(), processes.end(), running)));
        for (const auto& process : processes)
            QVERIFY(endsWell(*process));
    }

    void whatAKilledProcessLeavesBehindIsNoObstacle()
    {
        const auto killed = startReady();
        QVERIFY(killed);
        killed->kill();
        QVERIFY(killed->waitForFinished(kPatienceMs));
        const auto next = start();
        QTRY_COMPARE_WITH_TIMEOUT(count(kReady), 2, kPatienceMs);
        QVERIFY(endsWell(*start({"--advanced", "--screenshot"})));
        QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 1, kPatienceMs);
        QVERIFY(terminateWell(*next));
    }

    void whatIsSomebodyElsesIsNotTrusted()
    {
        const QStringList folder{"run"}; // there is another
        const QStringList folders{"run", QString("tmp/lumivar-%1").arg(getuid())};
        const QStringList lock{"run/LumivarSingleApp.lock"};
        for (const QStringList& foreign : {folder, folders, lock}) {
            init();
            for (const QString& name : foreign)
                putSomebodyElses(m_sandbox->path(name));
            const auto process = startReady();
            QVERIFY(process);
            for (const QString& name : foreign)
                QVERIFY2(count(qPrintable("[RuntimeFile]: " + m_sandbox->path(name))) > 0, qPrintable(name));
            if (foreign == folder) {
                QVERIFY(endsWell(*start()));
                QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 1, kPatienceMs);
            }
            QVERIFY(terminateWell(*process));
            for (const QString& name : foreign) {
                const QFileInfo info(m_sandbox->path(name));
                QVERIFY(info.isSymLink() || info.size() == 0 || QDir(info.filePath()).isEmpty()); // untouched
            }
        }
    }

    void aCleanStartEndsOnAnySignal()
    {
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            init();
            // The clean start changes this value; that it arrives on the disk shows that the exit has saved.
            m_sandbox->writeConfig("global.json", {{"cleanStartup", true}});
            m_sandbox->writeConfig("app.json", {{"marker", 1}});
            const auto process = startReady();
            QVERIFY(process);
            for (int i = 0; i < 5; ++i) // more of them change nothing
                ::kill(pid_t(process->processId()), signal);
            QVERIFY2(endsWell(*process), strsignal(signal));
            QCOMPARE(m_sandbox->readConfig("global.json").value("cleanStartup"), QJsonValue(false));
            QVERIFY(!m_sandbox->readConfig("app.json").contains("marker"));
            QVERIFY(!QFile::exists(m_sandbox->path("run/LumivarSingleApp.lock")));
        }
    }

    void theConsoleHasNoCopyOfTheLogUnasked()
    {
        m_sandbox->environment.remove("LUMIVAR_LOG_TO_CONSOLE"); // which the other cases set and read
        const auto process = start();
        QTRY_VERIFY_WITH_TIMEOUT(m_sandbox->logText().contains(kReady), kPatienceMs);
        QVERIFY(terminateWell(*process));
        QCOMPARE(m_sandbox->standardError(), QString());
    }

    void aBadHomeDoesNotPreventTheStart()
    {
        for (const QString variable : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"}) {
            init();
            m_sandbox->environment.insert(variable, "/dev/null/nowhere");
            if (variable == "HOME") {
                m_sandbox->environment.remove("XDG_CONFIG_HOME");
                m_sandbox->environment.remove("XDG_DATA_HOME");
            }
            const auto process = startReady();
            QVERIFY2(process, qPrintable(variable));
            const QString folder = QFile::symLinkTarget(QString("/proc/%1/cwd").arg(process->processId()));
            QCOMPARE(folder, QDir().canonicalPath()); // the program's own, wherever it was started
            QVERIFY(endsWell(*start()));
            QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 1, kPatienceMs);
            QVERIFY(terminateWell(*process));
        }
    }
};

QTEST_GUILESS_MAIN(tst_process)
#include "tst_process.moc"
