#pragma once

#include "support/capture/ScreenCastFeed_linux.h"
#include "support/capture/ScreenGrabber.h"

#include <memory>

class ScreenCastSession;

/// Reads the streams that a ScreenCastSession gets for it. A stream that nobody pulls from is paused; one
/// that sends nothing has not changed.
class PipeWireGrabber : public ScreenGrabber
{
public:
    /// Main thread, where `session` lives and is deleted, whoever gives up the grabber last. It may be null
    /// where `feed` is filled by somebody else.
    PipeWireGrabber(std::shared_ptr<ScreenCastFeed> feed, std::unique_ptr<ScreenCastSession> session);
    ~PipeWireGrabber() override;

    bool open() override;
    void close() override;
    bool isOpen() const override;
    CaptureSources sources() override;
    bool takeSourcesChanged() override;
    bool tellsOfChange(const CaptureSource& source) override;
    Result grab(const CaptureSource& source, QSize outputSize, bool force, cv::Mat& frame) override;
    void wait(std::chrono::microseconds time) override;
    void wake() override;
    /// Nothing to do: no call here waits for the media server.
    void abort() override {}
    void request(SourceRequest request) override;
    SourceTrouble trouble() const override;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
