// What many strips cost: 1, 5, 20 and 50 of 120 LEDs on screen synchronisation with what ships as settings,
// each at the pace of a real line, the program hidden as it starts with the session. For each number: from
// the start to the last strip's first light, the cost and every line's pace while the whole screen moves, and
// from a change of the picture to the last byte of each strip's frame, while a picture moves on some of the
// LEDs. Usage: scenario_scale [seconds of cost, default 30] [changes, default 25] [only this number of
// strips]
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "ScreenPainter.h"
#include "StoredStrip.h"
#include "StripRack.h"
#include "VirtualDisplay.h"
#include "percentile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cmath>
#include <cstdio>
#include <map>

namespace {

constexpr QSize kScreen(1920, 1080);
constexpr int kLeds = 120;
constexpr double kFrameBytes = 6 + 3 * kLeds;
constexpr double kLineShare = 0.95; ///< of a line's bytes, which the program fills
constexpr double kPaceFrames = 1000 * StripRack::kBytesPerMs * kLineShare / kFrameBytes; ///< a second
constexpr double kSlotMs = 1000 / kPaceFrames;
constexpr int kWalkMs = 100; ///< ports are asked one after the other

// What is allowed.
constexpr double kLeastShareOfPace = 0.95;
constexpr double kMostTimesOfFive = 4;
constexpr double kP50Ms = 55;
constexpr double kP95Ms = 80;
constexpr double kMsOfStrip = 0.1; ///< each of them makes all wait so long
constexpr double kMostBacklogMs = 2 * kSlotMs;

struct Cost
{
    double cpu = 0; ///< per cent of a core
    std::map<QString, double> byThread;
    double residentMb = 0;
    int threads = 0;
    double switches = 0; ///< a second
    double worstFrames = 0;
    double meanFrames = 0;
    double longestGapMs = 0;
    double longestBacklogMs = 0;
    qint64 garbage = 0;
};

/// What a thread works for; there is one for each line.
QString kindOf(const ThreadUsage& thread, qint64 pid)
{
    if (thread.id == pid)
        return QStringLiteral("main");
    return thread.name.contains(QLatin1String("RACK")) ? QStringLiteral("lines")
           : thread.name == QLatin1String("capture")   ? thread.name
                                                       : QStringLiteral("others");
}

Cost measureCost(qint64 pid, StripRack& rack, int seconds)
{
    std::map<qint64, ThreadUsage> before;
    for (const ThreadUsage& thread : ThreadUsage::allOf(pid))
        before[thread.id] = thread;
    const double cpuBefore = ProcessUsage::of(pid).cpuSeconds;
    rack.begin();
    QElapsedTimer clock;
    clock.start();
    QThread::sleep(static_cast<unsigned long>(seconds));
    const double elapsed = clock.elapsed() / 1000.0;
    const std::vector<StripRack::Seen> seen = rack.seen();
    const ProcessUsage after = ProcessUsage::of(pid);

    Cost cost;
    cost.cpu = 100 * (after.cpuSeconds - cpuBefore) / elapsed;
    cost.residentMb = after.residentMb;
    for (const ThreadUsage& thread : ThreadUsage::allOf(pid)) {
        ++cost.threads;
        cost.byThread[kindOf(thread, pid)] +=
            100 * (thread.cpuSeconds - before[thread.id].cpuSeconds) / elapsed;
        cost.switches += double(thread.switches - before[thread.id].switches) / elapsed;
    }
    cost.worstFrames = 1e9;
    for (const StripRack::Seen& strip : seen) {
        const double frames = double(strip.frames) / elapsed;
        cost.worstFrames = std::min(cost.worstFrames, frames);
        cost.meanFrames += frames / double(seen.size());
        cost.longestGapMs = std::max(cost.longestGapMs, strip.longestGapMs);
        cost.longestBacklogMs = std::max(cost.longestBacklogMs, strip.longestBacklogMs);
        cost.garbage += strip.garbageBytes;
    }
    return cost;
}

/// One for each strip and change; fewer where a change was never shown.
QVector<double> latencies(const VirtualDisplay& display, StripRack& rack, int changes)
{
    constexpr double kGolden = 0.618034; // any phase of the slot, spread evenly
    ScreenPainter screen(display.name());
    QVector<double> all;
    for (int number = 0; number < changes; ++number) {
        QThread::msleep(250);
        QThread::usleep(static_cast<unsigned long>(std::fmod(number * kGolden, 1.0) * kSlotMs * 1000));
        const bool isRed = number % 2 == 0;
        rack.begin(isRed ? LV_RGB{255, 0, 0} : LV_RGB{0, 255, 0});
        screen.fill(QRect(QPoint(), kScreen), isRed ? Qt::red : Qt::green);
        const double changedMs = StripRack::nowMs();
        rack.waitForAll(2000, [](const StripRack::Seen& strip) { return strip.shownMs > 0; });
        for (const StripRack::Seen& strip : rack.seen()) {
            if (strip.shownMs > 0)
                all.append(strip.shownMs - changedMs);
        }
    }
    return all;
}

class MovingPicture
{
public:
    MovingPicture(const VirtualDisplay& display, const QStringList& arguments)
    {
        display.startProgram(
            m_process, QCoreApplication::applicationDirPath() + QStringLiteral("/moving-picture"), arguments);
    }
    ~MovingPicture()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY(MovingPicture)

private:
    QProcess m_process;
};

/// Per cent of a core; nothing when it went wrong.
std::optional<double> run(int strips, const VirtualDisplay& display, int seconds, int changes,
                          std::optional<double> costOfFive)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.environment.remove(QStringLiteral("LUMIVAR_LOG_TO_CONSOLE"));
    QJsonObject stored;
    for (int i = 0; i < strips; ++i)
        stored.insert(StripRack::id(i),
                      storedStrip(QStringLiteral("id.effect.screenSync.fullScreen"), kLeds));
    program.writeConfig(QStringLiteral("controllers.json"), stored);
    StripRack rack(program.portsFile(), strips);
    auto moving = std::make_unique<MovingPicture>(display, QStringList{"--fps", "30"});
    QThread::sleep(1);

    rack.begin();
    const double startedMs = StripRack::nowMs();
    program.start({QStringLiteral("--auto_startup")});
    const int startMs = 20000 + strips * kWalkMs;
    if (!rack.waitForAll(startMs, [](const StripRack::Seen& strip) { return strip.litMs > 0; }) ||
        !rack.isWhole()) {
        std::printf("%2d strips: not all of them are lit\n", strips);
        return {};
    }
    double litMs = 0;
    for (const StripRack::Seen& strip : rack.seen())
        litMs = std::max(litMs, strip.litMs - startedMs);
    const qint64 pid = program.process().processId();
    const double startCpu = ProcessUsage::of(pid).cpuSeconds;
    QThread::sleep(4);

    const Cost cost = measureCost(pid, rack, seconds);
    moving.reset();
    moving =
        std::make_unique<MovingPicture>(display, QStringList{"--geometry", "320x1080+0+0", "--fps", "60"});
    QThread::sleep(1);
    const QVector<double> waits = latencies(display, rack, changes);
    const double endMb = ProcessUsage::of(pid).residentMb;
    const bool ended = program.terminate();

    const double share = cost.worstFrames / kPaceFrames;
    const bool isAllShown = waits.size() == strips * changes;
    const double p50 = waits.isEmpty() ? 0 : percentile(waits, 0.5);
    const double p95 = waits.isEmpty() ? 0 : percentile(waits, 0.95);
    const double mostP50 = kP50Ms + strips * kMsOfStrip, mostP95 = kP95Ms + strips * kMsOfStrip;
    const double times = costOfFive ? cost.cpu / *costOfFive : 0;
    const bool isGood = ended && isAllShown && p50 <= mostP50 && p95 <= mostP95 &&
                        share >= kLeastShareOfPace && cost.longestBacklogMs <= kMostBacklogMs &&
                        cost.garbage == 0 && (strips != 20 || times <= kMostTimesOfFive);
    std::printf(
        "%2d strips: %5.2f %% of a core, %5.1f MB, %3d threads, worst line %4.1f frames/s = %3.0f %% of "
        "its pace (least %.0f), p50 %.0f ms (limit %.0f), p95 %.0f ms (limit %.0f), all lit after "
        "%.2f s (asking %.1f), %.2f s of CPU%s\n",
        strips, cost.cpu, cost.residentMb, cost.threads, cost.worstFrames, 100 * share,
        100 * kLeastShareOfPace, p50, mostP50, p95, mostP95, litMs / 1000, strips * kWalkMs / 1000.0,
        startCpu, isGood ? "" : "  NOT GOOD");
    std::printf("   mean %.1f frames/s, longest gap %.0f ms, longest backlog %.0f ms (limit %.0f), %d of %d "
                "changes shown, %lld bytes of garbage, %.0f switches/s, %.1f MB at the end\n  ",
                cost.meanFrames, cost.longestGapMs, cost.longestBacklogMs, kMostBacklogMs, int(waits.size()),
                strips * changes, static_cast<long long>(cost.garbage), cost.switches, endMb);
    for (const auto& [kind, percent] : cost.byThread)
        std::printf(" %s %.2f %%", qPrintable(kind), percent);
    if (strips == 20 && costOfFive)
        std::printf(", %.1f times the cost of 5 (limit %.0f)", times, kMostTimesOfFive);
    std::printf("\n");
    return isGood ? std::optional(cost.cpu) : std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int seconds = argc > 1 ? atoi(argv[1]) : 30;
    const int changes = argc > 2 ? atoi(argv[2]) : 25;
    const int only = argc > 3 ? atoi(argv[3]) : 0;

    VirtualDisplay display(kScreen);
    if (!display.start())
        return 2;
    bool isGood = true;
    std::optional<double> costOfFive;
    for (const int strips : {1, 5, 20, 50}) {
        if (only && strips != only)
            continue;
        const std::optional<double> cost = run(strips, display, seconds, changes, costOfFive);
        if (strips == 5)
            costOfFive = cost;
        isGood = isGood && cost;
    }
    return isGood ? 0 : 1;
}
