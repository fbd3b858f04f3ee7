#include "support/capture/HdrPixels.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kChannels = 4;
constexpr int kColors = 3;
constexpr int kEnough = 8; // of the rows and columns of one output pixel
constexpr quint32 kHalves = 0x10000;

float toFloat(quint16 half)
{
    return float(cv::float16_t::fromBits(half));
}

/// The curve of ordinary screens.
double encoded(double light)
{
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

/// As a signed number a half float sorts as what it stands for, if one of the two is not negative.
qint16 sortable(quint16 half)
{
    return static_cast<qint16>(half);
}

} // namespace

void HdrToBytes::setWhite(double white)
{
    if (!(white > 0) || white == m_white)
        return;
    m_white = white;
    m_whiteHalf = sortable(cv::float16_t(float(white)).bits());
    m_bytes.resize(kHalves);
    for (quint32 half = 0; half < kHalves; ++half) {
        const double light = toFloat(quint16(half)) / white;
        m_bytes[half] = light > 0 ? uchar(std::lround(255 * encoded(std::min(light, 1.0)))) : uchar(0);
    }
}

cv::Mat HdrToBytes::convert(const HdrPixels& pixels, QSize outputSize) const
{
    if (!pixels.data || pixels.size.isEmpty() || outputSize.isEmpty() || m_bytes.empty())
        return {};
    const int stepX = std::max(1, pixels.size.width() / (kEnough * outputSize.width()));
    const int stepY = std::max(1, pixels.size.height() / (kEnough * outputSize.height()));
    cv::Mat bytes(pixels.size.height() / stepY, pixels.size.width() / stepX, CV_8UC4);
    const auto* first = reinterpret_cast<const uchar*>(pixels.data);
    for (int y = 0; y < bytes.rows; ++y) {
        // From another place of each group of neighbours, so that no regular pattern gets more than its
        // share.
        const int fromRow = y * stepY + y / 2 % stepY, fromColumn = y % stepX;
        const auto* row = reinterpret_cast<const quint16*>(first + fromRow * pixels.stride);
        convertRow(row + fromColumn * kChannels, stepX * kChannels, bytes.cols, bytes.ptr(y));
    }
    return bytes;
}

void HdrToBytes::convertRow(const quint16* from, int step, int count, uchar* to) const
{
    for (; count > 0; --count, from += step, to += kChannels) {
        if (std::max({sortable(from[0]), sortable(from[1]), sortable(from[2])}) > m_whiteHalf) {
            convertBright(from, to);
            continue;
        }
        for (int i = 0; i < kColors; ++i)
            to[i] = m_bytes[from[i]];
        to[kColors] = 255;
    }
}

void HdrToBytes::convertBright(const quint16* from, uchar* to) const
{
    static constexpr float kMost = 65504; // more is infinite, or no number
    float light[kColors];
    for (int i = 0; i < kColors; ++i) {
        const float value = toFloat(from[i]);
        light[i] = value > 0 ? std::min(value, kMost) : 0.0F;
    }
    const float scale = float(m_white) / std::max({light[0], light[1], light[2]});
    for (int i = 0; i < kColors; ++i)
        to[i] = m_bytes[cv::float16_t(light[i] * scale).bits()];
    to[kColors] = 255;
}
