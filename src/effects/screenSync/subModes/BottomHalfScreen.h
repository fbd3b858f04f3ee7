#pragma once

#include "effects/screenSync/AbsScreenSync.h"

/// Lights a strip along the bottom edge, from left to right; it sees the whole frame.
class BottomHalfScreen : public AbsScreenSync
{
    Q_OBJECT

public:
    Q_INVOKABLE BottomHalfScreen(const EffectWorkerOptions& options, QObject* parent);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
};
