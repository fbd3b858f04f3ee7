// The gradient editor at the width that the control page gives it: its repaint, and one step of a drag.
#include "effects/colorful/GradientHandler.h"
#include "effects/colorful/GradientWidget.h"

#include <QApplication>
#include <QGraphicsView>
#include <QImage>
#include <QMouseEvent>
#include <benchmark/benchmark.h>

namespace {

struct ShownEditor : GradientWidget
{
    explicit ShownEditor(int colors)
    {
        QGradientStops stops;
        for (int i = 0; i < colors; ++i)
            stops.append({(i + 0.5) / colors, QColor::fromHsv(i * 359 / colors, 255, 255)});
        resize(380, 25);
        setKeyColors(stops);
        show();
        QCoreApplication::processEvents();
    }
};

void repaint(benchmark::State& state)
{
    ShownEditor editor(static_cast<int>(state.range(0)));
    QImage picture(editor.size() * 1.5, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(1.5);
    for (auto _ : state)
        editor.render(&picture);
}
BENCHMARK(repaint)->ArgName("colors")->Arg(1)->Arg(20)->Arg(100)->Unit(benchmark::kMicrosecond);

void dragStep(benchmark::State& state)
{
    ShownEditor editor(static_cast<int>(state.range(0)));
    QWidget* viewport = editor.findChild<QGraphicsView*>()->viewport();
    int reported = 0;
    QObject::connect(&editor, &GradientWidget::keyColorChanged, &editor, [&reported] { ++reported; });
    const auto send = [viewport](QEvent::Type type, int x) {
        const QPoint at(x, 6);
        QMouseEvent event(type, at, viewport->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &event);
    };
    const int from = 361 / (2 * static_cast<int>(state.range(0)));
    send(QEvent::MouseButtonPress, from);
    int step = 0;
    for (auto _ : state)
        send(QEvent::MouseMove, from + ++step % 100);
    send(QEvent::MouseButtonRelease, from);
    if (reported < static_cast<int>(state.iterations()))
        state.SkipWithError("moves were lost");
}
BENCHMARK(dragStep)->ArgName("colors")->Arg(1)->Arg(20)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
