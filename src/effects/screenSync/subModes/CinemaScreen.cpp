#include "effects/screenSync/subModes/CinemaScreen.h"

#include <opencv2/imgproc.hpp>

CinemaScreen::CinemaScreen(const EffectWorkerOptions& options, QObject* parent)
    : FullScreenMode(options, parent)
{
}

QVector<LV_RGB> CinemaScreen::frameToColors(cv::Mat frame)
{
    const cv::Size size = frame.size();
    const cv::Rect centre(static_cast<int>(size.width * 0.1), static_cast<int>(size.height * 0.1),
                          static_cast<int>(size.width * 0.8), static_cast<int>(size.height * 0.8));
    frame = frame(centre);
    cv::resize(frame, frame, size, 0, 0, cv::INTER_LINEAR);
    return FullScreenMode::frameToColors(frame);
}
