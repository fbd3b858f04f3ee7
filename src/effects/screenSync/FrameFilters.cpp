#include "effects/screenSync/FrameFilters.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <map>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kKernelAtFullBlurPx = 75.0;
/// Ten times the strongest blur that the controls offer: a stored value beyond it must not stall the worker.
constexpr double kKernelLimitPx = 750.0;
/// Grey values above this are bright.
constexpr int kBrightGray = 128;
constexpr int kMostPixelsIgnored = 2;
/// Levels that noise and rounding put between the colours of grey.
constexpr int kChromaOfNoise = 2;
/// cv::GaussianBlur rounds its weights for 8-bit pixels to multiples of 1/256.
constexpr int kKernelBits = 8;
constexpr double kKernelSum = 1 << kKernelBits;
/// A frame may be a part of a larger picture, of which the rest is nothing to it.
constexpr int kBorder = cv::BORDER_DEFAULT | cv::BORDER_ISOLATED;

/// The weights of cv::GaussianBlur times 256, seen by blurring a single bright pixel of one row. Empty when
/// they are others than its own arithmetic needs.
cv::Mat integerKernel(int size)
{
    static thread_local std::map<int, cv::Mat> kept;
    const auto known = kept.find(size);
    if (known != kept.end())
        return known->second;
    cv::Mat impulse = cv::Mat::zeros(1, 2 * size + 1, CV_8UC1);
    impulse.at<uchar>(0, size) = 255;
    cv::GaussianBlur(impulse, impulse, cv::Size(size, 1), 0, 0, cv::BORDER_DEFAULT);
    cv::Mat kernel;
    impulse.colRange(size - size / 2, size + size / 2 + 1).convertTo(kernel, CV_32F);
    if (cv::sum(kernel)[0] != kKernelSum)
        kernel.release();
    return kept[size] = kernel;
}

/// The result of cv::GaussianBlur to the bit in a quarter of its time, which is nearly all the time of a
/// frame. All sums are integers below 2^24, so that float arithmetic makes no error; what remains is to round
/// half up.
void blurExactly(const cv::Mat& src, cv::Mat& dst, const cv::Mat& kernel)
{
    constexpr int kBits = 2 * kKernelBits;
    // Kept, because the heap may give a block of this size (0.13 MB) back to the system after every frame.
    static thread_local cv::Mat sums;
    cv::sepFilter2D(src, sums, CV_32F, kernel, kernel, cv::Point(-1, -1), 1 << (kBits - 1), kBorder);
    dst.create(src.size(), src.type());
    const int rowBytes = src.cols * src.channels();
    for (int y = 0; y < src.rows; ++y) {
        const auto* from = sums.ptr<float>(y);
        auto* to = dst.ptr<uchar>(y);
        for (int x = 0; x < rowBytes; ++x)
            to[x] = static_cast<uchar>(static_cast<int>(from[x]) >> kBits);
    }
}

} // namespace

namespace FrameFilters {

int blurKernelSize(double strength)
{
    const double wanted = strength * kKernelAtFullBlurPx;
    // Written so that not-a-number means no blur.
    const int size = wanted > 0.0 ? static_cast<int>(std::min(wanted, kKernelLimitPx)) : 0;
    return size % 2 == 0 ? size + 1 : size;
}

cv::Mat blur(const cv::Mat& src, double strength)
{
    const int size = blurKernelSize(strength);
    const cv::Mat kernel = size == 1 ? cv::Mat() : integerKernel(size);
    cv::Mat dst;
    if (kernel.empty() || src.depth() != CV_8U)
        cv::GaussianBlur(src, dst, cv::Size(size, size), 0, 0, kBorder);
    else
        blurExactly(src, dst, kernel);
    return dst;
}

cv::UMat blur(const cv::UMat& src, double strength)
{
    cv::UMat dst;
    blur(src.getMat(cv::ACCESS_READ), strength).copyTo(dst);
    return dst;
}

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
    enlarge(result, frame.size());
}

void enlarge(cv::Mat& part, const cv::Size& size)
{
    cv::resize(part, part, size, 0, 0, cv::INTER_LINEAR);
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
