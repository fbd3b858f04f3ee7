// The mood shadow effect at 300 LEDs: one step as it runs, and one whose gradient somebody has just changed;
// and the list of gradients dropping down from its box.
#include "effects/ColorStrapManager.h"
#include "effects/colorful/MoodShadow.h"
#include "effects/colorful/SFrmMoodShadow.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QJsonObject>
#include <QStandardPaths>

#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr unsigned kLeds = 300;

struct Worker : MoodShadow
{
    using MoodShadow::update;

    explicit Worker(IColorStrapManager* straps)
        : MoodShadow(effect(), nullptr)
    {
        stop();
        DIColorStrapManager(straps);
        ControlOptions controller;
        controller.id = QStringLiteral("BENCH:01");
        controller.nbLeds = kLeds;
        load(controller);
    }
    static EffectWorkerOptions effect()
    {
        EffectWorkerOptions effect;
        effect.id = QStringLiteral("id.effect.colorful.bench");
        return effect;
    }
};

void step(benchmark::State& state)
{
    const bool isChanged = state.range(0) != 0;
    ColorStrapManager straps(nullptr);
    Worker worker(&straps);
    for (auto _ : state) {
        if (isChanged)
            emit straps.strapChanged(0);
        worker.update(0.08);
    }
}
BENCHMARK(step)->ArgName("changed")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// For the first time, until the list is painted.
void openBox(benchmark::State& state)
{
    ColorStrapManager straps(nullptr);
    while (straps.strapCount() < state.range(0))
        straps.addDefaultStrap();
    Worker worker(&straps);
    for (auto _ : state) {
        state.PauseTiming();
        auto options = std::make_unique<SFrmMoodShadow>(nullptr);
        options->setEffectProperty({}, worker.effectProperty({}));
        options->show();
        QCoreApplication::processEvents();
        auto* box = options->findChild<QComboBox*>(QStringLiteral("colorStrapBox"));
        state.ResumeTiming();
        box->showPopup();
        QCoreApplication::processEvents();
        box->view()->viewport()->repaint();
        state.PauseTiming();
        options.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(openBox)->ArgName("straps")->Arg(12)->Arg(500)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication app(argc, argv);
    QFile style(QStringLiteral(":/styles/default.qss"));
    if (style.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(style.readAll()));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
