#pragma once

#include "FakeDeskDuplManager.h"
#include "LogCapture.h"
#include "effects/screenSync/AbsScreenSync.h"
#include "support/config/ConfigurationManager.h"

#include <QSignalSpy>

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
