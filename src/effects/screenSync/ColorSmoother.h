#pragma once

#include "controllers/LV_RGB.h"

#include <QVector>
#include <array>
#include <vector>

/// Lets the colours of a strip follow what they should be in time, so that noise and jumps of the picture do
/// not show; the curve does not depend on how often it is asked. It never overshoots, and colours that last
/// are shown exactly after a second at most (two where a level more or less came and went). One strip; no
/// locks.
class ColorSmoother
{
public:
    enum class Mode {
        Off,        ///< colours pass as they are
        Responsive, ///< small differences settle, large ones and cuts pass at once
        Calm        ///< everything settles but black, which is shown at once
    };

    /// The next step begins anew when the mode is another.
    void setMode(Mode mode);
    Mode mode() const { return m_mode; }
    /// The next colours are taken as they are: the first ones, or those after a rest.
    void snap() { m_shouldSnap = true; }
    /// Replaces the colours by those to be shown `seconds` after the step before. Another number of LEDs and
    /// a gap of half a second while something moved begin anew.
    void step(QVector<LV_RGB>& colors, double seconds);
    /// The same colours again would change nothing any more, so that no step is needed until others come.
    bool isSettled() const { return m_isSettled; }

private:
    struct Channel
    {
        Channel() = default;
        explicit Channel(std::uint8_t byte)
            : level(byte)
            , target(byte)
            , shown(byte)
        {
        }
        void aim(std::uint8_t wanted, float seconds);
        /// By a share of the way.
        void follow(float share);
        float difference() const { return static_cast<float>(target) - level; }

        float level = 0.0F;      ///< where the curve is
        float targetAge = 0.0F;  ///< s
        float lasting = 0.0F;    ///< s: the target is taken exactly at this age
        std::uint8_t target = 0; ///< what it should be
        std::uint8_t shown = 0;  ///< what the strip has
    };
    using Led = std::array<Channel, 3>;

    /// Whether the LED shows what it should.
    bool follow(Led& led, LV_RGB& color, float seconds) const;
    bool isCut(const QVector<LV_RGB>& colors) const;

    Mode m_mode = Mode::Off;
    bool m_shouldSnap = true;
    bool m_isSettled = true;
    std::vector<Led> m_leds;
};
