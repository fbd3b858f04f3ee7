#include "controllers/CrashLine.h"

#include <algorithm>
#include <windows.h>

namespace {

/// A write ends when the last byte has left: behind a picture that is under way it takes longer.
DWORD patienceMs(HANDLE line)
{
    constexpr DWORD kPatienceMs = 250; // an adapter holds bytes that its driver no longer counts
    constexpr DWORD kBytesPerMs = 11;  // at 115200 baud
    constexpr DWORD kMaxQueueMs = 1000;
    COMSTAT queues = {};
    DWORD ignored = 0;
    ClearCommError(line, &ignored, &queues);
    return kPatienceMs + std::min(queues.cbOutQue / kBytesPerMs, kMaxQueueMs);
}

} // namespace

bool writeCrashLine(std::intptr_t handle, const std::uint8_t* bytes, int size)
{
    constexpr int kRequests = 128; // twice every line, if all were stuck
    // Not on the stack: a driver that does not even let go of what is cancelled may write to it at any time.
    static OVERLAPPED requests[kRequests];
    static int stuck = 0;
    if (stuck == kRequests)
        return false;
    const auto line = reinterpret_cast<HANDLE>(handle);
    OVERLAPPED& request = requests[stuck];
    request = {};
    request.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const DWORD patience = patienceMs(line);
    bool done = WriteFile(line, bytes, static_cast<DWORD>(size), nullptr, &request) != 0;
    if (!done && GetLastError() == ERROR_IO_PENDING) {
        done = WaitForSingleObject(request.hEvent, patience) == WAIT_OBJECT_0;
        if (!done) {
            CancelIo(line);
            if (WaitForSingleObject(request.hEvent, patience) != WAIT_OBJECT_0) {
                ++stuck;
                return false;
            }
        }
    }
    CloseHandle(request.hEvent);
    return done;
}
