#pragma once

#include "ServerProcess.h"

#include <QByteArray>
#include <QSize>
#include <QStringList>

/// An X server of the test's own (Xvfb), on a free display number that the server itself chooses.
class VirtualDisplay : public ServerProcess
{
public:
    explicit VirtualDisplay(QSize screenSize = QSize(1920, 1080), int depth = 24);

    /// Further options for the next start, such as {"-extension", "DAMAGE"}.
    void setArguments(const QStringList& arguments) { m_arguments = arguments; }
    /// Waits until the server listens. Once stopped it comes back under the same number. False, with a
    /// warning that says why, when it does not come up.
    bool start();

    /// Such as ":7"; empty before the first start.
    QByteArray name() const { return m_name; }

    /// Runs an X program there and waits for it; false unless it ends with 0. Its standard output is kept
    /// in `output` where given.
    bool run(const QString& program, const QStringList& arguments, QByteArray* output = nullptr) const;
    /// Starts an X program there that stays; the caller owns it.
    void startProgram(QProcess& process, const QString& program, const QStringList& arguments) const;

    /// Declares a monitor over part of the screen. `primary` also makes it the primary one.
    bool setMonitor(const QString& monitor, const QRect& geometry, bool primary = false) const;
    bool removeMonitor(const QString& monitor) const;

private:
    const QSize m_screenSize;
    const int m_depth;
    QStringList m_arguments;
    QByteArray m_name;
};
