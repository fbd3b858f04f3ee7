// How soon a press of a system-wide hotkey is on the wire, what taking five of them costs, and whether fifty
// devices keep up with somebody who presses ten times a second. Usage: scenario_hotkeys [presses, default
// 200]
#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "hotkey/QHotkey.h"
#include "percentile.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr int kLeds = 120;
constexpr int kSeenLed = 110; ///< looks at a corner that the program's window does not cover
constexpr int kLineBytesPerSecond = 11520;
constexpr double kMaxToWireMs = 30; ///< beyond the frame that is on the line already
constexpr int kHotkeys = 5;
constexpr double kMaxRegisteringMs = 5;
constexpr int kDevices = 50;
constexpr int kPressesOnMany = 101; ///< odd: the last one shows
constexpr int kPressEveryMs = 100;
constexpr qint64 kMaxWaitMs = 50;

constexpr xcb_keysym_t kShift = 0xFFE1, kControl = 0xFFE3, kAlt = 0xFFE9, kUp = 0xFF52, kDown = 0xFF54;

/// Strikes keys as a keyboard does.
class Keyboard
{
public:
    explicit Keyboard(const QByteArray& display)
        : m_connection(xcb_connect(display.constData(), nullptr))
    {
        const xcb_setup_t* setup = xcb_get_setup(m_connection);
        m_firstCode = setup->min_keycode;
        const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
        m_map.reset(xcb_get_keyboard_mapping_reply(
            m_connection, xcb_get_keyboard_mapping(m_connection, m_firstCode, count), nullptr));
    }
    ~Keyboard() { xcb_disconnect(m_connection); }
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// Ctrl+Alt+Shift and the key; returns when the key itself went down, in ms of the strips' clock.
    double strike(xcb_keysym_t key)
    {
        constexpr xcb_keysym_t kModifiers[] = {kControl, kAlt, kShift};
        for (const xcb_keysym_t modifier : kModifiers)
            fake(XCB_KEY_PRESS, modifier);
        settle();
        const double pressedMs = StripSimulator::nowMs();
        fake(XCB_KEY_PRESS, key);
        fake(XCB_KEY_RELEASE, key);
        for (const xcb_keysym_t modifier : kModifiers)
            fake(XCB_KEY_RELEASE, modifier);
        settle();
        return pressedMs;
    }

private:
    void fake(uint8_t type, xcb_keysym_t symbol)
    {
        xcb_test_fake_input(m_connection, type, codeOf(symbol), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    }

    /// Waits until the server has done all so far.
    void settle()
    {
        free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_keycode_t codeOf(xcb_keysym_t symbol) const
    {
        const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(m_map.get());
        for (int i = 0; i < xcb_get_keyboard_mapping_keysyms_length(m_map.get()); ++i) {
            if (symbols[i] == symbol)
                return static_cast<xcb_keycode_t>(m_firstCode + i / m_map->keysyms_per_keycode);
        }
        qFatal("the keyboard lacks a key");
    }

    xcb_connection_t* m_connection;
    xcb_keycode_t m_firstCode = 0;
    std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&free)> m_map{nullptr, &free};
};

StripSimulator::Options options(const ProgramUnderTest& program, int number, int bytesPerSecond)
{
    StripSimulator::Options options;
    options.serial = QByteArray(3, '\0') + static_cast<char>(number);
    options.portName = QStringLiteral("ttySIM%1").arg(number);
    options.portsFile = program.portsFile();
    options.bytesPerSecond = bytesPerSecond;
    return options;
}

QString idOf(int number)
{
    return QString::asprintf("LV0127:%08X", static_cast<unsigned>(number));
}

/// So many strips on screen synchronisation at half their brightness.
QJsonObject stored(int count)
{
    QJsonObject devices;
    for (int i = 1; i <= count; ++i) {
        devices[idOf(i)] = QJsonObject{{"nbLeds", kLeds},
                                       {"brightness", 0.5},
                                       {"enable", true},
                                       {"workMode", "id.effect.screenSync"},
                                       {"subMode", "id.effect.screenSync.fullScreen"}};
    }
    return devices;
}

bool becomes(const std::function<bool()>& condition, int patienceMs)
{
    for (QDeadlineTimer patience(patienceMs); !patience.hasExpired(); QThread::msleep(2)) {
        if (condition())
            return true;
    }
    return false;
}

/// When the first frame began in which the LED has another colour than `before`; 0 when none comes.
double changedAt(const StripSimulator& strip, LV_RGB before)
{
    double beganMs = 0;
    becomes(
        [&] {
            for (const StripFrame& frame : strip.frames()) {
                if (frame.colors.size() > kSeenLed && frame.colors[kSeenLed] != before) {
                    beganMs = frame.firstByteMs;
                    return true;
                }
            }
            return false;
        },
        2000);
    return beganMs;
}

bool measurePresses(const VirtualDisplay& display, Keyboard& keyboard, int presses)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.writeConfig(QStringLiteral("controllers.json"), stored(1));
    StripSimulator strip(options(program, 1, kLineBytesPerSecond));
    if (!strip.plugIn())
        return false;
    program.start();
    QThread::sleep(3);

    QVector<double> latencies;
    for (int i = 0; i < presses; ++i) {
        QThread::msleep(200 + QRandomGenerator::global()->bounded(160)); // any phase of the effect's period
        const LV_RGB before = strip.shownColors().value(kSeenLed);
        strip.clear();
        const double pressedMs = keyboard.strike(i % 2 == 0 ? kDown : kUp);
        const double changedMs = changedAt(strip, before);
        if (changedMs > 0)
            latencies.append(changedMs - pressedMs);
    }
    program.terminate();
    if (latencies.size() < presses) {
        std::printf("%d of %d presses never reached the wire\n", presses - latencies.size(), presses);
        return false;
    }
    const double limit = kMaxToWireMs + (6 + 3 * kLeds) * 1000.0 / kLineBytesPerSecond;
    const double p95 = percentile(latencies, 0.95);
    std::printf("press to the first byte of the changed frame, %d presses: p50 %.1f ms, p95 %.1f ms (limit "
                "%.0f ms), longest %.1f ms%s\n",
                presses, percentile(latencies, 0.5), p95, limit, percentile(latencies, 1),
                p95 <= limit ? "" : "  TOO SLOW");
    return p95 <= limit;
}

/// When the program has carried out each press, by its log.
QVector<QDateTime> executions(const QString& log)
{
    static const QRegularExpression line(
        QStringLiteral("^(\\S+ \\S+) (\\d+)\\S* .*The hotkey action has executed:.*$"),
        QRegularExpression::MultilineOption);
    QVector<QDateTime> times;
    for (auto it = line.globalMatch(log); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        times += QDateTime::fromString(match.captured(1), QStringLiteral("MM/dd/yy HH:mm:ss"))
                     .addYears(100) // the toolkit takes "26" for 1926
                     .addMSecs(match.captured(2).toInt());
    }
    return times;
}

bool measureManyDevices(const VirtualDisplay& display, Keyboard& keyboard)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.writeConfig(QStringLiteral("controllers.json"), stored(kDevices));
    std::vector<std::unique_ptr<StripSimulator>> strips;
    for (int i = 1; i <= kDevices; ++i) {
        strips.push_back(std::make_unique<StripSimulator>(options(program, i, 0)));
        if (!strips.back()->plugIn())
            return false;
    }
    program.start();
    const auto shows = [](const auto& strip) { return strip->counters().frames > 0; };
    if (!becomes([&] { return std::all_of(strips.begin(), strips.end(), shows); }, 60000)) {
        std::printf("not all of %d devices came up\n", kDevices);
        return false;
    }
    QThread::sleep(3);

    QVector<QDateTime> pressed;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < kPressesOnMany; ++i) {
        QThread::msleep(static_cast<unsigned long>(qMax<qint64>(0, i * kPressEveryMs - clock.elapsed())));
        pressed += QDateTime::currentDateTime();
        keyboard.strike(i % 2 == 0 ? kDown : kUp);
    }
    QThread::sleep(1);
    const bool isEnded = program.terminate();

    const QVector<QDateTime> executed = executions(program.logText());
    qint64 longestMs = 0;
    for (int i = 0; i < qMin(pressed.size(), executed.size()); ++i)
        longestMs = qMax(longestMs, pressed[i].msecsTo(executed[i]));
    const QJsonObject devices = program.readConfig(QStringLiteral("controllers.json"));
    int dimmed = 0;
    for (int i = 1; i <= kDevices; ++i)
        dimmed += qRound(devices[idOf(i)].toObject()["brightness"].toDouble() * 100) == 40;
    const bool good =
        isEnded && executed.size() == kPressesOnMany && dimmed == kDevices && longestMs <= kMaxWaitMs;
    std::printf("ten presses a second, %d devices: %d of %d carried out, longest wait %lld ms (limit %lld), "
                "%d devices as bright as they should be%s\n",
                kDevices, executed.size(), kPressesOnMany, longestMs, kMaxWaitMs, dimmed,
                good ? "" : "  NOT GOOD");
    return good;
}

/// In a process of its own, which needs the display from its start on.
int registerHotkeys(int argc, char** argv)
{
    const QGuiApplication app(argc, argv);
    QElapsedTimer clock;
    clock.start();
    QHotkey hotkeys[kHotkeys];
    bool good = true;
    for (int i = 0; i < kHotkeys; ++i)
        good &= hotkeys[i].setShortcut(Qt::Key(Qt::Key_F1 + i), Qt::ControlModifier | Qt::AltModifier, true);
    const double elapsedMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    good &= elapsedMs < kMaxRegisteringMs;
    std::printf("registering %d hotkeys, the first use included: %.2f ms (limit %.0f)%s\n", kHotkeys,
                elapsedMs, kMaxRegisteringMs, good ? "" : "  NOT GOOD");
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "register") == 0)
        return registerHotkeys(argc, argv);
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int presses = qMax(1, argc > 1 ? atoi(argv[1]) : 200);
    VirtualDisplay display(kScreen);
    if (!display.start())
        return 2;
    QByteArray registering;
    bool good =
        display.run(QCoreApplication::applicationFilePath(), {QStringLiteral("register")}, &registering);
    std::fputs(registering.constData(), stdout);
    ScreenPainter screen(display.name());
    screen.fill(QRect(QPoint(), kScreen), Qt::white);
    Keyboard keyboard(display.name());
    good &= measurePresses(display, keyboard, presses);
    good &= measureManyDevices(display, keyboard);
    return good ? 0 : 1;
}
