#include "support/audio/PulseBackend_linux.h"

std::unique_ptr<AudioBackend> createAudioBackend()
{
    return PulseBackend::create();
}
