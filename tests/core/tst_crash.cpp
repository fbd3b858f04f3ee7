#include "ProgramUnderTest.h"

#include <QtTest>
#include <csignal>
#include <pwd.h>
#include <unistd.h>

/// What a crash leaves behind: a dump, a reporter with its arguments, a process that died of its signal.
class tst_crash : public QObject
{
    Q_OBJECT

private:
    static constexpr int kPatienceMs = 30000;
    static constexpr char kFakeReporter[] = R"(#!/bin/sh
here=$(dirname "$0")
printf '%s\n' "$@" > "$here/arguments.part"
echo "$HOME" > "$here/home"
mv "$here/arguments.part" "$here/arguments"
)";

    /// Puts the program beside a reporter that writes its arguments down; returns the copy's path.
    static QString besideFakeReporter(const ProgramUnderTest& sandbox, const QString& program)
    {
        const QString reporter = sandbox.path("program/bin/CrashReporter");
        ProgramUnderTest::writeFile(reporter, kFakeReporter);
        QFile::setPermissions(reporter, QFile::permissions(program));
        QString copy = sandbox.path("program/bin/" + QFileInfo(program).fileName());
        QFile::copy(program, copy);
        QFile::link(LIBRARY_FOLDER, sandbox.path("program/lib"));
        return copy;
    }

    /// What the fake reporter has got, an argument a line; empty until it has run.
    static QByteArray reporterArguments(const ProgramUnderTest& sandbox)
    {
        return ProgramUnderTest::readFile(sandbox.path("program/bin/arguments"));
    }

    /// The only dump, after its name has been checked; else what there is.
    static QString readDump(const QString& configPath)
    {
        const QStringList names = QDir(configPath + "/dumps").entryList(QDir::Files);
        const QRegularExpression form(R"(^\d{4}(_\d\d){5}\.dmp$)");
        if (names.size() != 1 || !form.match(names[0]).hasMatch())
            return "dumps: " + names.join(' ');
        return QString::fromUtf8(ProgramUnderTest::readFile(configPath + "/dumps/" + names[0]));
    }

    static QString section(const QString& dump, const QString& title)
    {
        return dump.section("\n" + title + ":\n", 1).section("\n\n", 0, 0);
    }

    static void checkCrash(const QString& kind, int signal, const QString& culprit)
    {
        qInfo() << kind; // is printed before what fails
        ProgramUnderTest sandbox;
        const QString program = besideFakeReporter(sandbox, CRASH_VICTIM);
        const auto process = sandbox.startAnother({kind}, program);
        QVERIFY(process->waitForFinished(kPatienceMs));
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);
        QCOMPARE(process->exitCode(), signal);

        const QString configPath = sandbox.configFile("");
        const QString dump = readDump(configPath);
        QVERIFY2(dump.contains(QString("\nSignal: %1 (SIG").arg(signal)), qPrintable(dump.left(500)));
        QVERIFY2(section(dump, "Backtrace").contains(culprit), qPrintable(section(dump, "Backtrace")));
        QVERIFY2(section(dump, "Modules").contains(program), qPrintable(section(dump, "Modules")));
        QVERIFY(QRegularExpression(R"(\nBuild id: [0-9a-f]{16,}\n)").match(dump).hasMatch());

        const QByteArray expected = "--file\ncrash_victim\n--path\n" +
                                    sandbox.configFile("").chopped(1).toUtf8() + "\n--language\nfr_FR\n";
        QTRY_COMPARE_WITH_TIMEOUT(reporterArguments(sandbox), expected, kPatienceMs);
    }

private slots:
    void everyCrashLeavesADumpAndStartsTheReporter()
    {
        checkCrash("stack overflow", SIGSEGV, "overflowTheStack");
        checkCrash("stack overflow in a thread", SIGSEGV, "overflowTheStack");
        checkCrash("wild jump", SIGSEGV, "jumpToNowhere");
        checkCrash("fatal message", SIGABRT, "abort");
        checkCrash("many threads", SIGSEGV, "writeToNowhere");
    }

    void theProgramItselfHandsOver()
    {
        ProgramUnderTest sandbox;
        sandbox.writeConfig("app.json", {{"language", "zh_CN"}});
        sandbox.environment.remove("HOME"); // then the system is asked for it
        const auto process = sandbox.startAnother({}, besideFakeReporter(sandbox, PROGRAM));
        QTRY_VERIFY_WITH_TIMEOUT(sandbox.standardError().contains("[CrashHandler]: dumps go to"),
                                 kPatienceMs);
        const QDir logs(sandbox.configFile("logs"));
        const QString log = logs.filePath(logs.entryList({"*.log"}, QDir::Files, QDir::Name).value(0));
        QVERIFY(QFile::rename(log, log + ".1")); // it rolls over
        ProgramUnderTest::writeFile(log, {});
        ::kill(pid_t(process->processId()), SIGSEGV);
        QVERIFY(process->waitForFinished(kPatienceMs));
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);

        const QString backtrace = section(readDump(sandbox.configFile("")), "Backtrace");
        QVERIFY2(backtrace.contains("lumivar(main+"), qPrintable(backtrace));
        QTRY_VERIFY_WITH_TIMEOUT(reporterArguments(sandbox).endsWith("\n--language\nzh_CN\n"), kPatienceMs);
        const QByteArray home = ProgramUnderTest::readFile(sandbox.path("program/bin/home"));
        QCOMPARE(home.trimmed(), QByteArray(getpwuid(getuid())->pw_dir));
        QVERIFY(sandbox.logText().contains(" - Sucesseded to write dump file "));
    }

    void theReporterWithoutADisplayNamesTheNewestDumpAndEnds()
    {
        ProgramUnderTest sandbox;
        QString language = "zh_CN";
        const auto report = [&] {
            const QString folder = sandbox.configFile("").chopped(1);
            const QStringList arguments{"--file", "lumivar", "--path", folder, "--language", language};
            const auto reporter = sandbox.startAnother(arguments, CRASH_REPORTER);
            return ProgramUnderTest::endsWell(*reporter) ? sandbox.standardError() : QString();
        };
        QVERIFY(!report().isEmpty()); // no dump at all
        for (const char* name : {"newer.dmp", "older.dmp"})
            ProgramUnderTest::writeFile(sandbox.configFile("dumps/") + name, "dump");
        QFile older(sandbox.configFile("dumps/older.dmp"));
        QVERIFY(older.open(QIODevice::ReadWrite));
        QVERIFY(older.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime));
        QVERIFY(report().contains("转储文件：" + sandbox.configFile("dumps/newer.dmp")));
        language.clear(); // the user chose none: the system's
        for (const char* const variable : {"LC_ALL", "LANGUAGE"})
            sandbox.environment.remove(variable);
        sandbox.environment.insert("LC_CTYPE", "C.UTF-8"); // the character set stays
        for (const char* locale : {"zh_TW.UTF-8", "nl_NL.UTF-8"}) {
            sandbox.environment.insert("LANG", locale);
            QVERIFY(report().contains(*locale == 'z' ? "转储文件：" : "Dump file: "));
        }
    }
};

QTEST_GUILESS_MAIN(tst_crash)
#include "tst_crash.moc"
