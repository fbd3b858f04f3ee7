// How long it takes from a click that enters the sound server until the signal that shows it reaches the main
// thread, and what listening costs. Usage: scenario_sound [clicks, default 200]
#include "ProcessUsage.h"
#include "SoundServer.h"
#include "TonePlayer.h"
#include "support/audio/AudioBackend.h"
#include "support/audio/AudioCapManager.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QRandomGenerator>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>

namespace {
constexpr float kHertz = 1000;
constexpr double kLoudPeak = 0.4;
constexpr float kLoudLevel = 50;
constexpr double kLimitMs = 60;
constexpr double kCpuLimit = 1.5; // percent of a core
constexpr double kCpuSeconds = 5;

struct Heard
{
    qint64 peakUs = 0; ///< 0 for not yet
    qint64 levelUs = 0;
    bool isQuiet = false;
};

double at(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values[size_t(double(values.size() - 1) * part)];
}

bool report(const char* what, const std::vector<double>& ms)
{
    const double p95 = at(ms, 0.95);
    std::printf("  %-34s p50 %5.1f  p95 %5.1f  worst %5.1f ms (limit for p95 %g)%s\n", what, at(ms, 0.5), p95,
                at(ms, 1), kLimitMs, p95 <= kLimitMs ? "" : "  OVER");
    return p95 <= kLimitMs;
}

void runEvents(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

bool waitFor(const std::function<bool()>& condition)
{
    for (QDeadlineTimer patience(5000); !patience.hasExpired(); runEvents(5)) {
        if (condition())
            return true;
    }
    return false;
}

void listen(AudioCapturer& capturer, Heard& heard)
{
    QObject* context = QCoreApplication::instance();
    QObject::connect(
        &capturer, &AudioCapturer::channelsPeakValuesChanged, context,
        [&heard](const QVector<QVector<QString>>& peaks) {
            const double peak = peaks.at(0).at(0).toDouble();
            if (peak > kLoudPeak && heard.peakUs == 0)
                heard.peakUs = TonePlayer::nowUs();
        },
        Qt::QueuedConnection);
    QObject::connect(
        &capturer, &AudioCapturer::spectrumsChanged, context,
        [&heard](const QVector<SoundChannel>& channels) {
            float loudest = 0;
            for (const Spectrum& point : channels.at(0).spectrums)
                loudest = std::max(loudest, point.level);
            heard.isQuiet = loudest == 0;
            if (loudest > kLoudLevel && heard.levelUs == 0)
                heard.levelUs = TonePlayer::nowUs();
        },
        Qt::QueuedConnection);
}

bool measureLatency(TonePlayer& player, Heard& heard, int clicks)
{
    std::vector<double> peakMs;
    std::vector<double> levelMs;
    for (int i = 0; i < clicks; ++i) {
        player.play({});
        if (!waitFor([&] { return heard.isQuiet; }))
            return false;
        runEvents(QRandomGenerator::global()->bounded(40));
        heard = Heard();
        player.play({kHertz, 0.5F});
        if (!waitFor([&] { return heard.peakUs && heard.levelUs && player.sentUs(); }))
            return false;
        peakMs.push_back(double(heard.peakUs - player.sentUs()) / 1e3);
        levelMs.push_back(double(heard.levelUs - player.sentUs()) / 1e3);
    }
    const bool good = report("click to its peak", peakMs);
    return report("click to its spectrum", levelMs) && good;
}

bool measureCost(const char* what)
{
    const qint64 self = QCoreApplication::applicationPid();
    const double before = ProcessUsage::of(self).cpuSeconds;
    runEvents(int(kCpuSeconds * 1000));
    const double percent = (ProcessUsage::of(self).cpuSeconds - before) / kCpuSeconds * 100;
    std::printf("  %-34s %.2f %% of a core (limit %g)%s\n", what, percent, kCpuLimit,
                percent <= kCpuLimit ? "" : "  OVER");
    return percent <= kCpuLimit;
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const int clicks = argc > 1 ? std::max(1, atoi(argv[1])) : 200;
    SoundServer server;
    server.useHere();
    if (!server.start())
        return 1;
    AudioCapManager manager(createAudioBackend(), 0);
    const QString id = manager.defaultCapturer();
    bool good = true;
    Heard heard;
    {
        const auto capturer = manager.acquireCapturer(id);
        if (!capturer)
            return 1;
        listen(*capturer, heard);
        {
            TonePlayer player(server.address(), "first");
            good = measureLatency(player, heard, clicks);
        }
        good = measureCost("listening") && good;
    }
    manager.releaseCapturer(id);
    good = measureCost("nobody listens") && good;
    server.stop();
    good = measureCost("no sound server") && good;
    return good ? 0 : 1;
}
