#pragma once

#include "support/capture/CaptureSource.h"
#include "support/capture/SourceTrouble.h"

#include <QSize>
#include <chrono>
#include <opencv2/core/mat.hpp>

/// Reads one system's screens. Used by the capture thread alone, except where noted.
class ScreenGrabber
{
public:
    enum class Result {
        Frame,
        Unchanged, ///< the picture is still the last one
        Failed
    };

    virtual ~ScreenGrabber() = default;

    /// False when there is nothing to read now; it is tried again later.
    virtual bool open() = 0;
    virtual void close() = 0;
    /// False once the connection broke.
    virtual bool isOpen() const = 0;

    /// Asks the system, the primary source first.
    virtual CaptureSources sources() = 0;
    /// Whether the system reported a change since the last call; also of a grabber that is not open, which is
    /// then opened at once.
    virtual bool takeSourcesChanged() = 0;
    /// Whether the source's last frame still shows it and a change of that will end wait(). Asked only where
    /// somebody rests until then.
    virtual bool tellsOfChange(const CaptureSource&) { return false; }
    /// Sets `frame` to the source at the given size, in memory of its own that is written no more. Only
    /// without `force` may it be unchanged.
    virtual Result grab(const CaptureSource& source, QSize outputSize, bool force, cv::Mat& frame) = 0;

    /// Returns after the time, at an event of the system or after wake().
    virtual void wait(std::chrono::microseconds time) = 0;
    /// Any thread. Ends the present or the next wait.
    virtual void wake() = 0;
    /// Any thread. Makes a call that hangs in the system fail.
    virtual void abort() = 0;

    /// Main thread. Somebody wants sources; for those that have to be asked for.
    virtual void request(SourceRequest) {}
    /// Any thread. What is the matter while there are no sources; a change of it counts as one of the
    /// sources.
    virtual SourceTrouble trouble() const { return SourceTrouble::None; }
};
