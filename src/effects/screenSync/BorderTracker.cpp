#include "effects/screenSync/BorderTracker.h"

cv::Rect BorderTracker::step(const cv::Mat& frame, double)
{
    return {0, 0, frame.cols, frame.rows};
}
