#include "support/audio/PulseRecorder_linux.h"

#include "support/audio/AudioCapturer.h"

#include <QDebug>
#include <pulse/error.h>
#include <pulse/stream.h>
#include <utility>

namespace {
constexpr uint8_t kChannels = 2; // the server knows what its channels are and mixes them better than we could
constexpr int kHighestRate = 48000;
constexpr uint32_t kFrameBytes = kChannels * sizeof(float);

// With latencies adjusted, samples come in small fragments and soon. A stream that does not move is the only
// one of which we know what it hears. Who just listens must not keep a loudspeaker awake.
constexpr auto kFlags =
    pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE | PA_STREAM_DONT_INHIBIT_AUTO_SUSPEND);
} // namespace

PulseRecorder::PulseRecorder(QSharedPointer<AudioCapturer> capturer, std::function<void()> onFailed)
    : m_capturer(std::move(capturer))
    , m_onFailed(std::move(onFailed))
{
}

PulseRecorder::~PulseRecorder()
{
    stop();
}

void PulseRecorder::record(pa_context* context, const QByteArray& source, int rate)
{
    if (m_stream && source == m_source)
        return;
    stop();
    // The source's own rate costs the server nothing. What lies above 48 kHz nobody hears, though: there the
    // server's resampling is cheaper than our handling of so many samples.
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32NE;
    spec.rate = uint32_t(qBound(1, rate, kHighestRate));
    spec.channels = kChannels;
    pa_channel_map map{};
    pa_channel_map_init_stereo(&map);
    m_stream = pa_stream_new(context, "Spectrum", &spec, &map);
    if (!m_stream) {
        m_onFailed();
        return;
    }
    m_source = source;
    m_capturer->setRate(int(spec.rate));
    pa_stream_set_state_callback(m_stream, &PulseRecorder::onState, this);
    pa_stream_set_read_callback(m_stream, &PulseRecorder::onRead, this);
    // Without a size of its own a fragment may last two seconds. Smaller ones would wait for the analysis.
    pa_buffer_attr buffer{uint32_t(-1), uint32_t(-1), uint32_t(-1), uint32_t(-1),
                          uint32_t(m_capturer->hop()) * kFrameBytes};
    if (pa_stream_connect_record(m_stream, source.constData(), &buffer, kFlags) < 0)
        m_onFailed();
}

void PulseRecorder::dropFailed()
{
    if (m_stream && !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream)))
        stop();
}

void PulseRecorder::stop()
{
    if (!m_stream)
        return;
    // The library cannot take back what it has asked for and not yet got: it would record for nobody.
    const bool isOnItsWay = pa_stream_get_state(m_stream) == PA_STREAM_CREATING;
    pa_stream_set_state_callback(m_stream, isOnItsWay ? &PulseRecorder::onAbandonedState : nullptr, nullptr);
    pa_stream_set_read_callback(m_stream, nullptr, nullptr);
    if (!isOnItsWay)
        pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream); // the connection keeps it as long as it needs
    m_stream = nullptr;
    m_source.clear();
}

void PulseRecorder::onState(pa_stream* stream, void* recorder)
{
    auto* self = static_cast<PulseRecorder*>(recorder);
    const pa_stream_state_t state = pa_stream_get_state(stream);
    if (state == PA_STREAM_READY)
        self->m_saidEnded = false;
    if (PA_STREAM_IS_GOOD(state))
        return;
    if (!std::exchange(self->m_saidEnded, true)) { // it may be refused again and again
        qInfo() << "[AudioCapManager]: Recording from" << self->m_source
                << "has ended:" << pa_strerror(pa_context_errno(pa_stream_get_context(stream)));
    }
    self->m_onFailed();
}

void PulseRecorder::onAbandonedState(pa_stream* stream, void*)
{
    if (pa_stream_get_state(stream) == PA_STREAM_READY)
        pa_stream_disconnect(stream);
}

void PulseRecorder::onRead(pa_stream* stream, size_t, void* recorder)
{
    AudioCapturer& capturer = *static_cast<PulseRecorder*>(recorder)->m_capturer;
    const void* data = nullptr;
    size_t bytes = 0;
    while (pa_stream_peek(stream, &data, &bytes) == 0 && bytes > 0) {
        // A hole in the stream has a length but no data.
        capturer.write(static_cast<const float*>(data), int(bytes / kFrameBytes), kChannels);
        pa_stream_drop(stream);
    }
}
