#include "effects/screenSync/subModes/CinemaScreen.h"

#include "effects/screenSync/FrameFilters.h"

#include <opencv2/imgproc.hpp>

namespace {

cv::Rect centreOf(const cv::Size& frame)
{
    return {static_cast<int>(frame.width * 0.1), static_cast<int>(frame.height * 0.1),
            static_cast<int>(frame.width * 0.8), static_cast<int>(frame.height * 0.8)};
}

} // namespace

CinemaScreen::CinemaScreen(const EffectWorkerOptions& options, QObject* parent)
    : FullScreenMode(options, parent)
{
}

QVector<LV_RGB> CinemaScreen::frameToColors(cv::Mat frame)
{
    const cv::Size size = frame.size();
    frame = frame(centreOf(size));
    cv::resize(frame, frame, size, 0, 0, cv::INTER_LINEAR);
    return FullScreenMode::frameToColors(frame);
}

std::vector<cv::Rect> CinemaScreen::lookedAt(const cv::Size& frame)
{
    std::vector<cv::Rect> places = FullScreenMode::lookedAt(frame);
    for (cv::Rect& place : places)
        place = FrameFilters::readBy(place, frame, centreOf(frame));
    return places;
}
