#pragma once

#include <cstdint>

/// A clock that knows no waiting. In a program that links this source one thread runs at a time: the others
/// wait in calls of the system that lead here (sleeping, polling, locking, joining), and when all of them do,
/// the clock jumps to the earliest deadline. So minutes pass in milliseconds, and what threads do repeats
/// itself exactly. Descriptors are looked at for real; without any deadline the process waits for them.
namespace VirtualTime {

/// Since the start of the process.
std::int64_t nowNs();
/// Which of the threads that could go on goes on; the same seed repeats the same order. 0: the oldest.
void setOrder(std::uint64_t seed);
/// Threads that have not ended, the calling one included.
int threadCount();
/// Files cannot be opened for writing meanwhile, and what is written is told not to be.
void setDiskFull(bool full);

} // namespace VirtualTime
