#pragma once

#include "support/SharedLibrary.h"
#include "support/audio/SampleRing.h"
#include "support/audio/SoundChannel.h"

#include <QObject>
#include <QSemaphore>
#include <QString>
#include <QVector>
#include <atomic>
#include <memory>

class AudioAnalyser;

/// One sound source, shared by all who acquired it from AudioCapManager: takes the back end's samples on one
/// thread and emits what they hold on the analysis thread. Lives on the main thread.
class LUMIVAR_SUPPORT_EXPORT AudioCapturer : public QObject
{
    Q_OBJECT

public:
    explicit AudioCapturer(const QString& id);
    ~AudioCapturer() override;

    const QString& id() const { return m_id; }

    // For the back end, from one thread at a time.

    /// The rate of the samples that follow, in hertz; 2000 to 384000, others are taken for the nearest.
    void setRate(int rate);
    /// How many samples of each channel are analysed at a time, once the rate is set.
    int hop() const { return m_hop; }
    /// Takes interleaved samples, full scale from -1 to 1, as SampleRing does. Neither waits nor allocates.
    /// What the analysis is too late for is dropped.
    void write(const float* samples, int frames, int channels);

    // For the analysis thread.

    /// To be released when there is something to analyse; set before the back end begins.
    void setWakeUp(std::shared_ptr<QSemaphore> wakeUp) { m_wakeUp = std::move(wakeUp); }
    /// Analyses and emits what is due. Returns after how many milliseconds to come again though there has
    /// been no wake-up; -1 for never.
    qint64 analyse(qint64 nowMs);

signals:
    /// 30 to 60 times a second while the source gives sound or silence, on the analysis thread: connect
    /// queued. Left at index 0, right at 1. After a source that ceases to give anything comes a second of
    /// silence, and then nothing. While the main thread is stuck, the surplus is dropped.
    void spectrumsChanged(QVector<SoundChannel> channels);
    /// With each spectrum: for each channel one entry, the largest sample since the one before, 0 to 1, as
    /// decimal text with a point.
    void channelsPeakValuesChanged(QVector<QVector<QString>> peaks);

private:
    void analyseHop();
    void emitResult();

    const QString m_id;
    std::shared_ptr<QSemaphore> m_wakeUp;
    SampleRing m_ring;
    std::atomic<int> m_rate{0};
    int m_hop = 0;                ///< of the writing thread
    std::atomic<int> m_unseen{0}; ///< results that the main thread has not yet come to
    // Of the analysis thread.
    std::unique_ptr<AudioAnalyser> m_analyser;
    std::vector<float> m_left;
    std::vector<float> m_right;
    qint64 m_silenceMs = 0; ///< when to put silence in for what does not come
    int m_silentHops = 0;   ///< how many of them are left
};
