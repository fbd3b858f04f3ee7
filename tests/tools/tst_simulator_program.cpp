#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

/// A stand-in for the program in the shell's language: sends a frame of one LED in each of the colours, then
/// waits for its end and sends the last one.
QString guestScript(const QStringList& colors, const QString& last)
{
    QString script = "line=$(sed -n 's/.*\"location\": \"\\(.*\\)\".*/\\1/p' \"$LUMIVAR_SERIAL_PORTS\")\n"
                     "exec 3<>\"$line\"\n"
                     "led() { printf \"Ada\\000\\000\\001$1\" >&3; }\n";
    script += QString("trap 'led \"%1\"; exit 0' TERM\n").arg(last);
    for (const QString& color : colors)
        script += QString("led '%1'\n").arg(color);
    return script + "while :; do sleep 0.05; done\n";
}

} // namespace

class tst_simulator_program : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_ports = m_dir->filePath("ports.json");
    }

    void commandsComeOnStandardInput()
    {
        start({"--strips", "3"});
        QTRY_COMPARE(ports().size(), 3);
        m_program.write("unplug 1\n");
        const QStringList two{"ttySIM0", "ttySIM2"};
        QTRY_COMPARE(ports(), two);
        m_program.write("plu");
        m_program.write("g\nquit\n");
        QVERIFY(ended());
        QCOMPARE(m_program.exitCode(), 0);
        QVERIFY(m_program.readAllStandardOutput().contains("LV0127:01020306  plugged in"));
        QCOMPARE(ports(), QStringList());
    }

    void theProgramUnderTestIsJudged_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("verdict");
        const QString black = "\\000\\000\\000";
        QStringList moving;
        QStringList still;
        for (int i = 1; i <= 7; ++i) {
            moving += QString("\\00%1\\000\\377").arg(i);
            still += moving.first();
        }
        QTest::newRow("moves and goes out")
            << guestScript(moving, black) << 0 << QByteArray("black at the end");
        QTest::newRow("stands still")
            << guestScript(still, black) << 1 << QByteArray("the picture stood still");
        QTest::newRow("stays lit") << guestScript(moving, moving.first()) << 1 << QByteArray("was left lit");
        QTest::newRow("ends early") << "exit 3" << 1 << QByteArray("The program ended with 3");
        QTest::newRow("sends nothing") << "sleep 60" << 1 << QByteArray("No frame came");
    }
    void theProgramUnderTestIsJudged()
    {
        QFETCH(QString, script);
        start({"--check", "--quit-after", "600ms", "--patience", "3s", "--", "sh", "-c", script});
        QVERIFY(ended());
        QTEST(m_program.exitCode(), "exitCode");
        QFETCH(QByteArray, verdict);
        const QByteArray output = m_program.readAllStandardOutput();
        QVERIFY2(output.contains(verdict), output.constData());
    }

private:
    void start(const QStringList& arguments)
    {
        m_program.start(QStringLiteral(STRIP_SIMULATOR), QStringList{"--ports", m_ports} + arguments);
        QVERIFY(m_program.waitForStarted());
    }
    bool ended() { return m_program.state() == QProcess::NotRunning || m_program.waitForFinished(30000); }
    QStringList ports() const
    {
        QFile file(m_ports);
        QStringList names;
        if (file.open(QIODevice::ReadOnly)) {
            const QJsonArray entries = QJsonDocument::fromJson(file.readAll()).array();
            for (const auto& entry : entries)
                names += entry.toObject().value("name").toString();
        }
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_ports;
    QProcess m_program;
};

QTEST_GUILESS_MAIN(tst_simulator_program)
#include "tst_simulator_program.moc"
