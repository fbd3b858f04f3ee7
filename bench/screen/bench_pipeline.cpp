// The way from a captured frame of 120x67 to 300 colours, as a whole and in its steps.
#include "effects/screenSync/FrameFilters.h"
#include "effects/screenSync/LedMap.h"
#include "effects/screenSync/ScreenBand.h"

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

namespace {

constexpr int kLeds = 300;
constexpr double kDefaultBlur = 0.5;

/// Smooth shapes with some noise, all of it brighter than black on one side only.
cv::Mat desktopFrame()
{
    cv::Mat frame(67, 120, CV_8UC4);
    for (int y = 0; y < frame.rows; ++y)
        for (int x = 0; x < frame.cols; ++x)
            frame.at<cv::Vec4b>(y, x) =
                cv::Vec4b(cv::saturate_cast<uchar>(2 * x), cv::saturate_cast<uchar>(3 * y),
                          static_cast<uchar>((x * 37 + y * 101) % 256), 255);
    return frame;
}

void blurOnUMat(benchmark::State& state)
{
    FrameFilters::keepOnThisThread();
    const cv::Mat frame = desktopFrame();
    const double strength = static_cast<double>(state.range(0)) / 100.0;
    for (auto _ : state) {
        cv::UMat sharp;
        frame.copyTo(sharp);
        cv::Mat out;
        FrameFilters::blur(sharp, strength).copyTo(out);
        benchmark::DoNotOptimize(out.data);
    }
}
BENCHMARK(blurOnUMat)->ArgName("percent")->Arg(0)->Arg(50)->Arg(100)->Unit(benchmark::kMicrosecond);

void wipeDarkSide(benchmark::State& state)
{
    const cv::Mat frame = desktopFrame();
    for (auto _ : state) {
        cv::Mat result;
        FrameFilters::wipeDarkSide(frame, result);
        benchmark::DoNotOptimize(result.data);
    }
}
BENCHMARK(wipeDarkSide)->Unit(benchmark::kMicrosecond);

void saturationOfAllLeds(benchmark::State& state)
{
    QVector<LV_RGB> colors(kLeds);
    readColors(desktopFrame(), LedMap::defaultGrid(kLeds).points, colors);
    for (auto _ : state) {
        QVector<LV_RGB> result = colors;
        for (LV_RGB& color : result)
            color = FrameFilters::adjustSaturation(color, 0.3);
        benchmark::DoNotOptimize(result.data());
    }
}
BENCHMARK(saturationOfAllLeds)->Unit(benchmark::kMicrosecond);

void halfScreenLine(benchmark::State& state)
{
    const cv::Mat frame = desktopFrame();
    for (auto _ : state)
        benchmark::DoNotOptimize(bandColors(kLeftBand, frame, kLeds).constData());
}
BENCHMARK(halfScreenLine)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
