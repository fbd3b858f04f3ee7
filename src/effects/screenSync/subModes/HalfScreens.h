#pragma once

#include "effects/screenSync/AbsScreenSync.h"
#include "effects/screenSync/ScreenBand.h"

/// Lights a strip along one edge of the screen from a band of the frame.
class HalfScreen : public AbsScreenSync
{
protected:
    HalfScreen(const ScreenBand& band, const EffectWorkerOptions& options, QObject* parent);

    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
    std::vector<cv::Rect> lookedAt(const cv::Size& frame) override;

private:
    const ScreenBand m_band;
};

/// Along the top edge, from left to right.
class TopHalfScreen : public HalfScreen
{
    Q_OBJECT

public:
    Q_INVOKABLE TopHalfScreen(const EffectWorkerOptions& options, QObject* parent)
        : HalfScreen(kTopBand, options, parent)
    {
    }
};

/// Along the bottom edge, from left to right; sees the whole frame.
class BottomHalfScreen : public HalfScreen
{
    Q_OBJECT

public:
    Q_INVOKABLE BottomHalfScreen(const EffectWorkerOptions& options, QObject* parent)
        : HalfScreen(kBottomBand, options, parent)
    {
    }
};

/// Along the left edge, from bottom to top.
class LeftHalfScreen : public HalfScreen
{
    Q_OBJECT

public:
    Q_INVOKABLE LeftHalfScreen(const EffectWorkerOptions& options, QObject* parent)
        : HalfScreen(kLeftBand, options, parent)
    {
    }
};

/// Along the right edge, from top to bottom; sees all but the left fifth.
class RightHalfScreen : public HalfScreen
{
    Q_OBJECT

public:
    Q_INVOKABLE RightHalfScreen(const EffectWorkerOptions& options, QObject* parent)
        : HalfScreen(kRightBand, options, parent)
    {
    }
};
