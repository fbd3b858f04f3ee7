#include "ServerProcess.h"

#include <QDeadlineTimer>
#include <QThread>

#include <csignal>

namespace {
constexpr int kLookMs = 5;
constexpr int kProgramMs = 20000;
} // namespace

ServerProcess::~ServerProcess()
{
    stop();
}

void ServerProcess::stop()
{
    if (!isRunning())
        return;
    m_server.kill();
    m_server.waitForFinished();
}

void ServerProcess::freeze()
{
    ::kill(pid_t(m_server.processId()), SIGSTOP);
}

void ServerProcess::thaw()
{
    ::kill(pid_t(m_server.processId()), SIGCONT);
}

bool ServerProcess::comesUp(const std::function<bool()>& isUp)
{
    for (QDeadlineTimer patience(kStartMs); isRunning() && !patience.hasExpired(); QThread::msleep(kLookMs)) {
        if (isUp())
            return true;
        m_server.waitForFinished(0);
    }
    qWarning() << m_server.program() << "does not start:" << m_server.errorString()
               << m_server.readAllStandardError() << m_server.readAllStandardOutput();
    stop();
    return false;
}

bool ServerProcess::succeeds(QProcess& program, QByteArray* output)
{
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
