#pragma once

#include <QByteArray>
#include <QSize>

#include <memory>

struct termios;

/// Standard output as a drawing area and standard input as keys. While one exists the terminal is in its
/// second screen, without cursor and line editing; the destructor brings everything back.
class Terminal
{
public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Whether standard output is a terminal.
    static bool isOutput();
    /// Whether standard input is a terminal.
    static bool isInput();
    /// In cells; 80 by 24 where the terminal does not tell.
    static QSize size();
    /// Writes all of it, also to a slow terminal.
    static void write(const QByteArray& bytes);

private:
    std::unique_ptr<termios> m_saved; ///< null when standard input is no terminal
};
