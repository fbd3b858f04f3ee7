// What the sound costs: the analysis of one hop on its thread (limit: 150 us at 48 kHz), and what the sound
// system's own thread does for a fragment of 10 ms.
#include "support/audio/AudioAnalyser.h"
#include "support/audio/SampleRing.h"

#include <benchmark/benchmark.h>
#include <random>

namespace {
std::vector<float> noise(int count)
{
    std::minstd_rand random(7);
    std::uniform_real_distribution<float> sample(-0.5F, 0.5F);
    std::vector<float> samples(static_cast<size_t>(count));
    for (float& value : samples)
        value = sample(random);
    return samples;
}

void analyseHop(benchmark::State& state)
{
    AudioAnalyser analyser(int(state.range(0)));
    const std::vector<float> left = noise(analyser.hop());
    const std::vector<float> right = noise(analyser.hop());
    for (auto _ : state) {
        analyser.feed(left.data(), right.data());
        benchmark::DoNotOptimize(analyser.spectrum());
        benchmark::DoNotOptimize(analyser.peaks());
    }
}
BENCHMARK(analyseHop)->Arg(44100)->Arg(48000)->Arg(192000)->Unit(benchmark::kMicrosecond);

void takeFragment(benchmark::State& state)
{
    constexpr int kFrames = 480;
    const int channels = int(state.range(0));
    const std::vector<float> fragment = noise(kFrames * channels);
    SampleRing ring;
    for (auto _ : state) {
        ring.write(fragment.data(), kFrames, channels);
        ring.skip(kFrames);
    }
}
BENCHMARK(takeFragment)->Arg(2)->Arg(6)->Unit(benchmark::kMicrosecond);
} // namespace

BENCHMARK_MAIN();
