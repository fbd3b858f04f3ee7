#pragma once

#include "controllers/LV_RGB.h"

#include <QByteArray>

/// The frame of the serial protocol: "Ada", 0, LED count big-endian, then three bytes an LED.
namespace LedFrame {

/// Six bytes; a count above 65535 is cut to sixteen bits.
QByteArray header(quint32 nbLeds);
/// The LED count that a header states; 0 for one that was never built.
int statedCount(const QByteArray& header);
/// Header and colours, padded with black to the stated count; more colours than that go out whole.
QByteArray build(const QByteArray& header, const QVector<LV_RGB>& colors);
/// The frame with black behind it up to that count; unchanged when it states as many.
QByteArray reaching(const QByteArray& frame, int count);

} // namespace LedFrame
