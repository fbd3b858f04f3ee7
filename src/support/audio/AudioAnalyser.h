#pragma once

#include "support/audio/SoundChannel.h"

#include <QString>
#include <QVector>
#include <opencv2/core/mat.hpp>

/// Stereo samples to spectra and peaks, as plain values: no sound system, no thread, no clock.
class AudioAnalyser
{
public:
    static constexpr int kChannels = 2;
    /// How many samples lie between two spectra: 30 to 60 a second at any rate from 2 kHz on.
    static int hopFor(int rate);

    explicit AudioAnalyser(int rate);

    int rate() const { return m_rate; }
    int hop() const { return m_hop; }

    /// Takes the next hop() samples of each channel. Those outside -1 to 1 are clipped; what is no number
    /// counts as silence.
    void feed(const float* left, const float* right);

    /// Of the last four hops, left and right.
    QVector<SoundChannel> spectrum();
    /// Of the last hop: one entry for each channel, 0 to 1, as decimal text with a point.
    QVector<QVector<QString>> peaks() const;

private:
    QVector<Spectrum> points(int channel) const;

    const int m_rate;
    const int m_hop;
    const int m_pointCount;
    float m_peaks[kChannels] = {};
    // One row for each channel.
    cv::Mat m_samples;
    cv::Mat m_window;
    cv::Mat m_windowed;
    cv::Mat m_transform;
    cv::Mat m_power; ///< the square of the amplitude of each point
    cv::Mat m_log;   ///< its natural logarithm
};
