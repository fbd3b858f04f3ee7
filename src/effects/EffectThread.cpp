#include "effects/EffectThread.h"

#include "support/crash/CrashStack.h"

#include <QCoreApplication>

EffectThread::EffectThread(QObject* worker)
    : m_worker(worker)
{
}

void EffectThread::run()
{
    installCrashStackForThread();
    exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    // Somebody still holds the worker: here nothing would ever delete it any more.
    if (m_worker)
        m_worker->moveToThread(QCoreApplication::instance()->thread());
}
