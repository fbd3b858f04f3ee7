#pragma once

#include "controllers/LV_RGB.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPoint>
#include <QSize>
#include <QVector>
#include <opencv2/core/mat.hpp>

/// Where each LED stands on a small model of the screen. A value without locks; no operation fails.
struct LedMap
{
    QSize screenSize;       ///< canvas in pixels
    QVector<QPoint> points; ///< canvas pixel of each LED, index = LED number counted from 0

    /// The layout for devices that nobody described: a canvas of 120 by 67, filled row by row. With very many
    /// LEDs the last ones stand below the canvas.
    static LedMap defaultGrid(int nbLeds);

    /// Takes over a stored map (screenWidth, screenHeight, ledMap) or a default file (key_len, key_wid,
    /// key_array), key by key; LEDs are counted from 1 there. Whatever it does not name or names outside the
    /// canvas stays.
    void apply(const QJsonObject& config);
    /// The stored form, with LEDs counted from 1.
    QJsonObject toConfig() const;
    /// The form of the effect property, with LEDs counted from 0.
    QJsonArray toProperty() const;

    /// Moves LEDs that stand outside `size` to its border, to -1 where a side of it is 0.
    void resize(const QSize& size);
};

/// Reads one pixel of an 8-bit four-channel frame for each LED; points outside it read the nearest pixel.
/// Throws cv::Exception for a frame of another type or without pixels.
void readColors(const cv::Mat& frame, const QVector<QPoint>& points, QVector<LV_RGB>& colors);
/// The pixels of a frame that the points show once it is scaled to the canvas.
std::vector<cv::Rect> placesOf(const QVector<QPoint>& points, const QSize& canvas, const cv::Size& frame);
