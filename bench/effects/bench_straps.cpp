// A list of 500 gradients: reading all of it, as a page does when it opens, and changing one of them, as
// every step of a drag in the editor does.
#include "effects/ColorStrapManager.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

struct Straps
{
    QTemporaryDir folder;
    ConfigurationManager config{folder.path(), folder.path()};
    ColorStrapManager manager{nullptr, &config};
    ColorStrap strap{
        "x", {{0.2, Qt::red}, {0.4, Qt::green}, {0.6, Qt::blue}, {0.8, Qt::cyan}}, QColor(Qt::white)};

    explicit Straps(int count)
    {
        manager.setStrap(0, strap);
        while (manager.strapCount() < count)
            manager.addStrap(strap);
    }
};

void readAll(benchmark::State& state)
{
    Straps straps(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        for (int i = 0; i < straps.manager.strapCount(); ++i)
            benchmark::DoNotOptimize(straps.manager.strap(i));
    }
}
BENCHMARK(readAll)->Arg(500)->Unit(benchmark::kMicrosecond);

void changeOne(benchmark::State& state)
{
    Straps straps(static_cast<int>(state.range(0)));
    double key = 0.0;
    for (auto _ : state) {
        straps.strap.keyColors[0].key = key = key < 0.4 ? key + 0.001 : 0.0;
        straps.manager.setStrap(straps.manager.strapCount() / 2, straps.strap);
    }
}
BENCHMARK(changeOne)->Arg(500)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
