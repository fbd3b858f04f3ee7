#pragma once

#include "support/audio/AudioBackend.h"

/// Stands in where the system's sound cannot be had: no sources, ever. Says so once in the log.
class NullAudioBackend : public AudioBackend
{
    Q_OBJECT

public:
    explicit NullAudioBackend(QObject* parent = nullptr);

    AudioSources sources() const override { return {}; }
    bool isServerThere() const override { return false; }
    void attach(const QSharedPointer<AudioCapturer>&) override {}
    void detach(const QSharedPointer<AudioCapturer>&) override {}
};
