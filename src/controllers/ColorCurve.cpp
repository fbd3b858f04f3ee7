#include "controllers/ColorCurve.h"

#include <cmath>

namespace {

/// Toward zero, low eight bits; 0 for what no integer holds, because settings may be any number.
std::uint8_t truncateToByte(double value)
{
    if (!(value > -2147483648.0 && value < 2147483648.0))
        return 0;
    return static_cast<std::uint8_t>(static_cast<std::int32_t>(value));
}

} // namespace

void ColorCurve::prepare(float brightness, float gama)
{
    if (m_valid && m_brightness == brightness && m_gama == gama)
        return;
    for (int raw = 0; raw < 256; ++raw) {
        const float scaled = static_cast<float>(raw) * brightness; // single precision, as the devices expect
        const double dimmed = truncateToByte(static_cast<double>(scaled));
        const double base = dimmed * 0.00390625; // by 256, not 255
        m_table[static_cast<std::size_t>(raw)] =
            truncateToByte(std::pow(base, static_cast<double>(gama)) * 256.0);
    }
    m_brightness = brightness;
    m_gama = gama;
    m_valid = true;
}
