#include "support/ThreadStart.h"

#include <QDebug>

namespace {
thread_local bool s_isChecked = false;
} // namespace

bool startThread(QThread& thread, QThread::Priority priority)
{
    s_isChecked = true;
    thread.start(priority);
    s_isChecked = false;
    if (thread.isRunning() || thread.isFinished())
        return true;
    qWarning().noquote() << "[ThreadStart]: The system has no thread to spare for"
                         << thread.metaObject()->className() << thread.objectName();
    return false;
}

bool isThreadStartChecked()
{
    return s_isChecked;
}
