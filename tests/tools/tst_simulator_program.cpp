#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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
    void theProgramUnderTestIsJudged()
    {
        const QString black = "\\000\\000\\000";
        QStringList moving;
        QStringList still;
        for (int i = 1; i <= 7; ++i) {
            moving += QString("\\00%1\\000\\377").arg(i);
            still += moving.first();
        }
        const std::tuple<QString, int, QByteArray> programs[] = {
            {guestScript(moving, black), 0, "black at the end"},
            {guestScript(still, black), 1, "the picture stood still"},
            {guestScript(moving, moving.first()), 1, "was left lit"},
            {"exit 3", 1, "The program ended with 3"},
            {"sleep 60", 1, "No frame came"}};
        for (const auto& [script, exitCode, verdict] : programs) {
            const QTemporaryDir dir;
            QProcess program;
            program.start(QStringLiteral(STRIP_SIMULATOR),
                          {"--ports", dir.filePath("ports.json"), "--check", "--quit-after", "600ms",
                           "--patience", "3s", "--", "sh", "-c", script});
            QVERIFY(program.waitForStarted());
            QVERIFY(program.state() == QProcess::NotRunning || program.waitForFinished(30000));
            const QByteArray output = program.readAllStandardOutput();
            QVERIFY2(program.exitCode() == exitCode && output.contains(verdict), output.constData());
        }
    }
};

QTEST_GUILESS_MAIN(tst_simulator_program)
#include "tst_simulator_program.moc"
