#pragma once

#include "ServerProcess.h"

#include <QProcessEnvironment>
#include <QRect>

/// An X server of the test's own (Xvfb), on a free display number that the server itself chooses.
class VirtualDisplay : public ServerProcess
{
public:
    explicit VirtualDisplay(QSize screenSize = QSize(1920, 1080), int depth = 24)
        : m_screen(QString::asprintf("%dx%dx%d", screenSize.width(), screenSize.height(), depth))
    {
    }

    /// Further options for the next start, such as {"-extension", "DAMAGE"}.
    void setArguments(const QStringList& arguments) { m_arguments = arguments; }
    /// Waits until the server listens. Once stopped it comes back under the same number. False, with a
    /// warning that says why, when it does not come up.
    bool start()
    {
        // The server writes its number to standard output when it listens.
        QStringList arguments{"-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", m_screen};
        if (!m_name.isEmpty())
            arguments.prepend(QString::fromLatin1(m_name));
        m_server.setStandardErrorFile(QProcess::nullDevice());
        m_server.start("Xvfb", arguments + m_arguments);
        QByteArray number;
        while (!number.endsWith('\n')) {
            if (!m_server.waitForReadyRead(kStartMs)) {
                qWarning() << "Xvfb does not start:" << m_server.errorString();
                stop();
                return false;
            }
            number += m_server.readAllStandardOutput();
        }
        m_name = ':' + number.trimmed();
        return true;
    }

    /// Such as ":7"; empty before the first start.
    QByteArray name() const { return m_name; }

    /// Runs an X program there and waits for it; false unless it ends with 0. Its standard output is kept
    /// in `output` where given.
    bool run(const QString& program, const QStringList& arguments, QByteArray* output = nullptr) const
    {
        QProcess process;
        startProgram(process, program, arguments);
        return succeeds(process, output);
    }
    /// Starts an X program there that stays; the caller owns it.
    void startProgram(QProcess& process, const QString& program, const QStringList& arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", QString::fromLatin1(m_name));
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
    }

    /// Declares a monitor over part of the screen. `primary` also makes it the primary one.
    bool setMonitor(const QString& monitor, const QRect& geometry, bool primary = false) const
    {
        // xrandr reads a monitor as width/mm x height/mm + x + y; a star makes it the primary one.
        const int width = geometry.width(), height = geometry.height();
        const QString place =
            QString::asprintf("%d/%dx%d/%d+%d+%d", width, width, height, height, geometry.x(), geometry.y());
        return run("xrandr", {"--setmonitor", primary ? '*' + monitor : monitor, place, "none"});
    }
    bool removeMonitor(const QString& monitor) const { return run("xrandr", {"--delmonitor", monitor}); }

private:
    const QString m_screen;
    QStringList m_arguments;
    QByteArray m_name;
};
