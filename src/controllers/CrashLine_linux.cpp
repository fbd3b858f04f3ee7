#include "controllers/CrashLine.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

bool writeCrashLine(std::intptr_t handle, const std::uint8_t* bytes, int size)
{
    constexpr int kPatienceMs = 100;
    const int fd = static_cast<int>(handle);
    while (size > 0) {
        const ssize_t written = write(fd, bytes, static_cast<size_t>(size));
        if (written > 0) {
            bytes += written;
            size -= static_cast<int>(written);
            continue;
        }
        if (written < 0 && errno == EINTR)
            continue;
        pollfd room{fd, POLLOUT, 0};
        if (written < 0 && errno != EAGAIN)
            return false;
        if (poll(&room, 1, kPatienceMs) <= 0 || (room.revents & POLLOUT) == 0)
            return false;
    }
    return true;
}
