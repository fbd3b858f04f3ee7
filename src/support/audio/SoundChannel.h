#pragma once

#include "support/audio/Spectrum.h"

/// One channel of what is heard at a moment.
struct SoundChannel
{
    QVector<Spectrum> spectrums; ///< by rising frequency, up to some 20 kHz; the same points for all channels
};
Q_DECLARE_TYPEINFO(SoundChannel, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(SoundChannel)
