#include "system/CrashText_linux.h"

#include <cerrno>
#include <ctime>
#include <unistd.h>

namespace {

constexpr int64_t kSecondsPerDay = 86400;

} // namespace

CrashTime crashTime(long utcOffsetSeconds)
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t seconds = now.tv_sec + utcOffsetSeconds;
    const auto ofDay = int(seconds % kSecondsPerDay);

    // Days to date with years that begin in March, so that the leap day is the last of its year.
    const int64_t days = seconds / kSecondsPerDay + 719468;
    const int64_t era = days / 146097;
    const auto dayOfEra = int(days % 146097);
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    const int day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const int month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const int year = int(era) * 400 + yearOfEra + (month <= 2 ? 1 : 0);
    return {year, month, day, ofDay / 3600, ofDay / 60 % 60, ofDay % 60, int(now.tv_nsec / 1000)};
}

CrashText& CrashText::put(const char* text)
{
    while (*text != '\0' && m_size + 1 < sizeof m_buffer)
        m_buffer[m_size++] = *text++;
    m_buffer[m_size] = '\0';
    return *this;
}

CrashText& CrashText::putDecimal(int64_t value, int minDigits)
{
    char digits[24];
    int count = 0;
    if (value < 0)
        put("-");
    uint64_t rest = value < 0 ? uint64_t(0) - uint64_t(value) : uint64_t(value);
    do {
        digits[count++] = char('0' + rest % 10);
        rest /= 10;
    } while (rest != 0 || count < minDigits);
    putReversed(digits, count);
    return *this;
}

CrashText& CrashText::putHex(uint64_t value, int minDigits)
{
    char digits[24];
    int count = 0;
    do {
        digits[count++] = "0123456789abcdef"[value % 16];
        value /= 16;
    } while (value != 0 || count < minDigits);
    putReversed(digits, count);
    return *this;
}

void CrashText::putReversed(const char* digits, int count)
{
    while (count > 0 && m_size + 1 < sizeof m_buffer)
        m_buffer[m_size++] = digits[--count];
    m_buffer[m_size] = '\0';
}

bool CrashText::flush(int fd)
{
    const char* rest = m_buffer;
    const char* end = m_buffer + m_size;
    while (rest < end) {
        const ssize_t written = write(fd, rest, size_t(end - rest));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            break;
        rest += written;
    }
    const bool isComplete = rest == end;
    clear();
    return isComplete;
}

void CrashText::clear()
{
    m_size = 0;
    m_buffer[0] = '\0';
}
