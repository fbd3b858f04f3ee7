// One update of a music mode on a strip of 300 LEDs, from a spectrum to the picture. Limit for mode 4 at 47
// updates a second and 2 % of a core: 425 us.
#include "effects/dynamicMusic/Mode3/MusicMode3.h"
#include "effects/dynamicMusic/Mode4/MusicMode4.h"
#include "support/audio/AudioAnalyser.h"
#include "support/audio/AudioCapManager.h"
#include "support/audio/NullAudioBackend.h"

#include <QGuiApplication>
#include <QStandardPaths>

#include <benchmark/benchmark.h>
#include <random>

namespace {

/// Of noise, so that every band has something else to show.
QVector<QVector<SoundChannel>> spectra(int count)
{
    std::minstd_rand random(7);
    std::uniform_real_distribution<float> sample(-0.01F, 0.01F);
    AudioAnalyser analyser(48000);
    std::vector<float> left(static_cast<size_t>(analyser.hop()));
    std::vector<float> right = left;
    QVector<QVector<SoundChannel>> result;
    while (result.size() < count) {
        for (size_t i = 0; i < left.size(); ++i) {
            left[i] = sample(random);
            right[i] = sample(random);
        }
        analyser.feed(left.data(), right.data());
        result.append(analyser.spectrum());
    }
    return result;
}

template <typename Mode>
void onePicture(benchmark::State& state)
{
    AudioCapManager silence(std::make_unique<NullAudioBackend>());
    Mode mode(EffectWorkerOptions(), nullptr);
    ControlOptions strip;
    strip.nbLeds = 300;
    mode.load(strip);
    QObject::connect(&mode, &IEffectWorker::updateColors,
                     [](const QVector<LV_RGB>& colors) { benchmark::DoNotOptimize(colors.constData()); });
    const auto sounds = spectra(16);
    int i = 0;
    for (auto _ : state)
        mode.spectrumUpdate(sounds.at(++i % sounds.size()));
}
BENCHMARK_TEMPLATE(onePicture, MusicMode3)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(onePicture, MusicMode4)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
