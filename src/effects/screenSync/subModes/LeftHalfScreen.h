#pragma once

#include "effects/screenSync/AbsScreenSync.h"

/// Lights a strip along the left edge, from bottom to top.
class LeftHalfScreen : public AbsScreenSync
{
    Q_OBJECT

public:
    Q_INVOKABLE LeftHalfScreen(const EffectWorkerOptions& options, QObject* parent);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
};
