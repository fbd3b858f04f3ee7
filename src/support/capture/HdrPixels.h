#pragma once

#include <QSize>
#include <opencv2/core/mat.hpp>
#include <vector>

/// A borrowed picture of a desktop with high dynamic range: four half floats a pixel, the linear light of
/// red, green, blue and alpha.
struct HdrPixels
{
    const quint16* data = nullptr;
    qint64 stride = 0; ///< bytes from one row to the next
    QSize size;
};

/// Makes bytes of such pictures, the desktop's own white being 255. What is brighter keeps its hue, and what
/// no ordinary screen can show is the nearest that it can. Belongs to one thread.
class HdrToBytes
{
public:
    /// How much light the desktop's white is, in the picture's unit. Remembered.
    void setWhite(double white);
    /// Red, green, blue and 255; of a large picture no more pixels than it takes for one of this size. Empty
    /// without pixels or size.
    cv::Mat convert(const HdrPixels& pixels, QSize outputSize) const;

private:
    void convertRow(const quint16* from, int step, int count, uchar* to) const;
    void convertBright(const quint16* from, uchar* to) const;

    double m_white = 0;
    qint16 m_whiteHalf = 0;
    std::vector<uchar> m_bytes; ///< of each half float
};
