#pragma once

#include "support/SharedLibrary.h"
#include "support/audio/AudioSource.h"

#include <QObject>
#include <QSharedPointer>
#include <memory>

class AudioCapturer;

/// One way of hearing the system's sound: lists the sources and feeds the capturers that are attached to it.
/// Lives on the main thread; all operations but construction and destruction may be called from any thread.
class LUMIVAR_SUPPORT_EXPORT AudioBackend : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// What there is now, one of them the default unless nothing plays anywhere.
    virtual AudioSources sources() const = 0;
    /// Whether there is anything that could offer sources; a change is told by sourcesChanged().
    virtual bool isServerThere() const { return true; }
    /// Feeds the capturer while its source exists, and again when the source comes back. The one with the
    /// identifier kDefaultCapturerId follows the default source.
    virtual void attach(const QSharedPointer<AudioCapturer>& capturer) = 0;
    /// What is under way may still be written into the capturer.
    virtual void detach(const QSharedPointer<AudioCapturer>& capturer) = 0;
    /// On its own thread: what is waiting to be tried again is tried now.
    virtual void retryNow() {}

signals:
    /// From any thread.
    void sourcesChanged();
};

/// The back end of this system; null where it has none.
std::unique_ptr<AudioBackend> createAudioBackend();
