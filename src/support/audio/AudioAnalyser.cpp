#include "support/audio/AudioAnalyser.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <opencv2/core.hpp>

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr int kHopsInWindow = 4;
constexpr int kMostSpectraPerSecond = 60;
constexpr int kHighestHz = 20000;
constexpr float kFullLevel = 80;
constexpr float kLeastPower = 1e-8F; // 80 dB below full scale
constexpr float kDbOfLog = 4.3429448F;

int pointCountFor(int rate, int hop)
{
    const int window = hop * kHopsInWindow;
    return std::min(window / 2 - 1, int(qint64(kHighestHz) * window / rate));
}

float clean(float sample)
{
    return std::isfinite(sample) ? std::clamp(sample, -1.F, 1.F) : 0.F;
}

/// By how much the power of a tone between two points exceeds that of the nearer one, from the power of that
/// point and of its greater neighbour: the shape of a Hann window's peak is known.
float peakCorrection(float power, float neighbour)
{
    const float ratio = std::sqrt(neighbour / power);
    const float offset = (2 * ratio - 1) / (1 + ratio);
    if (offset < 1e-3F)
        return 1;
    const float x = float(kPi) * offset;
    const float factor = x * (1 - offset * offset) / std::sin(x);
    return factor * factor;
}

void correctPeaks(float* power, int count)
{
    for (int i = 1; i + 1 < count; ++i) {
        if (power[i] > power[i - 1] && power[i] >= power[i + 1])
            power[i] *= peakCorrection(power[i], std::max(power[i - 1], power[i + 1]));
    }
}
} // namespace

int AudioAnalyser::hopFor(int rate)
{
    int hop = 32;
    while (hop * kMostSpectraPerSecond < rate)
        hop *= 2;
    return hop;
}

AudioAnalyser::AudioAnalyser(int rate)
    : m_rate(rate)
    , m_hop(hopFor(rate))
    , m_pointCount(pointCountFor(rate, m_hop))
{
    const int size = m_hop * kHopsInWindow;
    m_samples = cv::Mat::zeros(kChannels, size, CV_32F);
    m_windowed = cv::Mat::zeros(kChannels, size, CV_32F);
    m_transform = cv::Mat::zeros(kChannels, size, CV_32F);
    m_power = cv::Mat::zeros(kChannels, m_pointCount, CV_32F);
    m_log = cv::Mat::zeros(kChannels, m_pointCount, CV_32F);
    m_window = cv::Mat::zeros(1, size, CV_32F);
    auto* window = m_window.ptr<float>();
    // Hann, scaled so that the transform of a sine is its amplitude.
    for (int i = 0; i < size; ++i)
        window[i] = float((1 - std::cos(2 * kPi * i / size)) * 2 / size);
}

void AudioAnalyser::feed(const float* left, const float* right)
{
    const float* sources[kChannels] = {left, right};
    const int kept = m_samples.cols - m_hop;
    for (int channel = 0; channel < kChannels; ++channel) {
        auto* samples = m_samples.ptr<float>(channel);
        std::memmove(samples, samples + m_hop, size_t(kept) * sizeof(float));
        float peak = 0;
        for (int i = 0; i < m_hop; ++i) {
            const float sample = clean(sources[channel][i]);
            samples[kept + i] = sample;
            peak = std::max(peak, std::abs(sample));
        }
        m_peaks[channel] = peak;
    }
}

QVector<SoundChannel> AudioAnalyser::spectrum()
{
    for (int channel = 0; channel < kChannels; ++channel) {
        // Without its mean a microphone's constant offset would fill the lowest points.
        const auto mean = float(cv::mean(m_samples.row(channel))[0]);
        const auto* samples = m_samples.ptr<float>(channel);
        const auto* window = m_window.ptr<float>();
        auto* windowed = m_windowed.ptr<float>(channel);
        for (int i = 0; i < m_samples.cols; ++i)
            windowed[i] = (samples[i] - mean) * window[i];
    }
    cv::dft(m_windowed, m_transform, cv::DFT_ROWS);
    for (int channel = 0; channel < kChannels; ++channel) {
        // The constant part, then real and imaginary parts by turns.
        const auto* transform = m_transform.ptr<float>(channel) + 1;
        auto* power = m_power.ptr<float>(channel);
        for (int i = 0; i < m_pointCount; ++i) {
            const float real = transform[2 * i];
            const float imaginary = transform[2 * i + 1];
            power[i] = std::max(real * real + imaginary * imaginary, kLeastPower);
        }
        correctPeaks(power, m_pointCount);
    }
    cv::log(m_power, m_log);
    QVector<SoundChannel> channels(kChannels);
    for (int channel = 0; channel < kChannels; ++channel)
        channels[channel].spectrums = points(channel);
    return channels;
}

QVector<QVector<QString>> AudioAnalyser::peaks() const
{
    QVector<QVector<QString>> texts;
    for (const float peak : m_peaks)
        texts += QVector<QString>{QString::number(double(peak), 'f', 4)};
    return texts;
}

QVector<Spectrum> AudioAnalyser::points(int channel) const
{
    QVector<Spectrum> points(m_pointCount);
    const auto* power = m_power.ptr<float>(channel);
    const auto* log = m_log.ptr<float>(channel);
    const float step = float(m_rate) / float(m_samples.cols);
    Spectrum* point = points.data();
    for (int i = 0; i < m_pointCount; ++i, ++point) {
        point->frequency = float(i + 1) * step;
        point->amplitude = std::sqrt(power[i]);
        point->level = std::clamp(kFullLevel + kDbOfLog * log[i], 0.F, kFullLevel);
    }
    return points;
}
