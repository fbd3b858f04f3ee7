#include "support/audio/WasapiBackend.h"

std::unique_ptr<AudioBackend> createAudioBackend()
{
    return std::make_unique<WasapiBackend>();
}
