#pragma once

#include "effects/screenSync/AbsScreenSync.h"

/// Lights a strip along the right edge, from top to bottom; it sees all but the left fifth.
class RightHalfScreen : public AbsScreenSync
{
    Q_OBJECT

public:
    Q_INVOKABLE RightHalfScreen(const EffectWorkerOptions& options, QObject* parent);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
};
