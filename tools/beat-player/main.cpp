// Plays a beat on the default loudspeaker of the sound server, until it is killed or the server goes.
#include "Beat.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <pulse/error.h>
#include <pulse/simple.h>

int main()
{
    constexpr pa_sample_spec kSpec{PA_SAMPLE_FLOAT32NE, Beat::kRate, 1};
    std::array<float, Beat::kRate / 50> block{};
    // Some blocks ahead: enough for a busy machine.
    const pa_buffer_attr buffer{uint32_t(-1), 5 * sizeof block, uint32_t(-1), uint32_t(-1), uint32_t(-1)};
    int error = 0;
    pa_simple* stream = pa_simple_new(nullptr, "beat-player", PA_STREAM_PLAYBACK, nullptr, "beat", &kSpec,
                                      nullptr, &buffer, &error);
    Beat beat;
    while (stream && error == 0) {
        for (float& sample : block)
            sample = beat.next();
        pa_simple_write(stream, block.data(), sizeof block, &error);
    }
    std::fprintf(stderr, "beat-player: %s\n", pa_strerror(error));
    if (stream)
        pa_simple_free(stream);
    return 1;
}
