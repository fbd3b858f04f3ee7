#include "system/RunningProgram.h"

#include "controllers/PortHolder.h"
#include "system/RuntimeFile.h"
#include "system/WakeUp.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLockFile>
#include <QThread>

namespace {

constexpr int kPatienceMs = 10000;
constexpr int kRetryMs = 20;

} // namespace

qint64 runningProgram()
{
    const QString path = runtimeFile(QStringLiteral("LumivarSingleApp.lock"));
    qint64 pid = 0;
    QString host;
    QString name;
    const bool isHeld = !path.isEmpty() && QLockFile(path).getLockInfo(&pid, &host, &name);
    // The number of one that was killed may be another program's by now.
    return isHeld && processName(pid) == processName(QCoreApplication::applicationPid()) ? pid : 0;
}

bool quitRunningProgram()
{
    const qint64 pid = runningProgram();
    const QDeadlineTimer patience(kPatienceMs);
    bool isTaken = false;
    while (pid != 0 && runningProgram() == pid) {
        if (patience.hasExpired())
            return false;
        isTaken = isTaken || sendWakeUp(WakeUp::Quit); // it may not listen yet
        QThread::msleep(kRetryMs);
    }
    return true;
}
