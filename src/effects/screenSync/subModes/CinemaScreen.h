#pragma once

#include "effects/screenSync/subModes/FullScreenMode.h"

/// The full-screen mode on the central part of the frame, for films with black borders.
class CinemaScreen : public FullScreenMode
{
    Q_OBJECT

public:
    Q_INVOKABLE CinemaScreen(const EffectWorkerOptions& options, QObject* parent);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
    std::vector<cv::Rect> lookedAt(const cv::Size& frame) override;
};
