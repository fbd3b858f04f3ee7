#include "Beat.h"

#include <cmath>
#include <utility>

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kBeatsPerMinute = 116;
constexpr int kStepsPerBeat = 4;
constexpr int kStepsPerBar = 16;
constexpr int kSamplesPerStep = static_cast<int>(Beat::kRate * 60 / kBeatsPerMinute / kStepsPerBeat);

/// The root in hertz and the third above it; A minor, F, C, G.
struct Chord
{
    double root;
    double third;
};
constexpr Chord kChords[] = {{55.00, 1.189}, {43.65, 1.260}, {65.41, 1.260}, {49.00, 1.260}};
constexpr double kFifth = 1.498;

// A letter a step: x strikes; of the melody r root, t third, f fifth, o octave. The last bar holds its
// breath.
constexpr const char* kKick[] = {"x...x...x...x...", "x...x...x...x..x", "x...x...x...x...",
                                 "x...x..........."};
constexpr const char* kBass = "..x...x...x...x.";
constexpr const char* kMelody[] = {"r..t..f...o..f..", "o..f..t...r.....", "t..f..o...f..t..",
                                   "f..o..t...f.o.f."};

double pitch(char letter, const Chord& chord)
{
    switch (letter) {
    case 't':
        return chord.third;
    case 'f':
        return kFifth;
    case 'o':
        return 2;
    default:
        return 1;
    }
}

double fade(double seconds, double halfLife)
{
    return std::exp2(-seconds / halfLife);
}

} // namespace

float Beat::next()
{
    if (m_samplesLeft-- == 0)
        beginStep();
    double sum = 0;
    if (m_kick.hertz > 0) { // falls in pitch, as a drum does
        const double turns = m_kick.hertz * m_kick.seconds + 4 * (1 - fade(m_kick.seconds, 0.02));
        sum += 0.75 * fade(m_kick.seconds, 0.07) * std::sin(kTurn * turns);
    }
    const double bass = std::sin(kTurn * m_bass.hertz * m_bass.seconds);
    sum += 0.3 * fade(m_bass.seconds, 0.12) * bass * (1.5 - 0.5 * bass * bass);
    for (const Voice& voice : m_melody)
        sum += 0.14 * fade(voice.seconds, 0.15) * std::sin(kTurn * voice.hertz * voice.seconds);
    for (Voice* voice : {&m_kick, &m_bass, &m_melody[0], &m_melody[1]})
        voice->seconds += 1.0 / kRate;
    return static_cast<float>(std::fmax(-1, std::fmin(1, sum)));
}

void Beat::beginStep()
{
    constexpr int kBars = 4;
    const int bar = m_step / kStepsPerBar % kBars;
    const int step = m_step % kStepsPerBar;
    m_samplesLeft = kSamplesPerStep - 1;
    ++m_step %= kBars * kStepsPerBar;

    const Chord& chord = kChords[bar];
    if (kKick[bar][step] == 'x')
        m_kick.strike(48);
    if (kBass[step] == 'x')
        m_bass.strike(2 * chord.root);
    if (const char letter = kMelody[bar][step]; letter != '.') {
        std::swap(m_melody[0], m_melody[1]);
        m_melody[0].strike(8 * chord.root * pitch(letter, chord));
    }
}
