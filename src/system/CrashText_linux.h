#pragma once

#include <cstddef>
#include <cstdint>

/// A point in time as calendar fields.
struct CrashTime
{
    int year;
    int month;
    int day;
    int hour;
    int minute;
    int second;
    int microsecond;
};

/// The present time; `utcOffsetSeconds` is given because looking up the time zone takes locks.
CrashTime crashTime(long utcOffsetSeconds);

/// Text put together and written inside a signal handler: no allocation, no locks, no library state.
/// What does not fit is cut off.
class CrashText
{
public:
    CrashText& put(const char* text);
    CrashText& putDecimal(int64_t value, int minDigits = 1);
    CrashText& putHex(uint64_t value, int minDigits = 1);

    const char* text() const { return m_buffer; }
    /// Writes the text to `fd` and empties it; false if the descriptor did not take all of it.
    bool flush(int fd);
    void clear();

private:
    void putReversed(const char* digits, int count);

    size_t m_size = 0;
    char m_buffer[8192] = {};
};
