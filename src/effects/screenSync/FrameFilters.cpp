#include "effects/screenSync/FrameFilters.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace {

/// Grey values above this are bright.
constexpr int kBrightGray = 128;
constexpr int kMostPixelsIgnored = 2;
/// Levels that noise and rounding put between the colours of grey.
constexpr int kChromaOfNoise = 2;

} // namespace

namespace FrameFilters {

void wipeDarkSide(const cv::Mat& frame, cv::Mat& result)
{
    result = frame;
    cv::Mat gray;
    // The frame is RGB, so red and blue swap their weights here. That is how brightness is judged on purpose:
    // which pixels count as dark must not change for installed systems.
    cv::cvtColor(frame, gray, cv::COLOR_BGR2GRAY);
    const cv::Mat bright = gray > kBrightGray;
    if (cv::countNonZero(bright) <= kMostPixelsIgnored)
        return;
    result = frame(cv::boundingRect(bright));
    cv::resize(result, result, frame.size(), 0, 0, cv::INTER_LINEAR);
}

double saturationShare(LV_RGB color, int gate)
{
    const auto [least, most] = std::minmax({color.red, color.green, color.blue});
    const int chroma = most - least;
    if (chroma >= gate)
        return 1.0;
    if (chroma <= kChromaOfNoise)
        return 0.0;
    const double share = static_cast<double>(chroma - kChromaOfNoise) / (gate - kChromaOfNoise);
    return share * share * (3.0 - 2.0 * share);
}

LV_RGB adjustSaturation(LV_RGB color, double strength)
{
    QColor hsv = QColor(color.red, color.green, color.blue, 255).toHsv();
    const double wanted = hsv.saturationF() + strength;
    const double saturation = wanted > 0.0 ? std::min(wanted, 1.0) : 0.0;
    hsv.setHsvF(hsv.hueF(), saturation, hsv.valueF(), 1.0);
    const QColor rgb = hsv.toRgb();
    return {static_cast<std::uint8_t>(rgb.red()), static_cast<std::uint8_t>(rgb.green()),
            static_cast<std::uint8_t>(rgb.blue())};
}

} // namespace FrameFilters
