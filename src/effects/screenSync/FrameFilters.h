#pragma once

#include "controllers/LV_RGB.h"

#include <cstddef>
#include <cstdint>
#include <opencv2/core/mat.hpp>
#include <vector>

/// The steps between a captured frame and the colours that do not depend on the mode. Functions on values,
/// usable from any thread. A frame is 8-bit with four channels in the order red, green, blue, alpha. What
/// OpenCV refuses comes back as a cv::Exception.
namespace FrameFilters {

/// Side in pixels of the Gaussian kernel for a blur strength of 0.0 to 1.0: always odd, 1 means no blur.
int blurKernelSize(double strength);

/// Pixels of a frame that somebody looks at. A plain value.
class Marks
{
public:
    Marks() = default; ///< all pixels of any frame
    /// Those of a frame of this size at `places`; all of them where there is none.
    Marks(const cv::Size& frame, const std::vector<cv::Rect>& places);

    bool isAll() const { return m_isAll; }
    /// One for each column, not 0 where it is marked; only where not all are.
    const std::uint8_t* row(int y) const { return m_marked.data() + std::size_t(y) * std::size_t(m_columns); }
    int count() const;
    bool covers(const Marks& other) const;
    /// The other ones, too, which are of a frame of the same size.
    void add(const Marks& other);

private:
    bool m_isAll = true;
    int m_columns = 0;
    std::vector<std::uint8_t> m_marked;
};

cv::Mat blur(const cv::Mat& src, double strength);
cv::UMat blur(const cv::UMat& src, double strength);
/// The same pixels where they are marked; elsewhere they may stay as they were.
cv::Mat blur(const cv::Mat& src, double strength, const Marks& marks);

/// The pixels of a frame that `place` shows after `source`, a part of the frame, was scaled bilinearly to
/// `scaled`.
cv::Rect readBy(const cv::Rect& place, const cv::Size& scaled, const cv::Rect& source);

/// Sets `result` to `frame` cut to the rectangle around its bright pixels and enlarged to the old size again,
/// or to `frame` itself when there are two bright pixels or fewer. When a step throws, `result` is what the
/// steps before it have left.
void wipeDarkSide(const cv::Mat& frame, cv::Mat& result);

/// How much of the saturation a colour gets, 0.0 to 1.0: none of it up to a chroma of 2 levels, all of it
/// from `gate` levels on. Without it a level of noise would make full red of grey. Gate 0: all for everyone.
double saturationShare(LV_RGB color, int gate);

/// Adds `strength` (-1.0 to 1.0) to the HSV saturation; hue and value stay. Grey has no hue and stays grey.
LV_RGB adjustSaturation(LV_RGB color, double strength);

} // namespace FrameFilters
