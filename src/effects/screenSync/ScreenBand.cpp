#include "effects/screenSync/ScreenBand.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace {

cv::Range bandRange(const ScreenBand& band, int length)
{
    const int fifth = length / 5;
    return {fifth * band.firstFifth, band.endFifth == 5 ? length - 1 : fifth * band.endFifth};
}

} // namespace

QVector<LV_RGB> bandColors(const ScreenBand& band, const cv::Mat& frame, int nbLeds)
{
    CV_Assert(frame.type() == CV_8UC4 && nbLeds > 0);
    const bool row = band.line == ScreenBand::Line::Row;
    cv::Mat line = frame;
    if (band.cropped)
        line =
            row ? frame.rowRange(bandRange(band, frame.rows)) : frame.colRange(bandRange(band, frame.cols));
    cv::resize(line, line, row ? cv::Size(nbLeds, 1) : cv::Size(1, nbLeds), 0, 0, cv::INTER_LINEAR);

    QVector<LV_RGB> colors(nbLeds);
    for (int i = 0; i < nbLeds; ++i) {
        const int at = band.fromTheEnd ? nbLeds - 1 - i : i;
        const auto& pixel = row ? line.at<cv::Vec4b>(0, at) : line.at<cv::Vec4b>(at, 0);
        colors[i] = {pixel[0], pixel[1], pixel[2]};
    }
    return colors;
}
