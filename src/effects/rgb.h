#pragma once

#include "controllers/LV_RGB.h"

#include <QColor>
#include <QJsonArray>
#include <QJsonValue>

/// A colour reduced to what an LED takes; alpha is dropped.
inline LV_RGB toLedColor(QRgb color)
{
    return {static_cast<std::uint8_t>(qRed(color)), static_cast<std::uint8_t>(qGreen(color)),
            static_cast<std::uint8_t>(qBlue(color))};
}

inline LV_RGB toLedColor(const QColor& color)
{
    return toLedColor(color.rgb());
}

/// The form of a colour in properties: [red, green, blue], each 0 to 255.
inline QJsonArray toRgbArray(const QColor& color)
{
    return {color.red(), color.green(), color.blue()};
}

/// The opaque colour of such an array; a missing component counts as 0, one out of range is bounded.
inline QColor colorFromRgbArray(const QJsonArray& rgb)
{
    const auto component = [&rgb](int i) { return qBound(0, rgb.at(i).toInt(0), 255); };
    return {component(0), component(1), component(2), 255};
}
