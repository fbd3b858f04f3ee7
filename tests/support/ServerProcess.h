#pragma once

#include "MortalProcess.h"

#include <QDebug>

/// A server of the test's own. Ends with this object.
class ServerProcess
{
public:
    ServerProcess() = default;
    ~ServerProcess() { stop(); }
    Q_DISABLE_COPY(ServerProcess)

    /// Kills the server, as a crash would. Does nothing when it is not running.
    void stop()
    {
        if (m_server.state() == QProcess::NotRunning)
            return;
        m_server.kill();
        m_server.waitForFinished();
    }
    /// Makes the server answer nothing until it is thawed, as an overloaded machine or a lost line would.
    void freeze() { kill(pid_t(m_server.processId()), SIGSTOP); }
    void thaw() { kill(pid_t(m_server.processId()), SIGCONT); }

protected:
    static constexpr int kStartMs = 20000;

    /// Waits for a started program; false, with a warning, unless it ends with 0. Its standard output is kept
    /// in `output` where given.
    static bool succeeds(QProcess& program, QByteArray* output)
    {
        constexpr int kProgramMs = 20000;
        if (!program.waitForFinished(kProgramMs) || program.exitStatus() != QProcess::NormalExit ||
            program.exitCode() != 0) {
            qWarning() << program.program() << program.arguments() << "failed:" << program.errorString()
                       << program.readAllStandardError();
            return false;
        }
        if (output)
            *output = program.readAllStandardOutput();
        return true;
    }

    MortalProcess m_server;
};
