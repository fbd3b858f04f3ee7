#pragma once

#include "support/capture/CaptureBackend.h"

/// Stands in where the desktop cannot be read: no sources, ever. Says so once in the log.
class NullCaptureBackend : public CaptureBackend
{
    Q_OBJECT

public:
    explicit NullCaptureBackend(QObject* parent = nullptr);

    CaptureSources sources() const override { return {}; }
    void attach(const QSharedPointer<DeskCapture>&) override {}
    void detach(const QSharedPointer<DeskCapture>&) override {}
};
