#pragma once

#include <QMetaType>
#include <QVector>
#include <cstdint>

/// One LED's colour. No padding: a QVector<LV_RGB> of n LEDs is 3n contiguous bytes, as on the wire.
struct LV_RGB
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};
static_assert(sizeof(LV_RGB) == 3, "goes over the wire as it stands in memory");

inline bool operator==(const LV_RGB& a, const LV_RGB& b)
{
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}
inline bool operator!=(const LV_RGB& a, const LV_RGB& b)
{
    return !(a == b);
}

Q_DECLARE_TYPEINFO(LV_RGB, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(LV_RGB)
