#include "support/audio/AudioCapturer.h"

#include "support/audio/AudioAnalyser.h"

#include <algorithm>

namespace {
constexpr int kLowestRate = 2000;
constexpr int kHighestRate = 384000;
constexpr int kMostHopsBehind = 6;
constexpr int kMostUnseen = 8;
constexpr qint64 kGapMs = 250; // without samples for so long, the source is taken for silent
} // namespace

AudioCapturer::AudioCapturer(const QString& id)
    : m_id(id)
{
}

AudioCapturer::~AudioCapturer() = default;

void AudioCapturer::setRate(int rate)
{
    rate = std::clamp(rate, kLowestRate, kHighestRate);
    m_hop = AudioAnalyser::hopFor(rate);
    m_rate = rate;
}

void AudioCapturer::write(const float* samples, int frames, int channels)
{
    m_ring.write(samples, frames, channels);
    if (m_wakeUp && m_ring.available() >= m_hop)
        m_wakeUp->release();
}

qint64 AudioCapturer::analyse(qint64 nowMs)
{
    const int rate = m_rate;
    if (rate == 0)
        return -1;
    if (!m_analyser || m_analyser->rate() != rate) {
        if (m_analyser)
            m_ring.skip(m_ring.available()); // still of the other rate
        m_analyser = std::make_unique<AudioAnalyser>(rate);
        m_left.resize(size_t(m_analyser->hop()));
        m_right.resize(size_t(m_analyser->hop()));
    }
    const int hop = m_analyser->hop();
    const int surplus = m_ring.available() - kMostHopsBehind * hop;
    if (surplus > 0)
        m_ring.skip(surplus);
    while (m_ring.available() >= hop) {
        m_ring.read(m_left.data(), m_right.data(), hop);
        analyseHop();
        m_silentHops = rate / hop;
        m_silenceMs = nowMs + kGapMs;
    }
    if (m_silentHops > 0 && nowMs >= m_silenceMs) {
        std::fill(m_left.begin(), m_left.end(), 0.F);
        std::fill(m_right.begin(), m_right.end(), 0.F);
        analyseHop();
        --m_silentHops;
        m_silenceMs = nowMs + qint64(1000) * hop / rate;
    }
    return m_silentHops > 0 ? std::max<qint64>(m_silenceMs - nowMs, 1) : -1;
}

void AudioCapturer::analyseHop()
{
    m_analyser->feed(m_left.data(), m_right.data());
    if (m_unseen < kMostUnseen)
        emitResult();
}

void AudioCapturer::emitResult()
{
    ++m_unseen;
    emit spectrumsChanged(m_analyser->spectrum());
    emit channelsPeakValuesChanged(m_analyser->peaks());
    // Comes to its turn behind all that the main thread had to do before.
    QMetaObject::invokeMethod(
        this, [this] { --m_unseen; }, Qt::QueuedConnection);
}
