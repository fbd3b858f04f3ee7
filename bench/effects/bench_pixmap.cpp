// Pictures for the matrix: reading one file, which happens on a thread of the pool, and what a frame costs
// the main thread (limit: 50 us).
#include "effects/graphics/PixmapSequence.h"
#include "effects/graphics/PixmapStream.h"

#include <QCoreApplication>
#include <QImage>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

const QSize kMatrix(23, 11);

void readPicture(benchmark::State& state)
{
    const QTemporaryDir folder;
    QImage picture(kMatrix * static_cast<int>(state.range(0)), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 11, y * 23, x * y));
    }
    picture.save(folder.filePath(QStringLiteral("1.png")));
    PixmapSequence sequence(folder.path(), kMatrix);
    for (auto _ : state) {
        sequence.readNext();
        state.PauseTiming();
        sequence.readNext(); // the end of the round
        state.ResumeTiming();
    }
    if (sequence.frame().empty())
        state.SkipWithError("nothing was read");
}
BENCHMARK(readPicture)->ArgName("scale")->Arg(1)->Arg(40)->Unit(benchmark::kMicrosecond);

class GivenStream : public PixmapStream
{
public:
    using PixmapStream::PixmapStream;
    using PixmapStream::update;

protected:
    cv::Mat currentFrame(double) override { return m_frame; }

private:
    const cv::Mat m_frame{kMatrix.height(), kMatrix.width(), CV_8UC3, cv::Scalar(1, 2, 3)};
};

void frameOnTheMainThread(benchmark::State& state)
{
    ControlOptions controller;
    controller.model = QStringLiteral("LV0N03");
    controller.nbLeds = 253;
    GivenStream worker({}, nullptr);
    worker.load(controller);
    int emitted = 0;
    QObject::connect(&worker, &IEffectWorker::updateColors, [&](const QVector<LV_RGB>&) { ++emitted; });
    for (auto _ : state)
        worker.update(0.08);
    if (emitted < static_cast<int>(state.iterations()))
        state.SkipWithError("frames were lost");
}
BENCHMARK(frameOnTheMainThread)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true); // leaves the user's settings alone
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
