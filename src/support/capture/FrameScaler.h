#pragma once

#include <QSize>
#include <opencv2/core/mat.hpp>

/// A borrowed picture of four bytes a pixel.
struct SourcePixels
{
    const uchar* data = nullptr;
    qint64 stride = 0; ///< bytes from one row to the next
    QSize size;
    /// Where in a pixel the colours stand; the defaults are the common blue, green, red, unused.
    int redByte = 2;
    int greenByte = 1;
    int blueByte = 0;
    /// What the picture went through on its way into these pixels: a flip left to right, and after it quarter
    /// turns counter-clockwise.
    bool isFlipped = false;
    int quarterTurns = 0;

    QSize uprightSize() const { return quarterTurns % 2 ? size.transposed() : size; }
};

/// The upright picture at another size, in red, green, blue and alpha 255, every pixel the mean of the area
/// it covers. Of areas of 16 rows and more eight are read, spread across them. Empty without pixels or
/// size.
cv::Mat scaleFrame(const SourcePixels& source, QSize outputSize);
