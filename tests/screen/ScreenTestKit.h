#pragma once

#include "LogCapture.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigurationManager.h"

#include <QHash>
#include <QSignalSpy>
#include <opencv2/core.hpp>

/// Hands out one known frame and takes every size.
class FakeCapture : public IDeskCapture
{
public:
    QSize outputSize() override { return output; }
    QSize sourceSize() override { return source; }
    cv::Mat grabFrame() override { return frame.clone(); }
    quint64 frameCount() override { return 0; }
    void setOutputSize(int width, int height) override { output = QSize(width, height); }

    cv::Mat frame;
    QSize source{1920, 1080};
    QSize output{640, 360};
};

/// Lists `order`, hands out `captures` and counts in `held` what is acquired and not yet given back.
class FakeDeskDuplManager : public IDeskDuplManager
{
public:
    QList<QString> allCapturer() override { return order; }
    QString defaultCapturer() override { return order.value(0); }
    QSharedPointer<IDeskCapture> acquireCapturer(QString id) override
    {
        held[id] += captures.contains(id) ? 1 : 0;
        return captures.value(id);
    }
    void releaseCapturer(QString id) override { --held[id]; }
    QString capturerDesc(QString id) override { return "Monitor " + id; }

    QList<QString> order{"A", "B"};
    QHash<QString, QSharedPointer<FakeCapture>> captures{{"A", QSharedPointer<FakeCapture>::create()},
                                                         {"B", QSharedPointer<FakeCapture>::create()}};
    QHash<QString, int> held;
};

namespace ScreenTestKit {

const QString kEffect = "id.effect.screenSync.test";
const QString kController = "LVTEST:01";

inline ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

/// A worker that neither blurs nor saturates: what its mode reads is what comes out.
template <typename Mode>
std::unique_ptr<Mode> loaded(unsigned nbLeds, unsigned direction = 0, IDeskDuplManager* manager = nullptr)
{
    EffectWorkerOptions options;
    options.id = kEffect;
    ControlOptions controller;
    controller.model = "LVTEST";
    controller.id = kController;
    controller.nbLeds = nbLeds;
    controller.installDirection = direction;
    auto worker = std::make_unique<Mode>(options, nullptr);
    if (manager)
        worker->DIDeskDuplication(manager);
    worker->load(controller);
    worker->setBlurStrength(0.0F);
    worker->setSaturationStrength(0.0F);
    return worker;
}

/// What a frame makes the worker emit; empty when it emits nothing.
inline QVector<LV_RGB> colorsOf(AbsScreenSync& worker, const cv::Mat& frame)
{
    QSignalSpy spy(&worker, &AbsScreenSync::updateColors);
    worker.frameInput(frame);
    return spy.isEmpty() ? QVector<LV_RGB>() : spy.last().at(0).value<QVector<LV_RGB>>();
}

/// Every pixel (2 * column, 3 * row, 7, 255): a colour tells where it was read.
inline cv::Mat positionFrame(int cols = 120, int rows = 67)
{
    cv::Mat frame(rows, cols, CV_8UC4);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < cols; ++x)
            frame.at<cv::Vec4b>(y, x) =
                cv::Vec4b(static_cast<uchar>(2 * x), static_cast<uchar>(3 * y), 7, 255);
    return frame;
}

} // namespace ScreenTestKit
