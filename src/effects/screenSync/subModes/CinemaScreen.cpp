#include "effects/screenSync/subModes/CinemaScreen.h"

#include "effects/screenSync/FrameFilters.h"

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
    return FullScreenMode::frameToColors(zoomed(frame, centreOf(frame.size()), frame.size()));
}

std::vector<cv::Rect> CinemaScreen::lookedAt(const cv::Size& frame)
{
    std::vector<cv::Rect> places = FullScreenMode::lookedAt(frame);
    for (cv::Rect& place : places)
        place = FrameFilters::readBy(place, frame, centreOf(frame));
    return places;
}
