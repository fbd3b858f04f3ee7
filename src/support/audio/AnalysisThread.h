#pragma once

#include <QList>
#include <QSemaphore>
#include <QSharedPointer>
#include <QThread>
#include <atomic>
#include <memory>
#include <mutex>

class AudioCapturer;

/// Analyses the samples of all capturers in use; sleeps while none come. Begins with the first capturer. The
/// operations may be called from any thread.
class AnalysisThread : public QThread
{
    Q_OBJECT

public:
    AnalysisThread();
    ~AnalysisThread() override;

    void add(const QSharedPointer<AudioCapturer>& capturer);
    void remove(const QSharedPointer<AudioCapturer>& capturer);

protected:
    void run() override;

private:
    QList<QSharedPointer<AudioCapturer>> capturers() const;
    /// Returns for how many milliseconds to sleep, -1 until woken.
    qint64 analyseAll();

    const std::shared_ptr<QSemaphore> m_wakeUp = std::make_shared<QSemaphore>();
    std::atomic<bool> m_stop{false};
    mutable std::mutex m_mutex; // guards what follows
    QList<QSharedPointer<AudioCapturer>> m_capturers;
};
