#pragma once

#include <array>
#include <cstdint>

/// What the colour pipeline makes of one byte at a given brightness and gamma. Both steps depend on nothing
/// but the byte, so they are computed once for all 256 of them instead of three powers an LED a frame.
class ColorCurve
{
public:
    /// Brings the table up to date; cheap while nothing changes.
    void prepare(float brightness, float gama);

    std::uint8_t operator[](std::uint8_t raw) const { return m_table[raw]; }

private:
    std::array<std::uint8_t, 256> m_table{};
    float m_brightness = 0.0F;
    float m_gama = 0.0F;
    bool m_valid = false;
};
