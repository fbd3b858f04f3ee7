// Hours in the life of the whole program: five strips of different models at the pace of their lines, a
// moving picture, a beat, a user who changes effects in the window, and two faults a minute, played in a
// random order. What it sees goes to a file of comma-separated values, from which soak-report.py makes table
// and picture. Usage: scenario_soak HOURS CSV_FILE [SEED]
#include "LoginManager.h"
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "SoundServer.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "shownColor.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>
#include <xcb/xtest.h>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr int kLineBytesPerSecond = 11520;
constexpr int kRoundMs = 60000;
constexpr int kPatienceMs = 40000; ///< for light after a fault
constexpr int kSettleMs = 35000;   ///< spare threads live for half a minute
constexpr int kChanges = 10;       ///< of the screen, at each rest

struct Device
{
    const char* model;
    int leds;
};
// In the order of the home page.
constexpr Device kDevices[] = {
    {"LV0127", 120}, {"LV0132", 150}, {"LV0203", 90}, {"LV0300", 300}, {"LV0N03", 253}};
constexpr int kMeasured[] = {0, 3};

// Places in the window.
constexpr QPoint kFirstDevice(87, 165), kNextDevice(121, 0);
constexpr QPoint kHome(825, 26), kAllOn(907, 26), kAllOff(1003, 26), kClose(1259, 26);
constexpr QPoint kFirstGroup(241, 173);
constexpr int kGroupWidth = 137, kGroupHeight = 53, kGroupColumns = 3, kGroups = 6;
constexpr QRect kChoices(217, 400, 322, 460); ///< options, and below them discs in four columns
constexpr int kColumns = 4;
constexpr int kLeastWindow = 1000, kLeastDialog = 100; ///< wide
constexpr int kMusic = 3, kFewChoices = 260;           ///< as high as the other groups are

volatile std::sig_atomic_t isStopAsked = 0;

class Soak
{
public:
    Soak(double hours, const QString& csv, quint32 seed)
        : m_totalMs(qint64(hours * 3600e3))
        , m_restMs(std::clamp<qint64>(m_totalMs / 8, 60000, 300000))
        , m_csv(csv)
        , m_random(seed)
    {
    }

    bool run()
    {
        if (!m_csv.open(QIODevice::WriteOnly) || !start())
            return false;
        pause(20000); // everything is up
        for (qint64 nextRest = 0; goesOn() && m_clock.elapsed() < m_totalMs;) {
            if (m_clock.elapsed() >= nextRest) {
                rest();
                nextRest += m_restMs;
            }
            const QDeadlineTimer round(kRoundMs);
            changeEffects();
            for (int i = 0; i < 2; ++i) {
                pause(between(1000, 8000));
                playFault();
            }
            pause(int(round.remainingTime()));
        }
        if (goesOn())
            rest();
        return end();
    }

private:
    struct Fault
    {
        const char* name;
        void (Soak::*play)(StripSimulator&);
    };
    static const QVector<Fault> kFaults;

    bool start()
    {
        m_sound.useHere();
        m_display.setArguments({"-dpi", "96"}); // the places in the window go by it
        if (!m_bus.start() || !m_sound.start() || !m_display.start())
            return false;
        m_logind = std::make_unique<LoginManager>(m_bus);
        startBeside(m_windowManager, "openbox", {"--sm-disable"});
        startBeside(m_tray, "trayer", {"--edge", "bottom", "--align", "left"});
        startPicture();
        m_beat.start(QCoreApplication::applicationDirPath() + "/beat-player", QStringList());
        m_display.run("xrandr",
                      {"--newmode", "small", "0", "1280", "0", "0", "1280", "720", "0", "0", "720"});
        m_display.run("xrandr", {"--addmode", "screen", "small"});

        m_pointer = xcb_connect(m_display.name().constData(), nullptr);
        m_program = std::make_unique<ProgramUnderTest>(QCoreApplication::applicationDirPath());
        m_program->setDisplay(m_display.name());
        m_program->environment.remove("LUMIVAR_LOG_TO_CONSOLE");
        for (const char* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"})
            m_program->environment.insert(bus, m_bus.address());
        m_program->writeConfig(
            "app.json", {{"language", "en"}, {"runtime.closeButtonAction", "Minimize to the system tray"}});
        QJsonObject stored;
        for (const Device& device : kDevices) {
            StripSimulator::Options options;
            options.model = device.model;
            options.serial = QByteArray(3, '\0') + char(m_strips.size() + 1);
            options.portName = QStringLiteral("ttySIM%1").arg(m_strips.size());
            options.portsFile = m_program->portsFile();
            options.bytesPerSecond = kLineBytesPerSecond;
            options.keptFrames = 200;
            m_strips.push_back(std::make_unique<StripSimulator>(options));
            if (!m_strips.back()->plugIn())
                return false;
            stored[QStringLiteral("%1:0000000%2").arg(device.model).arg(m_strips.size())] =
                storedStrip("id.effect.screenSync.fullScreen", device.leds);
        }
        m_program->writeConfig("controllers.json", stored);
        QFile::link(QCoreApplication::applicationDirPath() + "/effects/graphics",
                    m_program->configFile("pixel_source")); // for the matrix to play
        m_program->start({"--auto_startup"});
        m_clock.start();
        return true;
    }
    bool end()
    {
        const bool wasRunning = m_program->isRunning();
        const bool isEnded = wasRunning && m_program->terminate();
        const bool isBlack = expectDark("light after the end");
        write("end", !wasRunning ? "crashed" : isEnded ? "ended" : "did not end", {double(litStrips())});
        for (MortalProcess* process : {&m_beat, &m_picture, &m_tray, &m_windowManager}) {
            process->kill();
            process->waitForFinished();
        }
        m_logind.reset();
        xcb_disconnect(m_pointer);
        return isEnded && isBlack;
    }

    // What is seen

    void write(const char* kind, const QString& name, std::initializer_list<double> values)
    {
        QString line =
            QString::asprintf("%s,%.1f,%s", kind, double(m_clock.elapsed()) / 1000, qPrintable(name));
        for (const double value : values)
            line += ',' + QString::number(value, 'f', 2);
        m_csv.write(line.toUtf8() + '\n');
        m_csv.flush();
        std::printf("%s\n", qPrintable(line));
    }
    /// Resident and of that anonymous memory in MB, descriptors, threads, log bytes and CPU seconds so far.
    void sample()
    {
        const qint64 pid = m_program->process().processId();
        const ProcessUsage usage = ProcessUsage::of(pid);
        const QByteArray status = ProgramUnderTest::readFile(QStringLiteral("/proc/%1/status").arg(pid));
        const auto field = [&status](const char* name) {
            return status.mid(status.indexOf(name) + int(qstrlen(name)))
                .simplified()
                .split(' ')[0]
                .toDouble();
        };
        std::error_code gone;
        const std::filesystem::directory_iterator files("/proc/" + std::to_string(pid) + "/fd", gone);
        write("rest", m_isWindowOpen ? "open" : "hidden",
              {usage.residentMb, field("RssAnon:") / 1024, double(std::distance(begin(files), {})),
               field("Threads:"), double(logBytes()), usage.cpuSeconds});
    }
    qint64 logBytes()
    {
        QDirIterator logs(m_program->configFile("logs"), QDir::Files, QDirIterator::Subdirectories);
        while (logs.hasNext()) {
            const QString path = logs.next();
            qint64& before = m_logSizes[path];
            const qint64 size = logs.fileInfo().size();
            m_logBytes += size >= before ? size - before : size; // a new one in its place
            before = size;
        }
        return m_logBytes;
    }
    int litStrips() const
    {
        return int(std::count_if(m_strips.begin(), m_strips.end(),
                                 [](const auto& strip) { return strip->isPlugged() && strip->isLit(); }));
    }

    // How time goes by

    bool goesOn() const { return !isStopAsked && m_program->isRunning(); }
    int between(int least, int most) { return m_random.bounded(least, most + 1); }
    template <typename Condition>
    bool waitFor(Condition condition, int patienceMs)
    {
        for (QDeadlineTimer patience(patienceMs); !condition(); QThread::msleep(10)) {
            if (patience.hasExpired())
                return false;
            QCoreApplication::processEvents();
        }
        return true;
    }
    void pause(int ms)
    {
        waitFor([this] { return !goesOn(); }, ms);
    }

    bool expectDark(const char* trouble)
    {
        const bool isDark = waitFor([this] { return litStrips() == 0; }, 5000);
        if (!isDark)
            write("trouble", trouble, {double(litStrips())});
        return isDark;
    }

    // What the user does

    void startBeside(QProcess& process, const QString& program, const QStringList& arguments)
    {
        m_display.startProgram(process, program, arguments);
        process.waitForStarted();
    }
    void startPicture()
    {
        startBeside(m_picture, QCoreApplication::applicationDirPath() + "/moving-picture", {"--fps", "30"});
    }
    QByteArray ask(const QStringList& arguments)
    {
        QProcess process;
        m_display.startProgram(process, "xdotool", arguments);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }
    void press(const char* keys) { ask({"key", keys}); }
    /// Returns when, in ms of the strips' clock.
    double click(QPoint at, uint8_t button = XCB_BUTTON_INDEX_1)
    {
        const auto fake = [this, at](uint8_t type, uint8_t detail) {
            xcb_test_fake_input(m_pointer, type, detail, 0, 0, int16_t(at.x()), int16_t(at.y()), 0);
            xcb_flush(m_pointer);
        };
        fake(XCB_MOTION_NOTIFY, 0);
        pause(100);
        const double ms = StripSimulator::nowMs();
        fake(XCB_BUTTON_PRESS, button);
        fake(XCB_BUTTON_RELEASE, button);
        return ms;
    }
    /// Then it stands in the corner of the screen. What the program tells the user beside it, such as that a
    /// strip drops out often, he reads and puts away.
    bool isWindowThere()
    {
        bool isThere = false;
        const QByteArray found =
            ask({"search", "--onlyvisible", "--name", "^Lumivar$", "getwindowgeometry", "--shell", "%@"});
        static const QRegularExpression window("WINDOW=(\\d+)\nX=.*\nY=.*\nWIDTH=(\\d+)\n");
        for (auto it = window.globalMatch(QString::fromLatin1(found)); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const QString id = match.captured(1);
            const int width = match.captured(2).toInt();
            isThere = isThere || width >= kLeastWindow;
            if (width >= kLeastWindow)
                ask({"windowmove", id, "0", "0"});
            else if (width >= kLeastDialog)
                ask({"windowactivate", id, "sleep", "0.3", "key", "Escape"});
        }
        return isThere;
    }
    void openWindow()
    {
        const auto second = m_program->startAnother();
        if (!waitFor([&] { return second->state() == QProcess::NotRunning; }, 10000))
            write("trouble", "the second start stays", {});
        m_isWindowOpen = waitFor([this] { return isWindowThere(); }, 10000);
        if (!m_isWindowOpen)
            write("trouble", "the window does not open", {});
        pause(1000);
    }
    void closeWindow()
    {
        press("Escape");
        press("Escape"); // what a click has opened
        click(kHome);    // the same page at every rest: each holds pictures of its own
        pause(500);
        click(kClose);
        m_isWindowOpen = !waitFor([this] { return !isWindowThere(); }, 5000);
        if (m_isWindowOpen)
            write("trouble", "the window does not close", {});
    }
    void changeEffects()
    {
        openWindow();
        if (!m_isWindowOpen)
            return; // a wheel turned on the desktop behind it would change the desktop
        for (int i = 0; i < 2 && goesOn(); ++i) {
            click(kHome);
            pause(500);
            click(kFirstDevice + kNextDevice * between(0, int(m_strips.size()) - 1));
            pause(700);
            for (int notch = 0; notch < 5; ++notch)
                click(kChoices.center(), XCB_BUTTON_INDEX_4);
            const int group = between(0, kGroups - 1);
            click(kFirstGroup +
                  QPoint(group % kGroupColumns * kGroupWidth, group / kGroupColumns * kGroupHeight));
            pause(700);
            for (int choice = 0; choice < 3; ++choice) {
                if (between(0, 3) == 0)
                    click(kChoices.center(), XCB_BUTTON_INDEX_5);
                click(kChoices.topLeft() +
                      QPoint(between(0, kColumns - 1) * kChoices.width() / (kColumns - 1),
                             between(0, group == kMusic ? kChoices.height() : kFewChoices)));
                pause(between(500, 1500));
                press("Escape");
                noteEffects();
            }
        }
        switchOffAndOn();
        closeWindow();
    }
    void noteEffects()
    {
        const QJsonObject stored = m_program->readConfig("controllers.json");
        for (const QJsonValue& device : stored) {
            const QString effect = device["subMode"].toString();
            if (!m_effects.contains(effect))
                write("effect", effect, {double(m_effects.size() + 1)});
            m_effects += effect;
        }
    }
    void switchOffAndOn()
    {
        for (const auto& strip : m_strips)
            strip->clear();
        const double clickedMs = click(kAllOff);
        expectDark("light after all were switched off");
        for (const auto& strip : m_strips) {
            const QVector<StripFrame> frames = strip->frames();
            const auto black =
                std::find_if(frames.begin(), frames.end(), [clickedMs](const StripFrame& frame) {
                    return frame.lastByteMs > clickedMs && frame.colors.count({}) == frame.colors.size();
                });
            if (black != frames.end())
                write("latency", "click", {black->lastByteMs - clickedMs});
        }
        click(kAllOn);
        pause(1000);
    }

    // The state in which figures compare

    /// All follow the screen, the window is away.
    void rest()
    {
        const auto isThere = [this] {
            const QJsonObject stored = m_program->readConfig("controllers.json");
            return std::all_of(stored.begin(), stored.end(), [](const QJsonValue& device) {
                return device["subMode"] == "id.effect.screenSync.fullScreen";
            });
        };
        for (int i = 0; i < kGroups && goesOn() && !isThere(); ++i) {
            press("ctrl+alt+shift+Right");
            pause(2500); // it is stored a second later
        }
        if (!isThere())
            write("trouble", "the devices do not come to rest", {});
        pause(kSettleMs);
        if (!goesOn())
            return;
        for (const auto& strip : m_strips)
            strip->clear();
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < 5; ++i) {
            pause(2000);
            sample();
        }
        for (size_t i = 0; i < m_strips.size(); ++i)
            write("line", QString::fromLatin1(kDevices[i].model),
                  {double(m_strips[i]->counters().bytes) * 1000 / double(clock.elapsed()) /
                   kLineBytesPerSecond});
        m_picture.kill();
        m_picture.waitForFinished();
        pause(500);
        if (!goesOn())
            return;
        for (const int index : kMeasured)
            measureLatency(*m_strips[size_t(index)], kDevices[index].leds);
        startPicture();
    }
    void measureLatency(StripSimulator& strip, int leds)
    {
        ScreenPainter screen(m_display.name());
        for (int number = 0; number < kChanges && goesOn(); ++number) {
            pause(between(200, 360));
            waitForPhase(strip, number, (6 + 3 * leds) * 1050.0 / kLineBytesPerSecond);
            const bool red = number % 2 == 0;
            strip.clear();
            screen.fill(QRect(QPoint(), kScreen), red ? Qt::red : Qt::green);
            const double changedMs = StripSimulator::nowMs();
            const double shownMs = shownAt(strip, red ? LV_RGB{255, 0, 0} : LV_RGB{0, 255, 0});
            if (shownMs > 0)
                write("latency", QString::number(leds), {shownMs - changedMs});
            else
                write("trouble", "a change of the screen is not shown", {double(leds)});
        }
    }

    // What goes wrong

    void playFault()
    {
        if (!goesOn())
            return;
        if (m_bag.empty()) {
            m_bag = kFaults;
            std::shuffle(m_bag.begin(), m_bag.end(), m_random);
        }
        const auto [name, play] = m_bag.takeLast();
        QSet<StripSimulator*> lit; // some effects flash, and some colours that the user chose are black
        const auto look = [&] {
            for (const auto& strip : m_strips) {
                if (strip->isLit())
                    lit += strip.get();
            }
            return !goesOn();
        };
        waitFor(look, 1500);
        (this->*play)(*m_strips[size_t(between(0, int(m_strips.size()) - 1))]);
        QVector<StripSimulator*> missing;
        for (const auto& strip : m_strips) {
            strip->clear();
            missing += strip.get();
        }
        QElapsedTimer clock;
        clock.start();
        const auto isBack = [&lit](StripSimulator* strip) {
            return strip->counters().frames > 0 && (strip->isLit() || !lit.contains(strip));
        };
        const auto areBack = [&] {
            missing.erase(std::remove_if(missing.begin(), missing.end(), isBack), missing.end());
            return missing.isEmpty() || !goesOn();
        };
        waitFor(areBack, kPatienceMs);
        if (!goesOn())
            return;
        write("fault", name, {double(clock.elapsed())});
        for (const StripSimulator* strip : qAsConst(missing))
            write("trouble", QString("dark after %1: ").arg(name) + strip->options().model, {});
    }
    void replug(StripSimulator& strip)
    {
        strip.unplug();
        pause(between(300, 6000));
        strip.plugIn();
    }
    void hangUpInAFrame(StripSimulator& strip)
    {
        strip.setHangUpAfterBytes(between(100, 3000));
        replug(strip);
        waitFor([&] { return !strip.isPlugged(); }, 10000);
        strip.setHangUpAfterBytes(0);
        replug(strip);
    }
    template <StripSimulator::ReplyMode mode>
    void answer(StripSimulator& strip)
    {
        strip.unplug();
        strip.setReplyMode(mode);
        pause(between(300, 2000));
        strip.plugIn();
        pause(between(3000, 8000));
        strip.setReplyMode(StripSimulator::ReplyMode::Normal);
        strip.plugIn(); // where it has hung up
    }
    void sendGarbage(StripSimulator& strip)
    {
        for (int i = 0; i < 20; ++i) {
            QByteArray bytes(between(1, 60), ' ');
            std::generate(bytes.begin(), bytes.end(), [this] { return char(between(1, 255)); }); // 0: button
            strip.send(bytes);
            pause(between(1, 200));
        }
    }
    void pressButtons(StripSimulator& strip)
    {
        for (int i = 0; i < 4; ++i) {
            strip.pressButton();
            pause(between(300, 1000));
        }
    }
    void killSoundServer(StripSimulator&)
    {
        m_sound.stop();
        m_beat.kill();
        m_beat.waitForFinished();
        pause(between(1000, 8000));
        m_sound.start();
        m_beat.start();
    }
    void resizeScreen(StripSimulator&)
    {
        for (const char* mode : {"small", "1920x1080"}) {
            m_display.run("xrandr", {"--output", "screen", "--mode", mode});
            pause(between(2000, 5000));
        }
    }
    void lockScreen(StripSimulator&)
    {
        m_logind->setLocked(true);
        m_logind->setSaverActive(true);
        expectDark("light while the screen is locked");
        pause(between(500, 4000));
        m_logind->setSaverActive(false);
        m_logind->setLocked(false);
    }
    void sleep(StripSimulator&)
    {
        m_logind->prepareFor("Sleep", true);
        expectDark("light while the machine sleeps");
        pause(between(500, 4000));
        m_logind->prepareFor("Sleep", false);
    }
    void loseStore(StripSimulator&)
    {
        const QString folder = m_program->path("config/Lumivar");
        QDir().rename(folder, folder + ".away");
        ProgramUnderTest::writeFile(folder, "in the way");
        press("ctrl+alt+shift+Down");
        pause(between(3000, 8000));
        press("ctrl+alt+shift+Up");
        QFile::remove(folder);
        QDir().rename(folder + ".away", folder);
    }
    const qint64 m_totalMs, m_restMs;
    QFile m_csv;
    QRandomGenerator m_random;
    PrivateBus m_bus;
    std::unique_ptr<LoginManager> m_logind;
    SoundServer m_sound;
    VirtualDisplay m_display{kScreen};
    MortalProcess m_windowManager, m_tray, m_picture, m_beat;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::vector<std::unique_ptr<StripSimulator>> m_strips;
    bool m_isWindowOpen = false;
    xcb_connection_t* m_pointer = nullptr;
    QElapsedTimer m_clock;
    qint64 m_logBytes = 0;
    QMap<QString, qint64> m_logSizes;
    QSet<QString> m_effects;
    QVector<Fault> m_bag; ///< those that come before all are played again
};

using Reply = StripSimulator::ReplyMode;
const QVector<Soak::Fault> Soak::kFaults{
    {"replug", &Soak::replug},
    {"hang up in a frame", &Soak::hangUpInAFrame},
    {"no answer", &Soak::answer<Reply::Silent>},
    {"garbage as answer", &Soak::answer<Reply::Garbage>},
    {"answer in two", &Soak::answer<Reply::TwoChunks>},
    {"answer by bytes", &Soak::answer<Reply::ByteByByte>},
    {"endless answer", &Soak::answer<Reply::Endless>},
    {"hang up in the answer", &Soak::answer<Reply::HangUpInReply>},
    {"garbage on the line", &Soak::sendGarbage},
    {"buttons", &Soak::pressButtons},
    {"sound server away", &Soak::killSoundServer},
    {"other screen size", &Soak::resizeScreen},
    {"screen locked", &Soak::lockScreen},
    {"sleep", &Soak::sleep},
    {"store unwritable", &Soak::loseStore},
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (argc < 3 || atof(argv[1]) <= 0) {
        std::fprintf(stderr, "usage: scenario_soak HOURS CSV_FILE [SEED]\n");
        return 2;
    }
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { isStopAsked = 1; });
    const quint32 seed = argc > 3 ? quint32(atoll(argv[3])) : QRandomGenerator::global()->generate();
    std::printf("seed %u\n", seed);
    return Soak(atof(argv[1]), QString::fromLocal8Bit(argv[2]), seed).run() ? 0 : 1;
}
