// The way from a captured frame of 120x67 to 300 colours, as a whole and in its steps.
#include "effects/screenSync/BorderTracker.h"
#include "effects/screenSync/ColorSmoother.h"
#include "effects/screenSync/FrameFilters.h"
#include "effects/screenSync/LedMap.h"
#include "effects/screenSync/ScreenBand.h"
#include "effects/screenSync/subModes/CinemaScreen.h"
#include "effects/screenSync/subModes/HalfScreens.h"
#include "support/capture/FrameScaler.h"
#include "support/capture/HdrPixels.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>
#include <random>
#include <vector>

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

/// The whole frame, as the effect timer drives it.
template <typename Mode>
void frameToLeds(benchmark::State& state)
{
    EffectWorkerOptions effect;
    effect.id = QStringLiteral("id.effect.screenSync.bench");
    ControlOptions controller;
    controller.id = QStringLiteral("BENCH:01");
    controller.nbLeds = kLeds;
    Mode worker(effect, nullptr);
    worker.load(controller);
    worker.setEffectProperty(QStringLiteral("wipeDarkSide"), state.range(0) != 0);
    int emitted = 0;
    QObject::connect(&worker, &AbsScreenSync::updateColors, &worker,
                     [&](const QVector<LV_RGB>&) { ++emitted; });
    const cv::Mat frame = desktopFrame();
    for (auto _ : state)
        worker.frameInput(frame);
    if (emitted < static_cast<int>(state.iterations()))
        state.SkipWithError("frames were lost");
}
BENCHMARK_TEMPLATE(frameToLeds, FullScreenMode)
    ->ArgName("wipe")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(frameToLeds, CinemaScreen)->ArgName("wipe")->Arg(0)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(frameToLeds, TopHalfScreen)->ArgName("wipe")->Arg(0)->Unit(benchmark::kMicrosecond);

/// Taking over and storing a whole layout.
void layoutOfAllLeds(benchmark::State& state)
{
    ControlOptions controller;
    controller.id = QStringLiteral("BENCH:01");
    controller.nbLeds = kLeds;
    FullScreenMode worker({}, nullptr);
    worker.load(controller);
    const QJsonValue map = worker.effectProperty(QStringLiteral("LEDMap"));
    for (auto _ : state)
        worker.setEffectProperty(QStringLiteral("LEDMap"), map);
}
BENCHMARK(layoutOfAllLeds)->Unit(benchmark::kMillisecond);

void blur(benchmark::State& state)
{
    const cv::Mat frame = desktopFrame();
    const double strength = static_cast<double>(state.range(0)) / 100.0;
    for (auto _ : state)
        benchmark::DoNotOptimize(FrameFilters::blur(frame, strength).data);
}
BENCHMARK(blur)->ArgName("percent")->Arg(0)->Arg(50)->Arg(100)->Unit(benchmark::kMicrosecond);

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

/// A picture with noise.
void smoothingOfAllLeds(benchmark::State& state)
{
    std::vector<QVector<LV_RGB>> noisy(64, QVector<LV_RGB>(kLeds));
    std::mt19937 random;
    for (QVector<LV_RGB>& colors : noisy)
        for (LV_RGB& color : colors)
            color = {static_cast<std::uint8_t>(100 + random() % 4), static_cast<std::uint8_t>(random() % 4),
                     0};
    ColorSmoother smoother;
    smoother.setMode(ColorSmoother::Mode::Responsive);
    std::size_t frame = 0;
    for (auto _ : state) {
        QVector<LV_RGB> colors = noisy[++frame % noisy.size()];
        smoother.step(colors, 0.033);
        benchmark::DoNotOptimize(colors.data());
    }
}
BENCHMARK(smoothingOfAllLeds)->Unit(benchmark::kMicrosecond);

void borderOfFrame(benchmark::State& state)
{
    cv::Mat frame = desktopFrame();
    frame.rowRange(0, 8).setTo(0);
    frame.rowRange(59, 67).setTo(0);
    BorderTracker tracker;
    for (auto _ : state)
        benchmark::DoNotOptimize(tracker.step(frame, 0.033));
}
BENCHMARK(borderOfFrame)->Unit(benchmark::kMicrosecond);

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

/// A desktop of 3840x2160 half floats to the frame, ordinary or with many `bright` places. Each
/// picture is a fresh one to the processor's caches.
void hdrDesktopToFrame(benchmark::State& state)
{
    const cv::Size size(3840, 2160);
    const QSize frameSize(120, 67);
    cv::Mat desktop(size, CV_32FC4);
    cv::randu(desktop, 0.0, state.range(0) ? 4.0 : 2.5);
    desktop.convertTo(desktop, CV_16F);
    const std::vector<cv::Mat> pictures{desktop, desktop.clone()};
    HdrToBytes toBytes;
    toBytes.setWhite(2.5);
    size_t next = 0;
    for (auto _ : state) {
        const cv::Mat& picture = pictures[next++ % pictures.size()];
        const cv::Mat bytes = toBytes.convert(
            {picture.ptr<quint16>(), static_cast<qint64>(picture.step), {size.width, size.height}},
            frameSize);
        benchmark::DoNotOptimize(scaleFrame(
            {bytes.data, static_cast<qint64>(bytes.step), {bytes.cols, bytes.rows}, 0, 1, 2}, frameSize));
    }
}
BENCHMARK(hdrDesktopToFrame)->ArgName("bright")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
