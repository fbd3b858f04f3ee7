#include "VirtualDisplay.h"

#include <QDebug>
#include <QProcessEnvironment>
#include <QRect>

VirtualDisplay::VirtualDisplay(QSize screenSize, int depth)
    : m_screenSize(screenSize)
    , m_depth(depth)
{
}

bool VirtualDisplay::start()
{
    // The server writes its number to standard output when it listens.
    const QString size = QString::asprintf("%dx%dx%d", m_screenSize.width(), m_screenSize.height(), m_depth);
    QStringList arguments{"-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen", "0", size};
    if (!m_name.isEmpty())
        arguments.prepend(QString::fromLatin1(m_name));
    arguments += m_arguments;
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start("Xvfb", arguments);
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

bool VirtualDisplay::run(const QString& program, const QStringList& arguments, QByteArray* output) const
{
    QProcess process;
    startProgram(process, program, arguments);
    return succeeds(process, output);
}

void VirtualDisplay::startProgram(QProcess& process, const QString& program,
                                  const QStringList& arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", QString::fromLatin1(m_name));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
}

bool VirtualDisplay::setMonitor(const QString& monitor, const QRect& geometry, bool primary) const
{
    // xrandr reads a monitor as width/mm x height/mm + x + y; a star makes it the primary one.
    const int width = geometry.width(), height = geometry.height();
    const QString place =
        QString::asprintf("%d/%dx%d/%d+%d+%d", width, width, height, height, geometry.x(), geometry.y());
    const QString shown = primary ? '*' + monitor : monitor;
    return run("xrandr", {"--setmonitor", shown, place, "none"});
}

bool VirtualDisplay::removeMonitor(const QString& monitor) const
{
    return run("xrandr", {"--delmonitor", monitor});
}
