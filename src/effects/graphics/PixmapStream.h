#pragma once

#include "effects/AbsAnimatedEffect.h"

#include <memory>
#include <opencv2/core.hpp>

class PixmapSequence;

/// Plays the numbered pictures of the user's folder "pixel_source": on the LED matrix as a grid of 23 by 11,
/// on a strip as one row of pixels. Files are read at an interval of their own on the global pool, a frame is
/// sent at every step of the clock. Main thread. No properties.
class PixmapStream : public AbsAnimatedEffect
{
    Q_OBJECT

public:
    Q_INVOKABLE PixmapStream(const EffectWorkerOptions& options, QObject* parent);
    ~PixmapStream() override;

    int load(const ControlOptions& ctlOptions) override;
    QJsonValue effectProperty(const QString&) override { return QJsonValue::Null; }
    void setEffectProperty(const QString&, const QJsonValue&) override {}
    void unload() override {}
    void onCtlDarkChanged(bool dark) override;

protected:
    void update(double seconds) override;
    /// The picture to show; empty for none.
    virtual cv::Mat currentFrame(double seconds);

private slots:
    void onReadTimeout();

private:
    ControlOptions m_ctlOptions;
    int m_frameWidth = 0;
    int m_frameHeight = 0;
    QTimer* m_readTimer = nullptr;
    std::shared_ptr<PixmapSequence> m_sequence; ///< shared with a read that outlives the worker
};

/// The pixels of a picture (CV_8UC3: blue, green, red) in the order of the LEDs: from the bottom left, each
/// row back the way the one below came.
QVector<LV_RGB> serpentineColors(const cv::Mat& picture);
