#include "GuestProgram.h"

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace {
constexpr int kPatienceMs = 5000;
} // namespace

GuestProgram::GuestProgram(QObject* parent)
    : QProcess(parent)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &QProcess::kill);
    connect(this, QOverload<int, ExitStatus>::of(&QProcess::finished), &m_patience, &QTimer::stop);
}

bool GuestProgram::launch(const QStringList& command, const QString& logFile)
{
    m_logFile = logFile.isEmpty() ? QProcess::nullDevice() : logFile;
    setProcessChannelMode(QProcess::MergedChannels);
    setStandardInputFile(QProcess::nullDevice());
    setStandardOutputFile(m_logFile);
    start(command.first(), command.mid(1));
    return waitForStarted();
}

bool GuestProgram::launchAgain()
{
    setStandardOutputFile(m_logFile, QIODevice::Append);
    start();
    return waitForStarted();
}

void GuestProgram::end()
{
    if (state() == QProcess::NotRunning)
        return;
    terminate();
    m_patience.start(kPatienceMs);
}

void GuestProgram::setupChildProcess()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM); // nothing is left behind when the simulator is killed
}
