#pragma once

#include "support/audio/AudioBackend.h"
#include "support/audio/RetryPause.h"

#include <QByteArray>
#include <QHash>
#include <QSemaphore>
#include <QTimer>
#include <map>
#include <memory>

class PulseRecorder;
struct pa_context;
struct pa_server_info;
struct pa_source_info;
struct pa_threaded_mainloop;

/// Hears the sound server, PulseAudio or PipeWire's stand-in for it, through libpulse. The library's thread
/// lists and records; this object's thread connects, and again whenever the server is gone.
class PulseBackend : public AudioBackend
{
    Q_OBJECT

public:
    /// Waits for the first look at the sources, a second at most. Null when the system lacks the means for a
    /// thread, be there a server or not.
    static std::unique_ptr<PulseBackend> create();
    ~PulseBackend() override;

    AudioSources sources() const override;
    bool isServerThere() const override;
    void attach(const QSharedPointer<AudioCapturer>& capturer) override;
    void detach(const QSharedPointer<AudioCapturer>& capturer) override;
    void retryNow() override;

signals:
    /// From the library's thread: the connection or a recording has come to its end.
    void failed();

private:
    class Lock;
    struct Listing
    {
        bool isUnderWay = false;
        bool isOutdated = false;
        QByteArray defaultSink;
        AudioSources sources;
        int firstMonitor = -1;
        QHash<QString, int> rates;
    };

    explicit PulseBackend(pa_threaded_mainloop* loop);

    // On this object's thread.
    void startLoop();
    void onFailed();
    void onRetry();

    // Under the lock.
    void connectToServer();
    void dropConnection();
    bool isConnected() const;
    void list();
    void finishListing();
    /// What was known stays; another look follows.
    void failListing();
    void retarget(PulseRecorder& recorder);

    // By the library, on its thread and under the lock.
    static void onContextState(pa_context* context, void* backend);
    static void onServerInfo(pa_context* context, const pa_server_info* info, void* backend);
    static void onSourceInfo(pa_context* context, const pa_source_info* info, int end, void* backend);

    QTimer m_retry;
    QSemaphore m_firstLook;
    pa_threaded_mainloop* const m_loop;
    bool m_isRunning = false; ///< the loop has its thread
    // Under the lock.
    pa_context* m_context = nullptr;
    RetryPause m_pause; ///< begins anew when the sources change
    bool m_wasConnected = false;
    bool m_saidAbsent = false;
    bool m_isThere = false; ///< it has listed its sources since it was connected to
    Listing m_listing;
    AudioSources m_sources;
    QHash<QString, int> m_rates;
    std::map<const AudioCapturer*, std::unique_ptr<PulseRecorder>> m_recorders;
};
