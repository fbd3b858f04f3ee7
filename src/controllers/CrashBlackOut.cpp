#include "controllers/CrashBlackOut.h"

#include "controllers/CrashLine.h"

#include <algorithm>
#include <atomic>
#include <mutex>

namespace {

constexpr int kLines = 64;
constexpr int kMaxLeds = 65535;
constexpr std::intptr_t kFree = -1;

struct Line
{
    std::atomic<std::intptr_t> handle{kFree};
    std::atomic<int> leds{0};
};
Line s_lines[kLines];

bool sendBlack(std::intptr_t handle, int leds)
{
    static constexpr std::uint8_t kZeros[512] = {};
    const std::uint8_t header[] = {
        'A', 'd', 'a', 0, static_cast<std::uint8_t>(leds >> 8), static_cast<std::uint8_t>(leds)};
    if (!writeCrashLine(handle, header, sizeof header))
        return false;
    for (int left = 3 * leds; left > 0; left -= static_cast<int>(sizeof kZeros)) {
        if (!writeCrashLine(handle, kZeros, std::min(left, static_cast<int>(sizeof kZeros))))
            return false;
    }
    return true;
}

void blackOut(const Line& line)
{
    const std::intptr_t handle = line.handle;
    const int leds = line.leds;
    if (handle == kFree || leds == 0)
        return;
    // The first one ends a frame that was cut in the middle, the second one is seen whole.
    if (sendBlack(handle, leds))
        sendBlack(handle, leds);
}

} // namespace

void CrashBlackOut::open(std::intptr_t handle)
{
    close();
    for (int slot = 0; slot < kLines; ++slot) {
        std::intptr_t expected = kFree;
        if (s_lines[slot].handle.compare_exchange_strong(expected, handle)) {
            s_lines[slot].leds = 0;
            m_slot = slot;
            return;
        }
    }
}

void CrashBlackOut::setLedCount(int count)
{
    if (m_slot >= 0)
        s_lines[m_slot].leds = std::clamp(count, 0, kMaxLeds);
}

void CrashBlackOut::close()
{
    if (m_slot >= 0)
        s_lines[m_slot].handle = kFree;
    m_slot = -1;
}

void CrashBlackOut::send() const
{
    static std::mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    if (m_slot >= 0)
        blackOut(s_lines[m_slot]);
}

void CrashBlackOut::run()
{
    for (const Line& line : s_lines)
        blackOut(line);
}
