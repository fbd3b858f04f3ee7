#pragma once

#include "support/audio/SoundChannel.h"

#include <QObject>
#include <QString>
#include <QVector>
#include <atomic>
#include <functional>
#include <memory>

class AudioAnalyser;
class SampleRing;

/// One sound source, shared by all who acquired it from AudioCapManager. Between the back end, which writes
/// samples, and the analysis thread, which reads them and emits. Lives on the main thread.
class AudioCapturer : public QObject
{
    Q_OBJECT

public:
    explicit AudioCapturer(const QString& id, QObject* parent = nullptr);
    ~AudioCapturer() override;

    const QString& id() const { return m_id; }

    // For the back end; from one thread at a time, which never waits nor allocates in write().

    /// The rate of the samples that follow, in hertz; 1000 to 384000.
    void setRate(int rate);
    /// Takes `frames` times `channels` interleaved samples, full scale from -1 to 1; null for silence. More
    /// than two channels are mixed down. What the analysis thread is too late for is dropped.
    void write(const float* samples, int frames, int channels);

signals:
    /// 30 to 60 times a second while the source gives sound or silence, from the analysis thread: connect
    /// queued. Left at index 0, right at 1. A source that falls silent for good, or vanishes, ends with
    /// about a second of silence.
    void spectrumsChanged(QVector<SoundChannel> channels);
    /// With each spectrum: for each channel one entry, the largest sample since the last one, 0 to 1, as
    /// decimal text with a point.
    void channelsPeakValuesChanged(QVector<QVector<QString>> peaks);

private:
    friend class AnalysisThread;

    const QString m_id;
};
