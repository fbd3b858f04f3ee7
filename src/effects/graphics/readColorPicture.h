#pragma once

#include <QString>
#include <opencv2/core.hpp>

/// The picture of a PNG file in blue, green and red (CV_8UC3), just as OpenCV reads it in colour: of 16 bits
/// a channel the upper ones, alpha dropped so that what it hid shows, turned as its orientation says, no
/// gamma. Empty without one. `problem` says then what is wrong with the file, as the end of a sentence that
/// begins with its name, and stays empty where there is no file. Never waits for a pipe, and takes memory
/// only for what fits the limits. Any thread; decoding takes its time.
cv::Mat readColorPicture(const QString& path, QString* problem);
