#pragma once

#include "support/capture/ScreenGrabber.h"

#include <memory>

/// Reads the monitors by the system's desktop duplication: one source a monitor that shows the desktop,
/// with the monitor's device path as its identifier.
class DxgiGrabber : public ScreenGrabber
{
public:
    DxgiGrabber();
    ~DxgiGrabber() override;

    bool open() override;
    void close() override;
    bool isOpen() const override;
    CaptureSources sources() override;
    bool takeSourcesChanged() override;
    Result grab(const CaptureSource& source, QSize outputSize, bool force, cv::Mat& frame) override;
    void wait(std::chrono::microseconds time) override;
    void wake() override;
    /// Nothing to do: no call here waits.
    void abort() override {}

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
