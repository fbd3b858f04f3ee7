#pragma once

#include "controllers/LV_RGB.h"

#include <QVector>

/// Lets the colours of a strip follow what they should be in time, so that noise and jumps of the picture do
/// not show; the curve does not depend on how often it is asked. One strip; no locks.
class ColorSmoother
{
public:
    enum class Mode {
        Off,        ///< colours pass as they are
        Responsive, ///< small differences settle, large ones and cuts pass at once
        Calm        ///< everything settles
    };

    /// The next step begins anew when the mode is another.
    void setMode(Mode mode);
    /// The next colours are taken as they are: the first ones, or those after a rest.
    void snap() { m_shouldSnap = true; }
    /// Replaces the colours by those to be shown `seconds` after the step before.
    void step(QVector<LV_RGB>& colors, double seconds);
    /// The same colours again would change nothing any more.
    bool isSettled() const { return m_isSettled; }

private:
    Mode m_mode = Mode::Off;
    bool m_shouldSnap = true;
    bool m_isSettled = true;
};
