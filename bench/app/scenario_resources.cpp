// What the whole program costs beside games and films: one strip of 120 LEDs on screen synchronisation over a
// still screen and over a moving picture, on a still colour, and on a music effect with a beat and without a
// sound server. Usage: scenario_resources [seconds a case, default 30]
#include "ProcessUsage.h"
#include "ProgramUnderTest.h"
#include "SoundServer.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <cstdio>
#include <iterator>

namespace {

struct Case
{
    const char* name;
    const char* effect;
    double maxCpuPercent;
    double maxResidentMb;
    double minFramesPerSecond;
    enum Sound { None, Playing } sound;
    bool inTray = false; ///< the window was never shown
};

constexpr Case kCases[] = {
    {"screen synchronisation, still", "id.effect.screenSync.fullScreen", 0.4, 110, 1, Case::None},
    {"screen synchronisation", "id.effect.screenSync.fullScreen", 4.0, 110, 1, Case::None},
    {"the same in the tray", "id.effect.screenSync.fullScreen", 4.0, 55, 1, Case::None, true},
    {"still colour", "id.effect.singleColor.singleColor1", 1.0, 110, 1, Case::None},
    {"music", "id.effect.dynamicMusic.peakValues_7", 6.0, 110, 25, Case::Playing},
    {"music, no sound server", "id.effect.dynamicMusic.peakValues_7", 1.0, 110, 0, Case::None},
};
constexpr int kSettleSeconds = 5;

bool run(const Case& scenario, const VirtualDisplay& display, int seconds)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    const QString effect = QLatin1String(scenario.effect);
    program.writeConfig(QStringLiteral("controllers.json"),
                        {{"LV0127:01020304", QJsonObject{{"nbLeds", 120},
                                                         {"brightness", 0.8},
                                                         {"enable", true},
                                                         {"workMode", effect.section('.', 0, -2)},
                                                         {"subMode", effect}}}});
    StripSimulator::Options options;
    options.portsFile = program.portsFile();
    options.bytesPerSecond = 11520;
    StripSimulator strip(options);
    if (!strip.plugIn())
        return false;
    SoundServer sound;
    sound.useHere();
    program.environment.insert(QStringLiteral("PULSE_SERVER"), QString::fromLatin1(sound.address()));
    QProcess beat;
    if (scenario.sound == Case::Playing) {
        if (!sound.start())
            return false;
        beat.start(QCoreApplication::applicationDirPath() + QStringLiteral("/beat-player"), {});
    }
    program.start(scenario.inTray ? QStringList{QStringLiteral("--auto_startup")} : QStringList{});
    QThread::sleep(kSettleSeconds);

    const auto pid = program.process().processId();
    const ProcessUsage before = ProcessUsage::of(pid);
    strip.clear();
    QElapsedTimer clock;
    clock.start();
    QThread::sleep(static_cast<unsigned long>(seconds));
    const double elapsed = clock.elapsed() / 1000.0;
    const ProcessUsage after = ProcessUsage::of(pid);
    const double cpu = 100 * (after.cpuSeconds - before.cpuSeconds) / elapsed;
    const bool good = cpu < scenario.maxCpuPercent && after.residentMb < scenario.maxResidentMb &&
                      strip.counters().frames >= scenario.minFramesPerSecond * elapsed;
    std::printf("%-30s %5.2f %% of a core (limit %.1f), %5.1f MB resident (limit %.0f), %.1f frames/s%s\n",
                scenario.name, cpu, scenario.maxCpuPercent, after.residentMb, scenario.maxResidentMb,
                strip.counters().frames / elapsed, good ? "" : "  TOO MUCH");
    beat.kill();
    beat.waitForFinished();
    return program.terminate() && good;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int seconds = argc > 1 ? atoi(argv[1]) : 30;
    VirtualDisplay display(QSize(1920, 1080));
    if (!display.start())
        return 2;
    QProcess picture;
    bool good = run(kCases[0], display, seconds); // nothing moves yet
    display.startProgram(picture, QCoreApplication::applicationDirPath() + QStringLiteral("/moving-picture"),
                         {});
    for (auto scenario = std::begin(kCases) + 1; scenario != std::end(kCases); ++scenario)
        good &= run(*scenario, display, seconds);
    picture.kill();
    picture.waitForFinished();
    return good ? 0 : 1;
}
