#include "ProgramUnderTest.h"
#include "system/AccessGrant.h"

#include <QtTest>
#include <csignal>

namespace {

using State = AccessGrant::State;

const auto& readFile = ProgramUnderTest::readFile;

void writeScript(const QString& path, const QByteArray& body)
{
    ProgramUnderTest::writeFile(path, "#!/bin/sh\n" + body);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
}

} // namespace

class AccessGrantTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("PATH", QFile::encodeName(m_folder->path()) + ":" + m_path);
    }
    void cleanup() { qputenv("PATH", m_path); }

    void everyEndOfTheQuestionIsTold()
    {
        const std::pair<const char*, State> rows[] = {{"exit 0", State::Granted},
                                                      {"exit 126", State::Cancelled},
                                                      {"exit 127", State::Failed},
                                                      {"kill -9 $$", State::Failed}};
        const QString helper = QCoreApplication::applicationDirPath() + "/grant-access";
        AccessGrant grant; // is tried again and again
        const QSignalSpy changes(&grant, &AccessGrant::stateChanged);
        for (const auto& [body, state] : rows) {
            writeScript(path("pkexec"), "echo \"$@\" >\"$0.args\"\n" + QByteArray(body));
            grant.request();
            grant.request(); // one dialog is enough
            grant.forget();
            QCOMPARE(grant.state(), State::Pending);
            QTRY_COMPARE(grant.state(), state);
            QCOMPARE(QString(readFile(path("pkexec.args")).trimmed()), "--disable-internal-agent " + helper);
        }
        QCOMPARE(changes.count(), 8);
        QVERIFY(AccessGrant::isPossible());
        qputenv("PATH", "/nowhere");
        QVERIFY(!AccessGrant::isPossible());
        grant.request();
        QTRY_COMPARE(grant.state(), State::Failed);
    }

    void aSystemThatDoesNotAnswerHoldsNobodyUp()
    {
        writeScript(path("pkexec"), "echo $$ >\"$0.pid\"\nwhile [ ! -e \"$0.go\" ]; do sleep 0.05; done");
        auto grant = std::make_unique<AccessGrant>(20);
        grant->request();
        QTRY_COMPARE(grant->state(), State::Late);
        writeScript(path("pkexec.go"), {});
        QTRY_COMPARE(grant->state(), State::Granted); // late, but an answer
        QVERIFY(QFile::remove(path("pkexec.go")) && QFile::remove(path("pkexec.pid")));
        grant->request();
        QTRY_VERIFY(!readFile(path("pkexec.pid")).isEmpty());
        const pid_t pid = readFile(path("pkexec.pid")).trimmed().toInt();
        grant.reset(); // the program quits
        QTRY_VERIFY(::kill(pid, 0) != 0);
    }

    void theHelperInstallsTheRuleAndNothingElse()
    {
        const auto run = [this] {
            QProcess helper;
            helper.setEnvironment({"PATH=" + path("evil")}); // whoever calls it
            helper.start(path("helper"), {"--help", "/etc"});
            return helper.waitForFinished() ? helper.exitCode() : -1;
        };
        // A copy that looks at another root: the helper itself lets nobody choose one.
        QByteArray script = readFile(QCoreApplication::applicationDirPath() + "/grant-access");
        const QByteArray root = QFile::encodeName(m_folder->path());
        script.replace("PATH=/usr/sbin", "PATH=" + root + "/bin");
        script.replace("/etc/udev", root + "/etc").replace("/usr/lib/udev", root + "/usr");
        script.replace("/lib/udev", root + "/lib");
        writeScript(path("helper"), script);
        writeScript(path("evil/udevadm"), "touch " + root + "/misled\n");
        writeScript(path("bin/udevadm"), "echo \"$@\" >>" + root + "/told\n");
        writeScript(path("bin/id"), "echo 1000");
        const QString rule = path("etc/rules.d/70-lumivar.rules");
        QVERIFY(run() == 2 && !QFile::exists(path("etc")));
        writeScript(path("bin/id"), "echo 0");
        for (int i = 0; i < 2; ++i) { // twice is once
            QCOMPARE(run(), 0);
            QCOMPARE(readFile(rule), readFile(RULES));
            QCOMPARE(QFile::permissions(rule) & 0x0777, QFile::Permissions(0x0644));
            QCOMPARE(QDir(path("etc/rules.d")).entryList(QDir::Files | QDir::Hidden).size(), 1);
        }
        QVERIFY(readFile(path("told")).startsWith("control --reload\ntrigger --action=add"));
        QVERIFY(!QFile::exists(path("misled")) && QFile::remove(rule));
        writeScript(path("usr/rules.d/70-lumivar.rules"), {}); // a package's
        QVERIFY(run() == 0 && !QFile::exists(rule));
        QVERIFY(QDir(path("usr")).removeRecursively() && QDir(path("etc")).removeRecursively());
        writeScript(path("etc"), "a file where the folder should be");
        QCOMPARE(run(), 3);
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    const QByteArray m_path = qgetenv("PATH");
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(AccessGrantTest)
#include "tst_access_grant.moc"
