#include "controllers/CrashLine.h"

#include <windows.h>

bool writeCrashLine(std::intptr_t handle, const std::uint8_t* bytes, int size)
{
    constexpr DWORD kPatienceMs = 250; // a frame and a half of a long strip is on its way before it
    const auto line = reinterpret_cast<HANDLE>(handle);
    OVERLAPPED overlapped = {};
    overlapped.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    bool done = WriteFile(line, bytes, static_cast<DWORD>(size), nullptr, &overlapped) != 0;
    if (!done && GetLastError() == ERROR_IO_PENDING) {
        done = WaitForSingleObject(overlapped.hEvent, kPatienceMs) == WAIT_OBJECT_0;
        if (!done) {
            // The system must not write into a stack frame that is gone.
            CancelIo(line);
            DWORD ignored = 0;
            GetOverlappedResult(line, &overlapped, &ignored, TRUE);
        }
    }
    CloseHandle(overlapped.hEvent);
    return done;
}
