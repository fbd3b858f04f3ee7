// What the whole program costs while it follows a screen that moves, hidden as it starts with the session:
// one strip of 120 LEDs at a real line's pace, two sizes of screen, three rates. Another process paints.
// Beside it stands a plain loop that copies the same screen at the same rate and takes its mean. Usage:
// scenario_moving [seconds a case, default 20] [only this height of screen]
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "support/capture/X11Image.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <opencv2/core.hpp>
#include <thread>
#include <xcb/xcb.h>

namespace {

constexpr int kSettleSeconds = 4;
constexpr int kFloorSeconds = 5;
constexpr int kAsFastAsTheLine = -1;
constexpr int kFirstFrameMs = 20000;
constexpr double kMaxSwitches = 6; // a frame, in all threads
constexpr double kMaxStartCpuSeconds = 0.6;

struct Case
{
    QSize screen;
    int intervalMs;
    double maxCpuPercent;
    double minFramesPerSecond;
};

constexpr QSize kFullHd(1920, 1080);
constexpr QSize kUltraHd(3840, 2160);
constexpr Case kCases[] = {
    {kFullHd, 80, 0.8, 12},  {kFullHd, 33, 2.0, 27},  {kFullHd, kAsFastAsTheLine, 2.0, 27},
    {kUltraHd, 80, 1.7, 12}, {kUltraHd, 33, 3.8, 27}, {kUltraHd, kAsFastAsTheLine, 3.8, 27},
};

double threadCpuSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Per cent of a core; below zero when the screen cannot be read.
double plainLoop(const VirtualDisplay& display, QSize screen, double framesPerSecond)
{
    xcb_connection_t* connection = xcb_connect(display.name().constData(), nullptr);
    double percent = -1;
    if (!xcb_connection_has_error(connection)) {
        const uint32_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        X11Image image(connection, true);
        const auto period = std::chrono::nanoseconds(qint64(1e9 / framesPerSecond));
        const int frames = int(framesPerSecond * kFloorSeconds);
        image.grab(root, QRect(QPoint(), screen)); // sets itself up
        auto next = std::chrono::steady_clock::now();
        const double before = threadCpuSeconds();
        double sum = 0;
        for (int i = 0; i < frames; ++i) {
            std::this_thread::sleep_until(next += period);
            const uchar* pixels = image.grab(root, QRect(QPoint(), screen));
            if (pixels)
                sum += cv::mean(
                    cv::Mat(screen.height(), screen.width(), CV_8UC4, const_cast<uchar*>(pixels)))[1];
        }
        if (sum > 0)
            percent = 100 * (threadCpuSeconds() - before) / kFloorSeconds;
    }
    xcb_disconnect(connection);
    return percent;
}

/// CPU seconds of the program until the strip shows its first frame; below zero when none comes.
double costOfStart(ProgramUnderTest& program, const StripSimulator& strip)
{
    for (QDeadlineTimer patience(kFirstFrameMs); !patience.hasExpired(); QThread::msleep(2)) {
        if (strip.counters().frames > 0)
            return ProcessUsage::of(program.process().processId()).cpuSeconds;
    }
    return -1;
}

bool run(const Case& scenario, const VirtualDisplay& display, int seconds)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.environment.remove(QStringLiteral("LUMIVAR_LOG_TO_CONSOLE"));
    program.writeConfig(
        QStringLiteral("controllers.json"),
        {{"LV0127:01020304", storedStrip(QStringLiteral("id.effect.screenSync.fullScreen"), 120, 0.8)}});
    program.writeConfig(QStringLiteral("app.json"), {{"screenSync.frameIntervalMs", scenario.intervalMs}});
    StripSimulator::Options options;
    options.portsFile = program.portsFile();
    options.bytesPerSecond = 11520;
    StripSimulator strip(options);
    if (!strip.plugIn())
        return false;
    program.start({QStringLiteral("--auto_startup")});
    const double startSeconds = costOfStart(program, strip);
    QThread::sleep(kSettleSeconds);

    const auto pid = program.process().processId();
    const ProcessUsage before = ProcessUsage::of(pid);
    const QVector<ThreadUsage> threadsBefore = ThreadUsage::allOf(pid);
    strip.clear();
    QElapsedTimer clock;
    clock.start();
    QThread::sleep(static_cast<unsigned long>(seconds));
    const double elapsed = clock.elapsed() / 1000.0;
    const double frames = std::max<double>(1, strip.counters().frames);
    const ProcessUsage after = ProcessUsage::of(pid);
    const QVector<ThreadUsage> threads = ThreadUsage::allOf(pid);
    qint64 switches = 0;
    QString byThread;
    for (const ThreadUsage& now : threads) {
        const auto same = std::find_if(threadsBefore.begin(), threadsBefore.end(),
                                       [&now](const ThreadUsage& then) { return then.id == now.id; });
        const ThreadUsage then = same == threadsBefore.end() ? ThreadUsage() : *same;
        switches += now.switches - then.switches;
        byThread += QString::asprintf("  %s %.2f %% %.2f", qPrintable(now.name),
                                      100 * (now.cpuSeconds - then.cpuSeconds) / elapsed,
                                      double(now.switches - then.switches) / frames);
    }
    const bool ended = program.terminate();

    const double cpu = 100 * (after.cpuSeconds - before.cpuSeconds) / elapsed;
    const double floor = plainLoop(display, scenario.screen, frames / elapsed);
    const bool good = cpu <= scenario.maxCpuPercent && double(switches) / frames <= kMaxSwitches &&
                      frames / elapsed >= scenario.minFramesPerSecond && startSeconds >= 0 &&
                      startSeconds <= kMaxStartCpuSeconds;
    std::printf("%dp every %3d ms: %5.2f %% of a core (limit %.1f, plain loop %.2f), %4.1f switches a frame "
                "(limit %.0f), %4.1f frames/s (least %.0f), %5.1f MB resident, %.2f s of CPU to the first "
                "frame (limit %.1f)%s\n   %s\n",
                scenario.screen.height(), scenario.intervalMs, cpu, scenario.maxCpuPercent, floor,
                double(switches) / frames, kMaxSwitches, frames / elapsed, scenario.minFramesPerSecond,
                after.residentMb, startSeconds, kMaxStartCpuSeconds, good ? "" : "  TOO MUCH",
                qPrintable(byThread));
    return ended && good;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int seconds = argc > 1 ? atoi(argv[1]) : 20;
    const int onlyHeight = argc > 2 ? atoi(argv[2]) : 0;
    bool good = true;
    for (const QSize screen : {kFullHd, kUltraHd}) {
        if (onlyHeight && screen.height() != onlyHeight)
            continue;
        VirtualDisplay display(screen);
        if (!display.start())
            return 2;
        QProcess picture;
        display.startProgram(picture,
                             QCoreApplication::applicationDirPath() + QStringLiteral("/moving-picture"), {});
        for (const Case& scenario : kCases) {
            if (scenario.screen == screen)
                good &= run(scenario, display, seconds);
        }
        picture.kill();
        picture.waitForFinished();
    }
    return good ? 0 : 1;
}
