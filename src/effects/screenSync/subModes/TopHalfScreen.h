#pragma once

#include "effects/screenSync/AbsScreenSync.h"

/// Lights a strip along the top edge, from left to right.
class TopHalfScreen : public AbsScreenSync
{
    Q_OBJECT

public:
    Q_INVOKABLE TopHalfScreen(const EffectWorkerOptions& options, QObject* parent);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
};
