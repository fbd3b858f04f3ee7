#include "Terminal.h"

#include <cerrno>

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

Terminal::Terminal()
{
    if (isInput()) {
        m_saved = std::make_unique<termios>();
        ::tcgetattr(STDIN_FILENO, m_saved.get());
        termios keys = *m_saved;
        keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO); // Ctrl-C stays a signal
        ::tcsetattr(STDIN_FILENO, TCSANOW, &keys);
    }
    write("\x1b[?1049h\x1b[?25l\x1b[2J");
}

Terminal::~Terminal()
{
    write("\x1b[0m\x1b[?25h\x1b[?1049l");
    if (m_saved)
        ::tcsetattr(STDIN_FILENO, TCSANOW, m_saved.get());
}

bool Terminal::isOutput()
{
    return ::isatty(STDOUT_FILENO) == 1;
}

bool Terminal::isInput()
{
    return ::isatty(STDIN_FILENO) == 1;
}

QSize Terminal::size()
{
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0)
        return {80, 24};
    return {size.ws_col, size.ws_row};
}

void Terminal::write(const QByteArray& bytes)
{
    const char* data = bytes.constData();
    auto left = static_cast<size_t>(bytes.size());
    while (left > 0) {
        const auto written = ::write(STDOUT_FILENO, data, left);
        if (written > 0) {
            data += written;
            left -= static_cast<size_t>(written);
        } else if (errno == EAGAIN) {
            pollfd fd{STDOUT_FILENO, POLLOUT, 0};
            ::poll(&fd, 1, 100);
        } else if (errno != EINTR) {
            return;
        }
    }
}
