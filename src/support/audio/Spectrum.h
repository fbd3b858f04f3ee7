#pragma once

#include <QMetaType>
#include <QVector>

/// One point of a spectrum.
struct Spectrum
{
    float frequency = 0; ///< hertz
    float amplitude = 0; ///< 1 for a full-scale sine
    float level = 0;     ///< loudness: 80 for a full-scale sine, 0 at 80 dB below it; never outside
};
Q_DECLARE_TYPEINFO(Spectrum, Q_PRIMITIVE_TYPE);
Q_DECLARE_METATYPE(Spectrum)
