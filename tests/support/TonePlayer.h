#pragma once

#include <QDebug>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <pulse/error.h>
#include <pulse/simple.h>
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
    TonePlayer(const QByteArray& server, const QByteArray& sink)
        : m_thread([this, server, sink] { run(server, sink); })
    {
    }
    ~TonePlayer()
    {
        m_stop = true;
        m_thread.join();
    }
    Q_DISABLE_COPY(TonePlayer)

    void play(Tone left, Tone right)
    {
        m_sentUs = 0;
        m_left = left;
        m_right = right;
        m_isNew = true;
    }
    void play(Tone both) { play(both, both); }

    /// The steady time at which the first samples after the latest play() were handed to the server, in us; 0
    /// when they have not yet been.
    qint64 sentUs() const { return m_sentUs; }
    static qint64 nowUs()
    {
        using namespace std::chrono;
        return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
    }

private:
    static constexpr int kRate = 48000;
    static constexpr int kBlockFrames = kRate / 200;

    void run(const QByteArray& server, const QByteArray& sink)
    {
        constexpr uint32_t kBufferBytes = kBlockFrames * 2 * 2 * sizeof(float);
        constexpr double kTurn = 6.283185307179586;
        const pa_sample_spec spec{PA_SAMPLE_FLOAT32NE, kRate, 2};
        const pa_buffer_attr buffer{uint32_t(-1), kBufferBytes, uint32_t(-1), uint32_t(-1), uint32_t(-1)};
        int error = 0;
        pa_simple* stream = pa_simple_new(server.constData(), "tone", PA_STREAM_PLAYBACK, sink.constData(),
                                          "tone", &spec, nullptr, &buffer, &error);
        if (!stream) {
            qWarning() << "No tone on" << sink << pa_strerror(error);
            return;
        }
        std::array<float, kBlockFrames * 2> block{};
        double phases[2] = {};
        while (!m_stop) { // ends when the server does
            const bool isNew = m_isNew.exchange(false);
            const Tone tones[2] = {m_left, m_right};
            for (int side = 0; side < 2; ++side) {
                for (int i = 0; i < kBlockFrames; ++i) {
                    phases[side] = std::fmod(phases[side] + kTurn * double(tones[side].hertz) / kRate, kTurn);
                    block[size_t(i) * 2 + size_t(side)] =
                        tones[side].amplitude * float(std::sin(phases[side]));
                }
            }
            if (isNew)
                m_sentUs = nowUs();
            if (pa_simple_write(stream, block.data(), sizeof block, &error) < 0)
                break;
        }
        pa_simple_free(stream);
    }

    std::atomic<bool> m_stop{false}, m_isNew{false};
    std::atomic<Tone> m_left{Tone()}, m_right{Tone()};
    std::atomic<qint64> m_sentUs{0};
    std::thread m_thread; // last: it uses the others
};
