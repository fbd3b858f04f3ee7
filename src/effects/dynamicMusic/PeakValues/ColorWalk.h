#pragma once

#include "controllers/LV_RGB.h"

/// A colour that wanders: black, red, yellow, a pale yellow and back, five units at a time.
class ColorWalk
{
public:
    void step()
    {
        const bool up = m_step > 0;
        if (up ? m_red < 255 : m_red > 0)
            m_red += m_step;
        else if (up ? m_green < 255 : m_green > 0)
            m_green += m_step;
        else if (up ? m_blue < 200 : m_blue > 150) // once it has risen blue never fades out
            m_blue += m_step;
        else
            m_step = -m_step;
    }

    LV_RGB color() const
    {
        return {static_cast<std::uint8_t>(m_red), static_cast<std::uint8_t>(m_green),
                static_cast<std::uint8_t>(m_blue)};
    }

private:
    int m_red = 0;
    int m_green = 0;
    int m_blue = 0;
    int m_step = 5;
};
