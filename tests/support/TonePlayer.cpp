#include "TonePlayer.h"

#include <QDebug>
#include <array>
#include <chrono>
#include <cmath>
#include <pulse/error.h>
#include <pulse/simple.h>
#include <utility>

namespace {
constexpr int kRate = 48000;
constexpr int kBlockFrames = kRate / 200;
constexpr uint32_t kBufferBytes = kBlockFrames * 2 * 2 * sizeof(float);
constexpr double kTurn = 6.283185307179586;
} // namespace

TonePlayer::TonePlayer(QByteArray server, QByteArray sink)
    : m_thread([this, server = std::move(server), sink = std::move(sink)] { run(server, sink); })
{
}

TonePlayer::~TonePlayer()
{
    m_stop = true;
    m_thread.join();
}

void TonePlayer::play(Tone left, Tone right)
{
    m_sentUs = 0;
    m_left = left;
    m_right = right;
    m_isNew = true;
}

qint64 TonePlayer::nowUs()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

void TonePlayer::run(const QByteArray& server, const QByteArray& sink)
{
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
    // Ends when the server does.
    while (!m_stop) {
        const bool isNew = m_isNew.exchange(false);
        const Tone tones[2] = {m_left, m_right};
        for (int side = 0; side < 2; ++side) {
            for (int i = 0; i < kBlockFrames; ++i) {
                phases[side] = std::fmod(phases[side] + kTurn * double(tones[side].hertz) / kRate, kTurn);
                block[size_t(i) * 2 + size_t(side)] = tones[side].amplitude * float(std::sin(phases[side]));
            }
        }
        if (isNew)
            m_sentUs = nowUs();
        if (pa_simple_write(stream, block.data(), sizeof block, &error) < 0)
            break;
    }
    pa_simple_free(stream);
}
