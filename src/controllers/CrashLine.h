#pragma once

#include <cstdint>

/// Writes to an open serial line from a crash handler: no lock, no memory. False when the line does not take
/// the bytes within a fraction of a second.
bool writeCrashLine(std::intptr_t handle, const std::uint8_t* bytes, int size);
