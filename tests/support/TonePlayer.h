#pragma once

#include <QByteArray>
#include <atomic>
#include <thread>

/// Plays a tone on each side of a loudspeaker of a sound server, with little latency, as long as it lives.
/// The operations may be called from any thread.
class TonePlayer
{
public:
    struct Tone
    {
        float hertz = 0;
        float amplitude = 0; ///< 1 for full scale
    };

    /// Begins silent.
    TonePlayer(QByteArray server, QByteArray sink);
    ~TonePlayer();
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;

    void play(Tone left, Tone right);
    void play(Tone both) { play(both, both); }

    /// The steady time at which the first samples after the latest play() were handed to the server, in us; 0
    /// when they have not yet been.
    qint64 sentUs() const { return m_sentUs; }
    static qint64 nowUs();

private:
    void run(const QByteArray& server, const QByteArray& sink);

    std::atomic<bool> m_stop{false};
    std::atomic<Tone> m_left{Tone()};
    std::atomic<Tone> m_right{Tone()};
    std::atomic<bool> m_isNew{false};
    std::atomic<qint64> m_sentUs{0};
    std::thread m_thread;
};
