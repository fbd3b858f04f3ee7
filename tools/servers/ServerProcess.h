#pragma once

#include "MortalProcess.h"

#include <QDebug>

#include <functional>

/// A server of one's own. Ends with this object.
class ServerProcess
{
public:
    ServerProcess() = default;
    ~ServerProcess();
    Q_DISABLE_COPY(ServerProcess)

    /// Kills the server, as a crash would. Does nothing when it is not running.
    void stop();
    bool isRunning() const { return m_server.state() != QProcess::NotRunning; }
    /// Makes the server answer nothing until it is thawed, as an overloaded machine or a lost line would.
    void freeze();
    void thaw();

protected:
    static constexpr int kStartMs = 20000;

    /// Waits until the server that was started is up; false, with a warning, when it ends before or takes
    /// too long.
    bool comesUp(const std::function<bool()>& isUp);
    /// Waits for a started program; false, with a warning, unless it ends with 0. Its standard output is kept
    /// in `output` where given.
    static bool succeeds(QProcess& program, QByteArray* output);

    MortalProcess m_server;
};
