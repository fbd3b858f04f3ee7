#pragma once

#include <QList>
#include <QSemaphore>
#include <QSharedPointer>
#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

class AudioCapturer;

/// Analyses the samples of all capturers in use; sleeps while none come. Begins with the first capturer. The
/// operations may be called from any thread.
class AnalysisThread
{
public:
    AnalysisThread() = default;
    ~AnalysisThread();
    AnalysisThread(const AnalysisThread&) = delete;
    AnalysisThread& operator=(const AnalysisThread&) = delete;

    void add(const QSharedPointer<AudioCapturer>& capturer);
    void remove(const QSharedPointer<AudioCapturer>& capturer);

private:
    void run();
    QList<QSharedPointer<AudioCapturer>> capturers() const;
    /// Returns for how many milliseconds to sleep, -1 until woken.
    qint64 analyseAll();

    const std::shared_ptr<QSemaphore> m_wakeUp = std::make_shared<QSemaphore>();
    std::atomic<bool> m_stop{false};
    mutable std::mutex m_mutex; // guards what follows
    QList<QSharedPointer<AudioCapturer>> m_capturers;
    std::thread m_thread;
};
