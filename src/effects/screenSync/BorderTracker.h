#pragma once

#include <opencv2/core/mat.hpp>

/// Finds the black borders of a film and keeps to them: subtitles, fades and flashes do not move them. One
/// source; no locks.
class BorderTracker
{
public:
    /// The part of the frame within its borders, `seconds` after the frame before. The frame is 8-bit with
    /// four channels; never empty for one that has pixels.
    cv::Rect step(const cv::Mat& frame, double seconds);
    /// Another source: nothing is known of its borders.
    void forget() {}
};
