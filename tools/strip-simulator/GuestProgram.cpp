#include "GuestProgram.h"

#include <QTimer>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace {
constexpr int kPatienceMs = 5000;
} // namespace

GuestProgram::GuestProgram(QObject* parent)
    : QProcess(parent)
{
}

bool GuestProgram::launch(const QStringList& command, const QString& portsFile, const QString& logFile)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LUMIVAR_SERIAL_PORTS"), portsFile);
    setProcessEnvironment(environment);
    setProcessChannelMode(QProcess::MergedChannels);
    setStandardInputFile(QProcess::nullDevice());
    setStandardOutputFile(logFile.isEmpty() ? QProcess::nullDevice() : logFile);
    start(command.first(), command.mid(1));
    return waitForStarted();
}

void GuestProgram::end()
{
    if (state() == QProcess::NotRunning)
        return;
    terminate();
    QTimer::singleShot(kPatienceMs, this, &QProcess::kill);
}

void GuestProgram::setupChildProcess()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM); // nothing is left behind when the simulator is killed
}
