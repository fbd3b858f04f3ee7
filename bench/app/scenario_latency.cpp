// How long it takes from a change on the screen until the last byte of the frame that shows it has gone over
// a line of 11520 bytes a second, for strips of 120 and of 300 LEDs that follow the screen with what ships as
// settings, each at the pace of its line; while the screen is still but for the changes, and while a picture
// moves on it. A third strip of 300 LEDs runs a colour map at the limit of its line.
// Usage: scenario_latency [seconds to run first, default 600] [changes to measure, default 60]
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "percentile.h"
#include "shownColor.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr int kLineBytesPerSecond = 11520;
constexpr int kMapLeds = 300;
constexpr double kMinMapFramesPerSecond = 12;
constexpr double kMaxGrowthMb = 2;

const QString kSync = QStringLiteral("id.effect.screenSync.fullScreen");

struct Goal
{
    int leds;
    double p50Ms;
    double p95Ms;
};
constexpr Goal kGoals[] = {{120, 55, 80}, {300, 130, 180}};

StripSimulator::Options options(const ProgramUnderTest& program, const char* model, char serial)
{
    StripSimulator::Options options;
    options.model = model;
    options.serial = QByteArray(3, '\0') + serial;
    options.portName = QStringLiteral("ttySIM%1").arg(int(serial));
    options.portsFile = program.portsFile();
    options.bytesPerSecond = kLineBytesPerSecond;
    return options;
}

bool report(const char* what, const Goal& goal, const QVector<double>& latencies, int changes)
{
    if (latencies.size() < changes) {
        std::printf("%d LEDs, %s: %d of %d changes were never shown\n", goal.leds, what,
                    changes - latencies.size(), changes);
        return false;
    }
    const double p50 = percentile(latencies, 0.5);
    const double p95 = percentile(latencies, 0.95);
    const bool good = p50 <= goal.p50Ms && p95 <= goal.p95Ms;
    std::printf("%d LEDs, %s: p50 %.0f ms (limit %.0f), p95 %.0f ms (limit %.0f), line %.0f ms%s\n",
                goal.leds, what, p50, goal.p50Ms, p95, goal.p95Ms,
                (6 + 3 * goal.leds) * 1000.0 / kLineBytesPerSecond, good ? "" : "  TOO SLOW");
    return good;
}

bool measure(const char* what, const VirtualDisplay& display, const QVector<StripSimulator*>& strips,
             int changes)
{
    ScreenPainter screen(display.name());
    bool good = true;
    for (int i = 0; i < strips.size(); ++i) {
        StripSimulator& strip = *strips[i];
        QVector<double> latencies;
        bool red = false;
        for (int number = 0; number < changes; ++number) {
            QThread::msleep(200 + QRandomGenerator::global()->bounded(160));
            waitForPhase(strip, number, (6 + 3 * kGoals[i].leds) * 1050.0 / kLineBytesPerSecond);
            red = !red;
            strip.clear();
            screen.fill(QRect(QPoint(), kScreen), red ? Qt::red : Qt::green);
            const double changedMs = StripSimulator::nowMs();
            const double shownMs = shownAt(strip, red ? LV_RGB{255, 0, 0} : LV_RGB{0, 255, 0});
            if (shownMs > 0)
                latencies.append(shownMs - changedMs);
        }
        good &= report(what, kGoals[i], latencies, changes);
    }
    return good;
}

/// On some LEDs, so that every slot has a new frame to send.
void startPicture(QProcess& picture, const VirtualDisplay& display)
{
    display.startProgram(picture, QCoreApplication::applicationDirPath() + QStringLiteral("/moving-picture"),
                         {"--geometry", "320x1080+0+0", "--fps", "60"});
    QThread::sleep(1);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // it takes minutes: whoever redirects it wants to see each line
    const int seconds = argc > 1 ? atoi(argv[1]) : 600;
    const int changes = argc > 2 ? atoi(argv[2]) : 60;

    VirtualDisplay display(kScreen);
    if (!display.start())
        return 2;
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.environment.remove(QStringLiteral("LUMIVAR_LOG_TO_CONSOLE"));
    program.writeConfig(
        QStringLiteral("controllers.json"),
        {{"LV0127:00000001", storedStrip(kSync, kGoals[0].leds)},
         {"LV0300:00000002", storedStrip(kSync, kGoals[1].leds)},
         {"LV0300:00000003", storedStrip(QStringLiteral("id.effect.colorful.ColorMap_3"), kMapLeds)}});
    StripSimulator shortStrip(options(program, "LV0127", 1));
    StripSimulator longStrip(options(program, "LV0300", 2));
    StripSimulator map(options(program, "LV0300", 3));
    const QVector<StripSimulator*> strips{&shortStrip, &longStrip};
    if (!shortStrip.plugIn() || !longStrip.plugIn() || !map.plugIn())
        return 2;
    program.start({QStringLiteral("--auto_startup")}); // hidden
    QThread::sleep(4);

    bool good = measure("still screen", display, strips, changes);
    QProcess picture;
    startPicture(picture, display);
    good &= measure("moving picture", display, strips, changes);
    const ProcessUsage before = ProcessUsage::of(program.process().processId());
    map.clear();
    QElapsedTimer clock;
    clock.start();
    QThread::sleep(static_cast<unsigned long>(seconds));
    const double mapRate = map.counters().frames * 1000.0 / clock.elapsed();
    const double growthMb = ProcessUsage::of(program.process().processId()).residentMb - before.residentMb;
    std::printf("%d LEDs on a colour map for %d s: %.1f frames/s, longest gap %.0f ms, memory %+.1f MB "
                "(limit %.0f)\n",
                kMapLeds, seconds, mapRate, map.counters().longestGapMs, growthMb, kMaxGrowthMb);
    good &= mapRate >= kMinMapFramesPerSecond && growthMb <= kMaxGrowthMb;
    good &= measure("moving picture afterwards", display, strips, changes);
    picture.kill();
    picture.waitForFinished();
    good &= measure("still screen afterwards", display, strips, changes);

    // Backlog on the line at its limit would show here: the press turns all strips off.
    const double pressedMs = StripSimulator::nowMs();
    map.clear();
    map.pressButton();
    const double offMs = shownAt(map, LV_RGB{}) - pressedMs;
    std::printf("button to black on the %d-LED strip: %.0f ms (line %.0f ms)\n", kMapLeds, offMs,
                (6 + 3 * kMapLeds) * 1000.0 / kLineBytesPerSecond);
    good &= offMs > 0;
    good &= program.terminate();
    return good ? 0 : 1;
}
