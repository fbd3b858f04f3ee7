// What the open layout editor costs the main thread for each frame: from the worker's signal to the painted
// window, 300 LEDs in it.
#include "effects/screenSync/layoutEditor/SSLOptWidget.h"
#include "effects/screenSync/subModes/FullScreenMode.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QStandardPaths>
#include <QWheelEvent>
#include <benchmark/benchmark.h>

namespace {

constexpr int kLeds = 300;
constexpr QSize kPlace(560, 560); ///< what the control page gives at 1100 by 720

QImage pictureOf(QSize canvas)
{
    QImage picture(canvas, QImage::Format_RGBA8888);
    for (int y = 0; y < canvas.height(); ++y)
        for (int x = 0; x < canvas.width(); ++x)
            picture.setPixel(x, y, qRgb(2 * x & 255, 3 * y & 255, (x * 37 + y * 101) & 255));
    return picture;
}

void zoomIn(QGraphicsView& view, int notches)
{
    const QPointF middle = view.viewport()->rect().center();
    QWheelEvent wheel(middle, view.viewport()->mapToGlobal(middle.toPoint()), {}, QPoint(0, 120 * notches),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &wheel);
}

/// Argument: notches of the wheel.
void frameOfTheEditor(benchmark::State& state)
{
    ControlOptions controller;
    controller.id = QStringLiteral("BENCH:01");
    controller.nbLeds = kLeds;
    FullScreenMode worker({}, nullptr);
    worker.load(controller);
    for (int i = 0; i < kLeds; ++i) // all over the canvas: every part of it has squares
        worker.setLEDPos(i, QPoint(2 + i % 20 * 6, 2 + i / 20 * 4));
    SSLOptWidget editor(nullptr);
    editor.setEffectProperty(QString(), worker.effectProperty(QString()));
    editor.resize(kPlace);
    editor.show();
    zoomIn(*editor.findChild<QGraphicsView*>(), static_cast<int>(state.range(0)));
    QCoreApplication::processEvents();

    const QImage pictures[] = {pictureOf({120, 67}), pictureOf({120, 67}).mirrored()};
    int next = 0;
    for (auto _ : state) {
        emit worker.frameSnapshot(pictures[next ^= 1]);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(frameOfTheEditor)->ArgName("notches")->Arg(0)->Arg(6)->Arg(18)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
