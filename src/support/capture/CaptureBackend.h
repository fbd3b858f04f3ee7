#pragma once

#include "support/capture/CaptureSource.h"

#include <QObject>
#include <QSharedPointer>

class DeskCapture;

/// One way of reading the desktop: lists the sources and feeds the captures that are attached to it.
/// Lives on the main thread; all operations but construction and destruction may be called from any thread.
class CaptureBackend : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// What there is now, the primary source first.
    virtual CaptureSources sources() const = 0;
    /// Feeds the capture while its source exists, and again when the source comes back.
    virtual void attach(const QSharedPointer<DeskCapture>& capture) = 0;
    virtual void detach(const QSharedPointer<DeskCapture>& capture) = 0;

signals:
    void sourcesChanged();
};
