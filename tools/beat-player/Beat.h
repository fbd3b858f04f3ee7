#pragma once

#include <array>

/// An endless piece of dance music, as plain samples: kick, bass and a melody over four chords. Loud on the
/// beat and soft between, so that what follows the level has far to move.
class Beat
{
public:
    static constexpr int kRate = 48000; ///< samples a second

    /// The next sample, full scale from -1 to 1.
    float next();

private:
    /// A note that sounds and fades.
    struct Voice
    {
        double seconds = 0; ///< since it began
        double hertz = 0;   ///< 0 before the first note
        void strike(double newHertz) { *this = {0, newHertz}; }
    };

    void beginStep();

    int m_step = 0;
    int m_samplesLeft = 0; ///< of the step
    Voice m_kick;
    Voice m_bass;
    std::array<Voice, 2> m_melody; ///< by turns, so that a note rings on under the next
};
