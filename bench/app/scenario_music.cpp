// How long it takes from a click in a silent stream that enters the sound server until the music effect emits
// the picture that shows it, and until the whole program has sent that picture's last byte over a line of
// 11520 bytes a second. Usage: scenario_music [clicks, default 200]
#include "ProgramUnderTest.h"
#include "SoundServer.h"
#include "StripSimulator.h"
#include "TonePlayer.h"
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"
#include "percentile.h"
#include "support/audio/AudioCapManager.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>

namespace {

constexpr int kLeds = 120;
constexpr int kLineBytesPerSecond = 11520;
constexpr double kLineMs = (6 + 3 * kLeds) * 1000.0 / kLineBytesPerSecond;
constexpr double kMaxEffectMs = 60;
constexpr double kMaxProgramMs = kMaxEffectMs + 2 * kLineMs; // it may have to wait for a frame on its way
constexpr TonePlayer::Tone kClick{1000, 0.5F};
const QString kEffect = QStringLiteral("id.effect.dynamicMusic.peakValues_1");

bool isLit(const QVector<LV_RGB>& colors)
{
    return colors.count(LV_RGB{}) < colors.size();
}

void runEvents(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitFor(const std::function<bool()>& condition)
{
    for (QDeadlineTimer patience(10000); !patience.hasExpired(); runEvents(2)) {
        if (condition())
            return true;
    }
    return false;
}

/// What shows the sound: the effect, or the strip.
struct Light
{
    std::function<bool()> isDark;
    std::function<void()> forget;    ///< what was shown until now
    std::function<double()> shownMs; ///< when there was light since then, in steady time; 0 for not yet
};

bool measure(const char* what, const Light& light, const SoundServer& server, int clicks, double limitMs)
{
    TonePlayer player(server.address(), "first");
    QVector<double> latencies;
    for (int i = 0; i < clicks; ++i) {
        player.play({});
        if (!waitFor(light.isDark))
            break;
        runEvents(QRandomGenerator::global()->bounded(40)); // any phase of the analysis and of the line
        light.forget();
        player.play(kClick);
        if (!waitFor([&] { return light.shownMs() > 0 && player.sentUs() > 0; }))
            break;
        latencies.append(light.shownMs() - static_cast<double>(player.sentUs()) / 1e3);
    }
    if (latencies.size() < clicks) {
        std::printf("%s: a click was never shown\n", what);
        return false;
    }
    const double p95 = percentile(latencies, 0.95);
    std::printf("%-40s p50 %5.1f  p95 %5.1f  worst %5.1f ms (limit for p95 %.0f)%s\n", what,
                percentile(latencies, 0.5), p95, percentile(latencies, 1), limitMs,
                p95 <= limitMs ? "" : "  TOO SLOW");
    return p95 <= limitMs;
}

bool measureEffect(const SoundServer& server, int clicks)
{
    EffectWorkerOptions entry;
    entry.id = kEffect;
    ControlOptions strip;
    strip.model = strip.id = QStringLiteral("LV0127");
    strip.nbLeds = kLeds;
    AudioPeakValues effect(entry, nullptr);
    effect.load(strip);
    bool dark = false;
    double shownMs = 0;
    QObject::connect(&effect, &IEffectWorker::updateColors, &effect, [&](const QVector<LV_RGB>& colors) {
        dark = !isLit(colors);
        if (!dark && shownMs <= 0)
            shownMs = StripSimulator::nowMs();
    });
    const Light light{[&] { return dark; }, [&] { shownMs = 0; }, [&] { return shownMs; }};
    const bool good = measure("click to the picture of the effect", light, server, clicks, kMaxEffectMs);
    effect.unload();
    return good;
}

bool measureProgram(const SoundServer& server, int clicks)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.writeConfig(QStringLiteral("controllers.json"),
                        {{"LV0127:01020304", QJsonObject{{"nbLeds", kLeds},
                                                         {"brightness", 1.0},
                                                         {"enable", true},
                                                         {"workMode", kEffect.section('.', 0, -2)},
                                                         {"subMode", kEffect}}}});
    StripSimulator::Options options;
    options.portsFile = program.portsFile();
    options.bytesPerSecond = kLineBytesPerSecond;
    StripSimulator strip(options);
    if (!strip.plugIn())
        return false;
    program.start();
    const Light light{[&] { return strip.counters().frames > 0 && !isLit(strip.shownColors()); },
                      [&] { strip.clear(); },
                      [&] {
                          for (const StripFrame& frame : strip.frames()) {
                              if (isLit(frame.colors))
                                  return frame.lastByteMs;
                          }
                          return 0.0;
                      }};
    const bool good = measure("click to the last byte at the strip", light, server, clicks, kMaxProgramMs);
    return program.terminate() && good;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home; // for the settings of the effect
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, home.path().toLocal8Bit());
    qputenv("QT_LOGGING_RULES", "*.debug=false\n*.info=false");
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Lumivar"));
    const int clicks = argc > 1 ? std::max(1, atoi(argv[1])) : 200;
    SoundServer server;
    server.useHere();
    if (!server.start())
        return 2;
    bool good = measureEffect(server, clicks);
    good = measureProgram(server, clicks) && good;
    return good ? 0 : 1;
}
