#pragma once

#include "controllers/LV_RGB.h"

#include <opencv2/core/mat.hpp>
#include <vector>

/// The steps between a captured frame and the colours that do not depend on the mode. Functions on values,
/// usable from any thread. A frame is 8-bit with four channels in the order red, green, blue, alpha. What
/// OpenCV refuses comes back as a cv::Exception.
namespace FrameFilters {

/// Side in pixels of the Gaussian kernel for a blur strength of 0.0 to 1.0: always odd, 1 means no blur.
int blurKernelSize(double strength);

cv::Mat blur(const cv::Mat& src, double strength);
cv::UMat blur(const cv::UMat& src, double strength);
/// The same pixels at `places`, all of them where there is none; elsewhere they may stay as they were.
cv::Mat blur(const cv::Mat& src, double strength, const std::vector<cv::Rect>& places);

/// The pixels of a frame that `place` shows after `source`, a part of the frame, was scaled bilinearly to
/// `scaled`.
cv::Rect readBy(const cv::Rect& place, const cv::Size& scaled, const cv::Rect& source);

/// Sets `result` to `frame` cut to the rectangle around its bright pixels and enlarged to the old size again,
/// or to `frame` itself when there are two bright pixels or fewer. When a step throws, `result` is what the
/// steps before it have left.
void wipeDarkSide(const cv::Mat& frame, cv::Mat& result);

/// Brings a part of a frame to the size of the whole one.
void enlarge(cv::Mat& part, const cv::Size& size);

/// How much of the saturation a colour gets, 0.0 to 1.0: none of it up to a chroma of 2 levels, all of it
/// from `gate` levels on. Without it a level of noise would make full red of grey. Gate 0: all for everyone.
double saturationShare(LV_RGB color, int gate);

/// Adds `strength` (-1.0 to 1.0) to the HSV saturation; hue and value stay. Grey has no hue and stays grey.
LV_RGB adjustSaturation(LV_RGB color, double strength);

} // namespace FrameFilters
