#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "SoundServer.h"
#include "StripSimulator.h"
#include "TonePlayer.h"
#include "VirtualDisplay.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QScopeGuard>
#include <QtTest>
#include <csignal>

namespace {

constexpr int kWaitMs = 15000;
constexpr QSize kScreen(1280, 720);
constexpr int kLeds = 120;
constexpr std::uint8_t kFull = 204; ///< full brightness of a strip at 0.8
const QString kStripId = "LV0127:01020304";

StripSimulator::Options strip(const ProgramUnderTest& program, int number = 0)
{
    StripSimulator::Options options;
    options.portsFile = program.portsFile();
    options.portName = QString("ttySIM%1").arg(number);
    options.bytesPerSecond = 11520;
    if (number > 0)
        options.serial[3] = static_cast<char>(0x40 + number);
    return options;
}

QJsonObject storedStrip(const QString& effect)
{
    return {{"kindName", "Desk"},
            {"brightness", 0.8},
            {"enable", true},
            {"nbLeds", kLeds},
            {"workMode", effect.section('.', 0, -2)},
            {"subMode", effect}};
}

bool isAll(const StripSimulator& strip, LV_RGB color)
{
    const QVector<LV_RGB> shown = strip.shownColors();
    return !shown.isEmpty() && shown.count(color) == shown.size();
}

bool isBlack(const StripSimulator& strip)
{
    const QVector<LV_RGB> shown = strip.lastFrame().colors;
    return !shown.isEmpty() && shown.count(LV_RGB{}) == shown.size();
}

/// The LEDs furthest left and right on the screen, by the shipped map.
QPair<int, int> outermostLeds()
{
    const QByteArray map = ProgramUnderTest::readFile("controler_config/LV0127.json");
    QMap<int, int> ledOfColumn;
    for (const QJsonValue led : QJsonDocument::fromJson(map)["key_array"].toArray())
        ledOfColumn[led["x"].toInt()] = led["id"].toInt() - 1;
    return {ledOfColumn.first(), ledOfColumn.last()};
}

} // namespace

class ProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void stripFollowsTheScreenUntilTheEnd()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter screen(display.name());
        screen.fill(QRect(QPoint(), kScreen), Qt::red);

        ProgramUnderTest program;
        program.setDisplay(display.name());
        program.writeConfig("controllers.json", {{kStripId, storedStrip("id.effect.screenSync.fullScreen")}});
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start({"--auto_startup"}); // no window on the screen that is looked at
        QTRY_VERIFY_WITH_TIMEOUT(isAll(strip, {kFull, 0, 0}), kWaitMs);
        QCOMPARE(strip.shownColors().size(), kLeds);

        const auto [left, right] = outermostLeds();
        screen.fill(QRect(0, 0, kScreen.width() / 2, kScreen.height()), Qt::green);
        screen.fill(QRect(kScreen.width() / 2, 0, kScreen.width() / 2, kScreen.height()), Qt::blue);
        QTRY_COMPARE_WITH_TIMEOUT(strip.shownColors().at(left), (LV_RGB{0, kFull, 0}), kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(strip.shownColors().at(right), (LV_RGB{0, 0, kFull}), kWaitMs);

        strip.unplug();
        QTRY_VERIFY_WITH_TIMEOUT(program.logText().contains("Device has failed: "), kWaitMs);
        screen.fill(QRect(QPoint(), kScreen), Qt::green);
        strip.clear();
        QVERIFY(strip.plugIn());
        QTRY_VERIFY_WITH_TIMEOUT(isAll(strip, {0, kFull, 0}), kWaitMs);

        strip.pressButton();
        QTRY_VERIFY_WITH_TIMEOUT(isBlack(strip), kWaitMs);
        strip.pressButton();
        QTRY_VERIFY_WITH_TIMEOUT(isAll(strip, {0, kFull, 0}), kWaitMs);

        QVERIFY(program.terminate());
        QTRY_VERIFY(isBlack(strip));
        const QJsonObject stored = program.readConfig("controllers.json")[kStripId].toObject();
        QCOMPARE(stored["subMode"].toString(), "id.effect.screenSync.fullScreen");
        QCOMPARE(stored["kindName"].toString(), "Desk");
        QCOMPARE(stored["enable"].toBool(), true);
        const QString log = program.logText();
        QVERIFY(log.contains("enable status changed to"));
        QVERIFY(log.contains("the black buffer is writeen: "));
        QVERIFY(program.logText("devices").contains("Device button clicked " + kStripId));
    }

    void stripGoesDarkWhenTheDisplayServerDies()
    {
        VirtualDisplay display(kScreen);
        QVERIFY(display.start());
        ScreenPainter(display.name()).fill(QRect(QPoint(), kScreen), Qt::red);
        ProgramUnderTest program;
        program.setDisplay(display.name());
        program.writeConfig("controllers.json", {{kStripId, storedStrip("id.effect.screenSync.fullScreen")}});
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(isAll(strip, {kFull, 0, 0}), kWaitMs);
        display.stop();
        // The toolkit ends the process when its server is gone.
        QTRY_VERIFY_WITH_TIMEOUT(!program.isRunning(), kWaitMs);
        QTRY_VERIFY(isBlack(strip));
    }

    void stripGoesDarkWhileTheSoundServerHangs()
    {
        SoundServer server;
        QVERIFY(server.start());
        ProgramUnderTest program;
        program.environment.insert("PULSE_SERVER", server.address());
        program.writeConfig("controllers.json",
                            {{kStripId, storedStrip("id.effect.dynamicMusic.peakValues_8")}});
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        TonePlayer player(server.address(), "first");
        const auto releasePlayer = qScopeGuard([&server] { server.stop(); });
        player.play({440, 1});
        program.start();
        QTRY_VERIFY_WITH_TIMEOUT(!strip.shownColors().isEmpty() && !isBlack(strip), kWaitMs);
        server.freeze();
        QVERIFY(program.terminate());
        QTRY_VERIFY(isBlack(strip));

        program.start(); // nor does it wait for an answer here
        QTRY_VERIFY_WITH_TIMEOUT(program.logText().contains("The list of audio capturer is empty"), kWaitMs);
        QVERIFY(program.terminate());
    }

    void stripGoesDarkWhenTheProgramCrashes()
    {
        ProgramUnderTest program;
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start();
        QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 5, kWaitMs);
        QVERIFY(!isBlack(strip));
        ::kill(static_cast<pid_t>(program.process().processId()), SIGSEGV);
        QTRY_VERIFY_WITH_TIMEOUT(!program.isRunning(), kWaitMs);
        QCOMPARE(program.process().exitStatus(), QProcess::CrashExit);
        QTRY_VERIFY(isBlack(strip));
    }

    void runsWithoutADisplay()
    {
        ProgramUnderTest program;
        StripSimulator strip(::strip(program));
        program.start();
        QVERIFY(strip.plugIn()); // only now: found because the list of ports changed
        QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 5, kWaitMs);
        QCOMPARE(strip.lastFrame().colors.size(), kLeds); // the model's own count
        QVERIFY(program.terminate());
        QTRY_VERIFY(isBlack(strip));
    }

    void tenStripsComeAndGoTogether()
    {
        ProgramUnderTest program;
        std::vector<std::unique_ptr<StripSimulator>> strips;
        for (int i = 0; i < 10; ++i) {
            strips.push_back(std::make_unique<StripSimulator>(::strip(program, i)));
            QVERIFY(strips.back()->plugIn());
        }
        program.start();
        for (const auto& strip : strips)
            QTRY_VERIFY_WITH_TIMEOUT(strip->counters().frames > 3, kWaitMs);
        QVERIFY(program.terminate());
        for (const auto& strip : strips)
            QTRY_VERIFY(isBlack(*strip));
        QCOMPARE(program.readConfig("controllers.json").size(), 10);
    }

    void stripThatKeepsDroppingOutComesBackEveryTime()
    {
        ProgramUnderTest program;
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start();
        for (int i = 1; i <= 3; ++i) {
            QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 1, kWaitMs);
            strip.unplug();
            QTRY_COMPARE_WITH_TIMEOUT(program.logText().count("Device has failed: "), i, kWaitMs);
            strip.clear();
            QVERIFY(strip.plugIn());
        }
        QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 1, kWaitMs);
        QVERIFY(program.logText().contains("has been cleared"));
        QVERIFY(program.terminate());
    }

    void runsPluginsFromItsFolders()
    {
        ProgramUnderTest program;
        const QDir folder(program.useCopyOfProgramFolder());
        folder.mkpath("deviceEnumerators");
        QVERIFY(QFile::copy(EXAMPLE_EFFECT, folder.filePath("effects/example.so")));
        QVERIFY(QFile::copy(EXAMPLE_ENUMERATOR, folder.filePath("deviceEnumerators/example.so")));
        program.writeConfig("controllers.json", {{kStripId, storedStrip("id.effect.colorful.breathing")}});
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start();
        QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 5, kWaitMs);
        QVERIFY(program.terminate());
        QTRY_VERIFY(isBlack(strip));
        const QString log = program.logText();
        QVERIFY(log.contains(kStripId + " has connected to id.effect.colorful.breathing"));
        QVERIFY(log.contains("Successed to load EffectPlugin by path example.so"));
        QCOMPARE(log.count("A new controller has been added to manager: "), 2);
    }

    void survivesBrokenDataFiles_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("cut in half") << QByteArray(R"({"LV0127": {"nbLeds": 12)");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("wrong types") << QByteArray(R"({"LV0127": [], "groups": {"id": 7}, "key_array": 5})");
        QTest::newRow("binary") << QByteArray(5000, '\xff');
    }
    void survivesBrokenDataFiles()
    {
        QFETCH(QByteArray, contents);
        ProgramUnderTest program;
        const QDir folder(program.useCopyOfProgramFolder());
        for (const char* file :
             {"controler_config/LVController.json", "controler_config/LV0127.json", "effects/groups.json",
              "effects/colorful/ColorMap_3.png", "images/products/LV0127.jpg", "effects/broken.so",
              "deviceEnumerators/broken.so"})
            ProgramUnderTest::writeFile(folder.filePath(file), contents);
        program.writeConfig("controllers.json", {{kStripId, storedStrip("id.effect.colorful.ColorMap_3")}});
        StripSimulator strip(::strip(program));
        QVERIFY(strip.plugIn());
        program.start();
        QTRY_VERIFY_WITH_TIMEOUT(strip.counters().frames > 3, kWaitMs);
        QCOMPARE(strip.lastFrame().colors.size(), kLeds); // what the user had stored
        QVERIFY(program.terminate());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
