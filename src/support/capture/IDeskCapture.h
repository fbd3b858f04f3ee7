#pragma once

#include "support/SharedLibrary.h"

#include <QObject>
#include <QSize>
#include <opencv2/core/mat.hpp>

/// One picture source, shared by all who acquired it. Operations may be called from any thread.
class LUMIVAR_SUPPORT_EXPORT IDeskCapture : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual QSize outputSize() = 0;
    virtual QSize sourceSize() = 0;
    /// The newest finished frame at the output size, 8-bit red, green, blue, alpha; empty when none is ready.
    /// The frame owns its pixels.
    virtual cv::Mat grabFrame() = 0;
    /// Frames since the capture exists that differ from the one before. It stands still while nobody pulls.
    virtual quint64 frameCount() = 0;
    virtual void setOutputSize(int width, int height) = 0;

    // The last three are for those who know their rhythm; a capture need not care for it.

    /// grabFrame() for the one who pulls next in `nextMs` and then every `periodMs`: its frames are grabbed
    /// shortly before. `puller` is nothing but a name.
    virtual cv::Mat pullFrame(const void* puller, int nextMs, int periodMs)
    {
        Q_UNUSED(puller)
        Q_UNUSED(nextMs)
        Q_UNUSED(periodMs)
        return grabFrame();
    }
    /// The puller rests until changed() tells of a newer frame than number `seen`, of another source size or
    /// of the source's loss: where the system does not tell, the screen is looked at every `paceMs`. To be
    /// repeated every second. False: nothing would be told, so go on pulling.
    virtual bool awaitChange(const void* puller, quint64 seen, int paceMs)
    {
        Q_UNUSED(puller)
        Q_UNUSED(seen)
        Q_UNUSED(paceMs)
        return false;
    }
    /// pullFrame(), but all who pull the same frame this way get the same pixels: nobody writes into them,
    /// and what was made of them is true for as long as somebody holds them.
    virtual cv::Mat sharedFrame(const void* puller, int nextMs, int periodMs)
    {
        return pullFrame(puller, nextMs, periodMs);
    }

signals:
    /// From any thread, also from within a call; to be connected queued.
    void changed();
};
