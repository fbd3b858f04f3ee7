#pragma once

#include <QObject>
#include <QSize>
#include <opencv2/core/mat.hpp>

/// One picture source, shared by all who acquired it. Operations may be called from any thread.
class IDeskCapture : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QSize outputSize() = 0;
    virtual QSize sourceSize() = 0;
    /// The newest finished frame at the output size, 8-bit red, green, blue, alpha; empty when none is ready.
    /// The frame owns its pixels.
    virtual cv::Mat grabFrame() = 0;
    /// Frames grabbed since the capture exists. It stands still while nobody pulls.
    virtual quint64 frameCount() = 0;
    virtual void setOutputSize(int width, int height) = 0;
};
