#pragma once

#include <cstdint>

/// The last word to the strips when the process crashes: a table of open lines that a crash handler can use
/// without allocating or locking. An entry is used by one thread at a time.
class CrashBlackOut
{
public:
    CrashBlackOut() = default;
    ~CrashBlackOut() { close(); }
    CrashBlackOut(const CrashBlackOut&) = delete;
    CrashBlackOut& operator=(const CrashBlackOut&) = delete;

    /// Enters an open line by the system's handle. Beyond the table's size a line is left out.
    void open(std::intptr_t handle);
    /// How many LEDs a black frame has to reach; none until this is said.
    void setLedCount(int count);
    /// To be called before the handle is closed, so that nobody writes to what has taken its place.
    void close();

    /// Sends black frames on this line past everything else, while it still takes any. No crash handler's.
    void send() const;
    /// Sends black frames on all lines, from a crash handler. A line that takes nothing is given up after a
    /// fraction of a second.
    static void run();

private:
    int m_slot = -1;
};
