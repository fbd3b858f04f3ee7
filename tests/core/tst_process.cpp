#include "ProgramUnderTest.h"

#include <QDir>
#include <QJsonObject>
#include <QtTest>
#include <algorithm>
#include <csignal>
#include <sys/stat.h>
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

    void whatIsSomebodyElsesIsNotTrusted_data()
    {
        QTest::addColumn<QStringList>("foreign");
        const QString own = QString("tmp/lumivar-%1").arg(getuid());
        QTest::newRow("runtime folder") << QStringList{"run"}; // there is another
        QTest::newRow("both folders") << QStringList{"run", own};
        QTest::newRow("lock") << QStringList{"run/LumivarSingleApp.lock"};
    }

    void whatIsSomebodyElsesIsNotTrusted()
    {
        QFETCH(QStringList, foreign);
        for (const QString& name : foreign)
            putSomebodyElses(m_sandbox->path(name));
        const auto process = startReady();
        QVERIFY(process);
        for (const QString& name : foreign)
            QVERIFY2(count(qPrintable("[RuntimeFile]: " + m_sandbox->path(name))) > 0, qPrintable(name));
        if (foreign == QStringList{"run"}) {
            QVERIFY(endsWell(*start()));
            QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 1, kPatienceMs);
        }
        QVERIFY(terminateWell(*process));
        for (const QString& name : foreign) {
            const QFileInfo info(m_sandbox->path(name));
            QVERIFY(info.isSymLink() || info.size() == 0 || QDir(info.filePath()).isEmpty()); // untouched
        }
    }

    void aCleanStartEndsOnAnySignal_data()
    {
        QTest::addColumn<int>("signal");
        for (const int signal : {SIGTERM, SIGINT, SIGHUP})
            QTest::addRow("%d", signal) << signal;
    }

    void aCleanStartEndsOnAnySignal()
    {
        QFETCH(int, signal);
        // The clean start changes this value; that it arrives on the disk shows that the exit has saved.
        m_sandbox->writeConfig("global.json", {{"cleanStartup", true}});
        m_sandbox->writeConfig("app.json", {{"marker", 1}});
        const auto process = startReady();
        QVERIFY(process);
        for (int i = 0; i < 5; ++i) // more of them change nothing
            ::kill(pid_t(process->processId()), signal);
        QVERIFY(endsWell(*process));
        QCOMPARE(m_sandbox->readConfig("global.json").value("cleanStartup"), QJsonValue(false));
        QVERIFY(!m_sandbox->readConfig("app.json").contains("marker"));
        QVERIFY(!QFile::exists(m_sandbox->path("run/LumivarSingleApp.lock")));
    }

    void pipesInPlaceOfFilesHoldNothingUp()
    {
        const QDir folder(m_sandbox->useCopyOfProgramFolder());
        QVERIFY(QDir().mkpath(m_sandbox->configFile("")));
        for (const QString& path :
             {m_sandbox->configFile("app.json"), m_sandbox->portsFile(), folder.filePath("defaults.json"),
              folder.filePath("controler_config/LVController.json"),
              folder.filePath("effects/groups.json")}) {
            QFile::remove(path);
            QCOMPARE(mkfifo(path.toUtf8().constData(), S_IRUSR | S_IWUSR), 0);
        }
        const auto process = startReady();
        QVERIFY(process);
        QVERIFY(terminateWell(*process));
        QVERIFY2(count("not a regular file") >= 3, qPrintable(m_sandbox->standardError()));
    }

    void theConsoleHasNoCopyOfTheLogUnasked()
    {
        m_sandbox->environment.remove("LUMIVAR_LOG_TO_CONSOLE"); // which the other cases set and read
        const auto process = start();
        QTRY_VERIFY_WITH_TIMEOUT(m_sandbox->logText().contains(kReady), kPatienceMs);
        QVERIFY(terminateWell(*process));
        QCOMPARE(m_sandbox->standardError(), QString());
    }

    void aBadHomeDoesNotPreventTheStart_data()
    {
        QTest::addColumn<QString>("variable");
        for (const char* variable : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"})
            QTest::newRow(variable) << variable;
    }

    void aBadHomeDoesNotPreventTheStart()
    {
        QFETCH(QString, variable);
        m_sandbox->environment.insert(variable, "/dev/null/nowhere");
        if (variable == "HOME") {
            m_sandbox->environment.remove("XDG_CONFIG_HOME");
            m_sandbox->environment.remove("XDG_DATA_HOME");
        }
        const auto process = startReady();
        QVERIFY(process);
        const QString folder = QFile::symLinkTarget(QString("/proc/%1/cwd").arg(process->processId()));
        QCOMPARE(folder, QDir().canonicalPath()); // the program's own, wherever it was started
        QVERIFY(endsWell(*start()));
        QTRY_COMPARE_WITH_TIMEOUT(count(kWokenUp), 1, kPatienceMs);
        QVERIFY(terminateWell(*process));
    }
};

QTEST_GUILESS_MAIN(tst_process)
#include "tst_process.moc"
