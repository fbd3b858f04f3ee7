#pragma once

#include <atomic>
#include <vector>

/// Stereo samples on their way from one writing to one reading thread. Neither waits, and no operation but
/// the construction allocates.
class SampleRing
{
public:
    /// A third of a second at 96 kHz.
    static constexpr int kFrames = 1 << 15;

    SampleRing();

    /// Takes interleaved samples of that many channels, or silence where the pointer is null: one channel is
    /// doubled. More than two are mixed down; their order is front left and right, centre (except with four),
    /// low frequencies (from six on), then left and right by turns. What does not fit is dropped.
    void write(const float* samples, int frames, int channels);

    int available() const;
    /// Both take no more frames than are available.
    void read(float* left, float* right, int frames);
    void skip(int frames);

private:
    std::vector<float> m_left;
    std::vector<float> m_right;
    std::atomic<unsigned> m_written{0}; ///< in all; only the writer changes it
    std::atomic<unsigned> m_read{0};    ///< in all; only the reader changes it
};
