#include "system/TerminationSignals.h"

#include <QDebug>
#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

int s_pipe[2] = {-1, -1}; // a signal handler reaches nothing but statics

void writeSignalNumber(int number)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe already holds enough requests.
    [[maybe_unused]] const ssize_t written = write(s_pipe[1], &byte, 1);
    errno = savedErrno;
}

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

} // namespace

struct TerminationSignals::Private
{
    std::unique_ptr<QSocketNotifier> notifier;
};

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    // Writing to a connection that has gone is an error to handle, not a reason to die.
    setHandler(SIGPIPE, SIG_IGN);
    if (pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning() << "[TerminationSignals]: no pipe, a termination signal ends the program at once";
        return;
    }
    d->notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
    connect(d->notifier.get(), &QSocketNotifier::activated, this, [this] {
        unsigned char number = 0;
        while (read(s_pipe[0], &number, 1) == 1) {
            qInfo() << "[TerminationSignals]: signal" << int(number) << "asks the program to end";
            emit terminationRequested();
        }
    });
    for (const int number : kSignals)
        setHandler(number, writeSignalNumber);
}

TerminationSignals::~TerminationSignals()
{
    // The process is about to end by itself, with its own exit code.
    for (const int number : kSignals)
        setHandler(number, SIG_IGN);
    for (int& end : s_pipe) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}
