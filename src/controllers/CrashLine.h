#pragma once

#include <cstdint>

/// Writes to an open serial line from a crash handler: no lock, no memory. False when the line does not take
/// the bytes within a fraction of a second, behind what is under way. One thread at a time.
bool writeCrashLine(std::intptr_t handle, const std::uint8_t* bytes, int size);
