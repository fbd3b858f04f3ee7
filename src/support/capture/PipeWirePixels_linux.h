#pragma once

#include "support/capture/FrameScaler.h"

#include <vector>

struct spa_buffer;
struct spa_pod;
struct spa_pod_builder;

// What is said to a media server about pictures. Any thread.

/// The pictures that can be read here.
const spa_pod* readableFormats(spa_pod_builder& builder);
/// How they are to be handed over: by memory that can be read, with what tells of their place in it.
std::vector<const spa_pod*> wantedBuffers(spa_pod_builder& builder);
/// The size and where the colours stand; without size where the format is none of the above.
SourcePixels pixelsOf(const spa_pod* format);
/// The picture in a buffer of this format. No data unless all of it lies in the buffer's memory, whatever
/// the producer says.
SourcePixels pixelsIn(const spa_buffer& buffer, const SourcePixels& format);
