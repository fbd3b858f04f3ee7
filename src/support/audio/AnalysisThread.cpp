#include "support/audio/AnalysisThread.h"

#include "support/audio/AudioCapturer.h"
#include "support/crash/CrashStack.h"

#include <QDebug>
#include <QElapsedTimer>
#include <system_error>

AnalysisThread::~AnalysisThread()
{
    m_stop = true;
    m_wakeUp->release();
    if (m_thread.joinable())
        m_thread.join();
}

void AnalysisThread::add(const QSharedPointer<AudioCapturer>& capturer)
{
    capturer->setWakeUp(m_wakeUp);
    const std::lock_guard lock(m_mutex);
    m_capturers += capturer;
    try {
        if (!m_thread.joinable())
            m_thread = std::thread([this] { run(); });
    } catch (const std::system_error& error) {
        qWarning() << "[AudioCapManager]: No thread analyses the sound until there is more to hear:"
                   << error.what();
    }
}

void AnalysisThread::remove(const QSharedPointer<AudioCapturer>& capturer)
{
    const std::lock_guard lock(m_mutex);
    m_capturers.removeAll(capturer);
}

void AnalysisThread::run()
{
    installCrashStackForThread();
    while (!m_stop) {
        const qint64 sleepMs = analyseAll();
        m_wakeUp->tryAcquire(1, int(sleepMs));
        while (m_wakeUp->tryAcquire()) // one look serves all wake-ups until now
            ;
    }
}

QList<QSharedPointer<AudioCapturer>> AnalysisThread::capturers() const
{
    const std::lock_guard lock(m_mutex);
    return m_capturers;
}

qint64 AnalysisThread::analyseAll()
{
    QElapsedTimer clock; // the steady one
    clock.start();
    qint64 sleepMs = -1;
    for (const QSharedPointer<AudioCapturer>& capturer : capturers()) {
        const qint64 wantedMs = capturer->analyse(clock.msecsSinceReference());
        if (wantedMs >= 0)
            sleepMs = sleepMs < 0 ? wantedMs : qMin(sleepMs, wantedMs);
    }
    return sleepMs;
}
