#include "effects/screenSync/ScreenBand.h"

#include "effects/screenSync/FrameFilters.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace {

cv::Range bandRange(const ScreenBand& band, int length)
{
    const int fifth = length / 5;
    return {fifth * band.firstFifth, band.endFifth == 5 ? length - 1 : fifth * band.endFifth};
}

cv::Rect bandRect(const ScreenBand& band, const cv::Size& frame)
{
    cv::Range x(0, frame.width);
    cv::Range y(0, frame.height);
    if (band.cropped && band.line == ScreenBand::Line::Row)
        y = bandRange(band, frame.height);
    else if (band.cropped)
        x = bandRange(band, frame.width);
    return {x.start, y.start, x.size(), y.size()};
}

cv::Size lineSize(const ScreenBand& band, int nbLeds)
{
    return band.line == ScreenBand::Line::Row ? cv::Size(nbLeds, 1) : cv::Size(1, nbLeds);
}

} // namespace

QVector<LV_RGB> bandColors(const ScreenBand& band, const cv::Mat& frame, int nbLeds)
{
    CV_Assert(frame.type() == CV_8UC4 && nbLeds > 0);
    const bool row = band.line == ScreenBand::Line::Row;
    cv::Mat line;
    cv::resize(frame(bandRect(band, frame.size())), line, lineSize(band, nbLeds), 0, 0, cv::INTER_LINEAR);

    QVector<LV_RGB> colors(nbLeds);
    for (int i = 0; i < nbLeds; ++i) {
        const int at = band.fromTheEnd ? nbLeds - 1 - i : i;
        const auto& pixel = row ? line.at<cv::Vec4b>(0, at) : line.at<cv::Vec4b>(at, 0);
        colors[i] = {pixel[0], pixel[1], pixel[2]};
    }
    return colors;
}

cv::Rect bandPlace(const ScreenBand& band, const cv::Size& frame, int nbLeds)
{
    const cv::Size line = lineSize(band, nbLeds);
    return FrameFilters::readBy({cv::Point(), line}, line, bandRect(band, frame));
}
