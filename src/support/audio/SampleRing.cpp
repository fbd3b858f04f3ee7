#include "support/audio/SampleRing.h"

#include <algorithm>

namespace {
constexpr unsigned kMask = SampleRing::kFrames - 1;
constexpr float kSide = 0.7071F; // a speaker that is not in front, and the centre for each of its sides

struct Frame
{
    float left;
    float right;
};

Frame mixDown(const float* samples, int channels)
{
    if (channels == 1)
        return {samples[0], samples[0]};
    Frame frame{samples[0], samples[1]};
    int next = 2;
    const int shared = channels < 6 ? (channels == 2 || channels == 4 ? 0 : 1) : 2;
    for (; next < 2 + shared; ++next) {
        frame.left += kSide * samples[next];
        frame.right += kSide * samples[next];
    }
    for (bool isLeft = true; next < channels; ++next, isLeft = !isLeft)
        (isLeft ? frame.left : frame.right) += kSide * samples[next];
    return frame;
}
} // namespace

SampleRing::SampleRing()
    : m_left(kFrames)
    , m_right(kFrames)
{
}

void SampleRing::write(const float* samples, int frames, int channels)
{
    const unsigned written = m_written.load(std::memory_order_relaxed);
    const unsigned room = kFrames - (written - m_read.load(std::memory_order_acquire));
    const unsigned count = std::min(unsigned(std::max(frames, 0)), channels > 0 ? room : 0);
    for (unsigned i = 0; i < count; ++i) {
        const Frame frame = samples ? mixDown(samples + size_t(i) * size_t(channels), channels) : Frame{0, 0};
        m_left[(written + i) & kMask] = frame.left;
        m_right[(written + i) & kMask] = frame.right;
    }
    m_written.store(written + count, std::memory_order_release);
}

int SampleRing::available() const
{
    return int(m_written.load(std::memory_order_acquire) - m_read.load(std::memory_order_acquire));
}

void SampleRing::read(float* left, float* right, int frames)
{
    const unsigned start = m_read.load(std::memory_order_relaxed);
    for (unsigned i = 0; i < unsigned(frames); ++i) {
        left[i] = m_left[(start + i) & kMask];
        right[i] = m_right[(start + i) & kMask];
    }
    skip(frames);
}

void SampleRing::skip(int frames)
{
    m_read.store(m_read.load(std::memory_order_relaxed) + unsigned(frames), std::memory_order_release);
}
