#include "StripParser.h"

#include <QtTest>

namespace {

/// A stand-in for the program in the shell's language: sends seven frames of one LED in this colour, where $i
/// is the number of the frame, then waits for its end and sends the last one.
QString guestScript(const QString& color, const QString& last)
{
    return QString(R"sh(line=$(sed -n 's/.*"location": "\(.*\)".*/\1/p' "$LUMIVAR_SERIAL_PORTS")
exec 3<>"$line"
led() { printf "Ada\000\000\001$1" >&3; }
trap 'led "%2"; exit 0' TERM
for i in 1 2 3 4 5 6 7; do led "%1"; done
while :; do sleep 0.05; done)sh")
        .arg(color, last);
}

/// A frame whose LED i has the colour (i, seed, 255 - i).
QByteArray frameOf(int leds, uchar seed = 7)
{
    QByteArray bytes("Ada\0", 4);
    bytes += static_cast<char>(leds >> 8);
    bytes += static_cast<char>(leds & 0xff);
    for (int i = 0; i < leds; ++i) {
        for (const int channel : {i, int(seed), 255 - i})
            bytes += static_cast<char>(channel);
    }
    return bytes;
}

} // namespace

class tst_strip_simulator : public QObject
{
    Q_OBJECT

private slots:
    void framesAreFoundHoweverTheStreamIsCut()
    {
        const QByteArray clean =
            "Moni-A" + frameOf(1) + frameOf(256, 1) + frameOf(0) + "AAdMoMoni-A" + frameOf(120, 2);
        const QByteArray noZero("Ada\x55\0\x01rgb", 9);
        const QByteArray marksInside("Ada\0\0\x04Moni-AAda\0\0\x01", 18);
        const QByteArray stream = clean + QByteArray(30, 'A') + noZero + "AdAda" + marksInside;
        for (const int chunk : {1, 2, 3, 5, 7, 64, 100000}) {
            StripParser parser;
            QVector<StripFrame> frames;
            int probes = 0;
            for (int i = 0; i < stream.size(); i += chunk) {
                const StripParser::Events events = parser.feed(stream.mid(i, chunk), i);
                frames += events.frames;
                probes += events.probes;
            }
            QVERIFY(probes == 2 && parser.garbageBytes() == 5 + 30 + 9 + 5 && frames.size() == 5);
            QVERIFY(frames[1].colors.size() == 256 && frames[2].colors.isEmpty());
            QVERIFY(frames[3].colors[119] == (LV_RGB{119, 2, 136}));
            QCOMPARE(frames[3].totalBytes, clean.size());
        }
    }

    void theProgramUnderTestIsJudged()
    {
        const QString black = R"(\000\000\000)", lit = R"(\001\000\377)", moving = R"(\00$i\000\377)";
        const std::tuple<QString, int, QByteArray> programs[] = {
            {guestScript(moving, black), 0, "black at the end"},
            {guestScript(lit, black), 1, "the picture stood still"},
            {guestScript(moving, lit), 1, "was left lit"},
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

QTEST_GUILESS_MAIN(tst_strip_simulator)
#include "tst_strip_simulator.moc"
