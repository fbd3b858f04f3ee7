#pragma once

#include "support/audio/AudioBackend.h"
#include "support/audio/WasapiEndpoints.h"

#include <QSemaphore>
#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class WasapiStream;

/// Hears the loudspeakers of Windows by loopback, and its microphones. One thread lists and records.
class WasapiBackend : public AudioBackend
{
    Q_OBJECT

public:
    /// Waits for the first look at the sources, a second at most.
    explicit WasapiBackend(QObject* parent = nullptr);
    ~WasapiBackend() override;

    AudioSources sources() const override;
    bool isServerThere() const override { return m_isThere; }
    void attach(const QSharedPointer<AudioCapturer>& capturer) override;
    void detach(const QSharedPointer<AudioCapturer>& capturer) override;
    void retryNow() override;

private:
    using Known = QList<WasapiEndpoints::Endpoint>;
    using Streams = std::vector<std::unique_ptr<WasapiStream>>;

    void wake();

    // On the thread.
    void run();
    void work();
    /// True when the list is another.
    bool publish(const Known& known);
    /// One stream for each attached capturer. True when one is new.
    bool matchStreams(Streams& streams) const;
    /// Puts each stream on its capturer's endpoint. False when one could not be opened.
    static bool steer(const Streams& streams, const Known& known);

    const HANDLE m_wakeEvent;
    QSemaphore m_firstLook;
    std::atomic<bool> m_stop{false};
    std::atomic<bool> m_isOutdated{true};
    std::atomic<bool> m_isHurried{false};
    std::atomic<bool> m_isThere{true}; ///< the system's sound service
    mutable std::mutex m_mutex;        // guards what follows
    AudioSources m_sources;
    QList<QSharedPointer<AudioCapturer>> m_capturers;
    std::thread m_thread; // last: it uses all of this
};
