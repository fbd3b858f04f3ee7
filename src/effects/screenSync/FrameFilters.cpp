#include "effects/screenSync/FrameFilters.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/core/ocl.hpp>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kKernelAtFullBlurPx = 75.0;
/// Ten times the strongest blur that the controls offer: a stored value beyond it must not stall the worker.
constexpr double kKernelLimitPx = 750.0;
/// Grey values above this are bright.
constexpr int kBrightGray = 128;
constexpr int kMostPixelsIgnored = 2;

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
    const int k = blurKernelSize(strength);
    cv::Mat dst;
    cv::GaussianBlur(src, dst, cv::Size(k, k), 0, 0, cv::BORDER_DEFAULT);
    return dst;
}

cv::UMat blur(const cv::UMat& src, double strength)
{
    const int k = blurKernelSize(strength);
    cv::UMat dst;
    cv::GaussianBlur(src, dst, cv::Size(k, k), 0, 0, cv::BORDER_DEFAULT);
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
    cv::resize(result, result, frame.size(), 0, 0, cv::INTER_LINEAR);
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

void keepOnThisThread()
{
    // Two threads blur a frame in 0.30 ms instead of 0.40 ms, but burn 0.60 ms of processor time for it, all
    // day long. The setting holds for the whole process.
    static const bool sequential = (cv::setNumThreads(0), true);
    static_cast<void>(sequential);
    // The first UMat would load whatever OpenCL runtime there is, with its memory and threads, and the way of
    // a frame this small to an accelerator and back takes longer than the blur. The setting holds for one
    // thread.
    cv::ocl::setUseOpenCL(false);
}

} // namespace FrameFilters
