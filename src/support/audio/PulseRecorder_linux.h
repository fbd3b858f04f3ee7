#pragma once

#include <QByteArray>
#include <QSharedPointer>
#include <functional>

class AudioCapturer;
struct pa_context;
struct pa_stream;

/// Records one source of the sound server for a capturer. All of it happens under the main loop's lock.
class PulseRecorder
{
public:
    /// `onFailed` is called under the lock when recording ends by itself or does not come about; it must not
    /// touch the recorder.
    PulseRecorder(QSharedPointer<AudioCapturer> capturer, std::function<void()> onFailed);
    ~PulseRecorder();
    PulseRecorder(const PulseRecorder&) = delete;
    PulseRecorder& operator=(const PulseRecorder&) = delete;

    const AudioCapturer& capturer() const { return *m_capturer; }

    /// Goes on where it is on that source already, and begins anew otherwise. `rate` is the source's. After a
    /// failure the same source is not tried again before dropFailed().
    void record(pa_context* context, const QByteArray& source, int rate);
    void dropFailed();
    void stop();

private:
    static void onState(pa_stream* stream, void* recorder);
    static void onAbandonedState(pa_stream* stream, void* nobody);
    static void onRead(pa_stream* stream, size_t bytes, void* recorder);

    const QSharedPointer<AudioCapturer> m_capturer;
    const std::function<void()> m_onFailed;
    pa_stream* m_stream = nullptr;
    QByteArray m_source;
    bool m_saidEnded = false;
};
