#pragma once

#include "support/capture/CaptureBackend.h"
#include "support/capture/CaptureThread.h"

/// A back end that pulls: a ScreenGrabber on a thread of its own.
class ThreadedCaptureBackend : public CaptureBackend
{
    Q_OBJECT

public:
    explicit ThreadedCaptureBackend(std::shared_ptr<ScreenGrabber> grabber, QObject* parent = nullptr);

    CaptureSources sources() const override;
    void attach(const QSharedPointer<DeskCapture>& capture) override;
    void detach(const QSharedPointer<DeskCapture>& capture) override;

private:
    CaptureThread m_thread;
};
