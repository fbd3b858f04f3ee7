#pragma once

#include "controllers/LV_RGB.h"

#include <QVector>
#include <opencv2/core/mat.hpp>

/// Which part of the frame lights a strip along one edge of the screen, and in which order the LEDs read it.
struct ScreenBand
{
    enum class Line { Row, Column };

    Line line;       ///< the strip runs along a row or a column of the frame
    int firstFifth;  ///< the band starts after this many fifths of the frame, across the strip
    int endFifth;    ///< and ends before this one; 5 stops one pixel short of the edge
    bool cropped;    ///< false: the whole frame is read although the band is narrower
    bool fromTheEnd; ///< the first LED reads the last pixel of the line
};

// The bottom reads the whole frame and the right starts at one fifth: installed strips look like that.
inline constexpr ScreenBand kTopBand{ScreenBand::Line::Row, 0, 1, true, false};
inline constexpr ScreenBand kBottomBand{ScreenBand::Line::Row, 4, 5, false, false};
inline constexpr ScreenBand kLeftBand{ScreenBand::Line::Column, 0, 1, true, true};
inline constexpr ScreenBand kRightBand{ScreenBand::Line::Column, 1, 5, true, false};

/// Scales the band of an 8-bit four-channel frame to a line of `nbLeds` pixels and reads it. Throws
/// cv::Exception for an empty band, for no LEDs and for a frame of another type.
QVector<LV_RGB> bandColors(const ScreenBand& band, const cv::Mat& frame, int nbLeds);
/// The pixels of a frame that this reads.
cv::Rect bandPlace(const ScreenBand& band, const cv::Size& frame, int nbLeds);
