#include "UnixSignals.h"

#include <QSocketNotifier>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

int g_pipe[2] = {-1, -1};

void handle(int number)
{
    const char byte = static_cast<char>(number);
    [[maybe_unused]] const auto written = ::write(g_pipe[1], &byte, 1);
}

} // namespace

UnixSignals::UnixSignals(std::initializer_list<int> numbers, QObject* parent)
    : QObject(parent)
{
    if (::pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    connect(new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this), &QSocketNotifier::activated, this,
            &UnixSignals::readPipe);
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (const int number : numbers)
        ::sigaction(number, &action, nullptr);
}

void UnixSignals::readPipe()
{
    char byte = 0;
    while (::read(g_pipe[0], &byte, 1) == 1)
        emit received(byte);
}
