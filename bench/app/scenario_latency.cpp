// How long it takes from a change on the screen until the last byte of the frame that shows it has gone over
// a line of 11520 bytes a second, while a second strip of 300 LEDs runs a colour map at the limit of its
// line. Usage: scenario_latency [seconds to run first, default 600] [changes to measure, default 60]
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "percentile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>
#include <algorithm>
#include <cstdio>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr int kLineBytesPerSecond = 11520;
constexpr double kPeriodMs = 80;
constexpr double kSlackMs = 25;
constexpr int kSyncLeds = 120;
constexpr int kMapLeds = 300;
constexpr int kSeenLed = 110; ///< from here on LEDs look at a corner that the program's window does not cover
constexpr double kMinMapFramesPerSecond = 12;
constexpr double kMaxGrowthMb = 2;

const QString kSyncStrip = QStringLiteral("LV0127:00000001");
const QString kMapStrip = QStringLiteral("LV0300:00000002");

QJsonObject stored(const QString& effect, int leds)
{
    return {{"nbLeds", leds},
            {"brightness", 1.0},
            {"enable", true},
            {"ledPerUnit", 1},
            {"workMode", effect.section('.', 0, -2)},
            {"subMode", effect}};
}

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

/// When the first frame was complete whose LEDs from `first` on all show this colour, in ms; 0 when none
/// comes in two seconds.
double shownAt(const StripSimulator& strip, LV_RGB color, int first = 0)
{
    for (QDeadlineTimer patience(2000); !patience.hasExpired(); QThread::msleep(5)) {
        for (const StripFrame& frame : strip.frames()) {
            if (frame.colors.size() > first && std::all_of(frame.colors.begin() + first, frame.colors.end(),
                                                           [&](LV_RGB c) { return c == color; }))
                return frame.lastByteMs;
        }
    }
    return 0;
}

QVector<double> measure(ScreenPainter& screen, StripSimulator& strip, int changes)
{
    QVector<double> latencies;
    bool red = false;
    for (int i = 0; i < changes; ++i) {
        QThread::msleep(200 + QRandomGenerator::global()->bounded(160)); // any phase of the effect's period
        red = !red;
        strip.clear();
        screen.fill(QRect(QPoint(), kScreen), red ? Qt::red : Qt::green);
        const double changedMs = StripSimulator::nowMs();
        const double shownMs = shownAt(strip, red ? LV_RGB{255, 0, 0} : LV_RGB{0, 255, 0}, kSeenLed);
        if (shownMs > 0)
            latencies.append(shownMs - changedMs);
    }
    return latencies;
}

bool report(const char* what, const QVector<double>& latencies, int changes)
{
    const double lineMs = (6 + 3 * kSyncLeds) * 1000.0 / kLineBytesPerSecond;
    const double limit = kPeriodMs + lineMs + kSlackMs;
    if (latencies.size() < changes) {
        std::printf("%s: %d of %d changes were never shown\n", what, changes - latencies.size(), changes);
        return false;
    }
    const double p95 = percentile(latencies, 0.95);
    std::printf("%s: p50 %.0f ms, p95 %.0f ms (line %.0f ms, period %.0f ms, limit %.0f ms)%s\n", what,
                percentile(latencies, 0.5), p95, lineMs, kPeriodMs, limit, p95 <= limit ? "" : "  TOO SLOW");
    return p95 <= limit;
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
    ScreenPainter screen(display.name());
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.writeConfig(QStringLiteral("controllers.json"),
                        {{kSyncStrip, stored(QStringLiteral("id.effect.screenSync.fullScreen"), kSyncLeds)},
                         {kMapStrip, stored(QStringLiteral("id.effect.colorful.ColorMap_3"), kMapLeds)}});
    StripSimulator sync(options(program, "LV0127", 1));
    StripSimulator map(options(program, "LV0300", 2));
    if (!sync.plugIn() || !map.plugIn())
        return 2;
    program.start();
    QThread::sleep(3);

    bool good = report("at the start", measure(screen, sync, changes), changes);
    const ProcessUsage before = ProcessUsage::of(program.process().processId());
    map.clear();
    QElapsedTimer clock;
    clock.start();
    QThread::sleep(static_cast<unsigned long>(seconds));
    const double mapRate = map.counters().frames * 1000.0 / clock.elapsed();
    const double growthMb = ProcessUsage::of(program.process().processId()).residentMb - before.residentMb;
    std::printf("%d LEDs on a colour map for %d s: %.1f frames/s, longest gap %.0f ms, memory %+.1f MB\n",
                kMapLeds, seconds, mapRate, map.counters().longestGapMs, growthMb);
    good &= mapRate >= kMinMapFramesPerSecond && growthMb <= kMaxGrowthMb;
    good &= report("afterwards", measure(screen, sync, changes), changes);

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
