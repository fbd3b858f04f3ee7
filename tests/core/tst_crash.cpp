#include "ProgramSandbox.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>
#include <csignal>

/// What a crash leaves behind: a dump, a reporter with its arguments, a process that died of its signal.
class tst_crash : public QObject
{
    Q_OBJECT

private:
    static constexpr int kPatienceMs = 30000;

    /// The only dump, after its name has been checked; empty if there is none.
    static QString readDump(const QString& configPath)
    {
        const QStringList names = QDir(configPath + "/dumps").entryList(QDir::Files);
        const QRegularExpression form(R"(^\d{4}(_\d\d){5}\.dmp$)");
        if (names.size() != 1 || !form.match(names[0]).hasMatch()) {
            qWarning() << "dumps:" << names;
            return {};
        }
        return QString::fromUtf8(ProgramSandbox::readFile(configPath + "/dumps/" + names[0]));
    }

    static QString section(const QString& dump, const QString& title)
    {
        return dump.section("\n" + title + ":\n", 1).section("\n\n", 0, 0);
    }

private slots:
    void everyCrashLeavesADumpAndStartsTheReporter_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("culprit");
        QTest::newRow("null pointer in a thread") << SIGSEGV << "writeToNowhere";
        QTest::newRow("stack overflow") << SIGSEGV << "overflowTheStack";
        QTest::newRow("stack overflow in a thread") << SIGSEGV << "overflowTheStack";
        QTest::newRow("lost stack") << SIGSEGV << "loseTheStack";
        QTest::newRow("wild jump") << SIGSEGV << "jumpToNowhere";
        QTest::newRow("fatal message") << SIGABRT << "abort";
        QTest::newRow("many threads") << SIGSEGV << "writeToNowhere";
    }

    void everyCrashLeavesADumpAndStartsTheReporter()
    {
        QFETCH(int, signal);
        QFETCH(QString, culprit);
        ProgramSandbox sandbox;
        const QString program = sandbox.copyBesideFakeReporter(CRASH_VICTIM);
        const auto process = sandbox.start(program, {QTest::currentDataTag()});
        QVERIFY(process->waitForFinished(kPatienceMs));
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);
        QCOMPARE(process->exitCode(), signal);

        const QString configPath = sandbox.configPath("");
        const QString dump = readDump(configPath);
        QVERIFY2(dump.contains(QStringLiteral("\nSignal: %1 (SIG").arg(signal)), qPrintable(dump.left(500)));
        QVERIFY2(section(dump, "Backtrace").contains(culprit), qPrintable(section(dump, "Backtrace")));
        QVERIFY2(section(dump, "Modules").contains(program), qPrintable(section(dump, "Modules")));
        QVERIFY(dump.contains("\nStack:\n"));
        QVERIFY(QRegularExpression(R"(\nBuild id: [0-9a-f]{16,}\n)").match(dump).hasMatch());

        const QByteArray expected = "--file\ncrash_victim\n--path\n" +
                                    sandbox.configPath("").chopped(1).toUtf8() + "\n--language\nfr_FR\n";
        QTRY_COMPARE_WITH_TIMEOUT(sandbox.reporterArguments(), expected, kPatienceMs);
    }

    void theProgramItselfHandsOver()
    {
        ProgramSandbox sandbox;
        sandbox.writeConfig("app.json", R"({"language": "zh_CN"})");
        const auto process = sandbox.start(sandbox.copyBesideFakeReporter(PROGRAM));
        QTRY_VERIFY_WITH_TIMEOUT(sandbox.output().contains("[CrashHandler]: dumps go to"), kPatienceMs);
        ::kill(pid_t(process->processId()), SIGSEGV);
        QVERIFY(process->waitForFinished(kPatienceMs));
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);

        const QString dump = readDump(sandbox.configPath(""));
        QVERIFY2(section(dump, "Backtrace").contains("lumivar(main+"),
                 qPrintable(section(dump, "Backtrace")));
        const QByteArray expected = "--file\nlumivar\n--path\n" + sandbox.configPath("").chopped(1).toUtf8() +
                                    "\n--language\nzh_CN\n";
        QTRY_COMPARE_WITH_TIMEOUT(sandbox.reporterArguments(), expected, kPatienceMs);

        const QDir logs(sandbox.configPath("logs"));
        const QStringList names = logs.entryList({"????_??_??_??_??_??.log"});
        QCOMPARE(names.size(), 1);
        const QByteArray log = ProgramSandbox::readFile(logs.filePath(names[0]));
        QVERIFY(log.contains(" WARN  app 0 - Appeared An unknown exception occurred. \n"));
        QVERIFY(log.contains(" - Sucesseded to write dump file " + sandbox.configPath("dumps/").toUtf8()));
    }

    void aDumpThatCannotBeWrittenStillLeadsToTheReporter()
    {
        ProgramSandbox sandbox;
        sandbox.writeConfig("dumps", "a file where the folder should be");
        const auto process = sandbox.start(sandbox.copyBesideFakeReporter(CRASH_VICTIM), {"wild jump"});
        QVERIFY(process->waitForFinished(kPatienceMs));
        QVERIFY(sandbox.output().contains("Failed to create dump file " + sandbox.configPath("dumps/")));
        QTRY_VERIFY_WITH_TIMEOUT(!sandbox.reporterArguments().isEmpty(), kPatienceMs);
    }

    void theReporterWithoutADisplayNamesTheNewestDumpAndEnds()
    {
        ProgramSandbox sandbox;
        const auto report = [&](const QString& language) {
            sandbox
                .start(CRASH_REPORTER, {"--file", "lumivar", "--path", sandbox.configPath("").chopped(1),
                                        "--language", language})
                ->waitForFinished(kPatienceMs);
            return sandbox.output();
        };
        sandbox.environment.remove("QT_QPA_PLATFORM");
        sandbox.environment.remove("DISPLAY");
        sandbox.environment.remove("WAYLAND_DISPLAY");
        QVERIFY(report("en_US").contains("No dump file was found."));
        sandbox.writeConfig("dumps/newer.dmp", "new");
        sandbox.writeConfig("dumps/older.dmp", "old");
        QFile older(sandbox.configPath("dumps/older.dmp"));
        QVERIFY(older.open(QIODevice::ReadWrite));
        QVERIFY(
            older.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
        QVERIFY(report("en_US").contains("Dump file: " + sandbox.configPath("dumps/newer.dmp")));
        QVERIFY(report("zh_CN").contains("转储文件：" + sandbox.configPath("dumps/newer.dmp")));
    }
};

QTEST_GUILESS_MAIN(tst_crash)
#include "tst_crash.moc"
