#include "effects/screenSync/ColorSmoother.h"

void ColorSmoother::setMode(Mode mode)
{
    if (mode != m_mode)
        snap();
    m_mode = mode;
}

void ColorSmoother::step(QVector<LV_RGB>&, double)
{
    m_shouldSnap = false;
}
