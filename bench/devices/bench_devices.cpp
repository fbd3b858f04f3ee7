// The road of one frame on the main thread: the colour pipeline and the frame of the serial protocol.
#include "controllers/AbsRGBController.h"
#include "controllers/LedFrame.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <benchmark/benchmark.h>

namespace {

class SilentController : public AbsRGBController
{
public:
    SilentController()
    {
        m_options.brightness = 0.8F;
        m_options.gama = 1.8F;
    }
    void writeColors(const QVector<LV_RGB>& colors) override { benchmark::DoNotOptimize(colors.constData()); }
    void rebuildHeader() override {}
    void setGama(float gama) { m_options.gama = gama; }
};

QVector<LV_RGB> picture(int leds)
{
    QVector<LV_RGB> colors;
    for (int i = 0; i < leds; ++i)
        colors.append({static_cast<uint8_t>(i), static_cast<uint8_t>(7 * i), static_cast<uint8_t>(255 - i)});
    return colors;
}

void pipeline(benchmark::State& state)
{
    SilentController controller;
    const QVector<LV_RGB> colors = picture(static_cast<int>(state.range(0)));
    for (auto _ : state)
        controller.update(colors);
}
BENCHMARK(pipeline)->Arg(120)->Arg(300)->Unit(benchmark::kMicrosecond);

/// The worst frame: the first one behind a change of gamma or brightness.
void pipelineAfterAChange(benchmark::State& state)
{
    SilentController controller;
    const QVector<LV_RGB> colors = picture(300);
    float gama = 1.8F;
    for (auto _ : state) {
        controller.setGama(gama = 4.0F - gama);
        controller.update(colors);
    }
}
BENCHMARK(pipelineAfterAChange)->Unit(benchmark::kMicrosecond);

void serialFrame(benchmark::State& state)
{
    const QVector<LV_RGB> colors = picture(300);
    const QByteArray header = LedFrame::header(300);
    for (auto _ : state)
        benchmark::DoNotOptimize(LedFrame::build(header, colors).constData());
}
BENCHMARK(serialFrame)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true); // leaves the user's settings alone
    QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
