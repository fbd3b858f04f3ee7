#pragma once

#include <QString>
#include <atomic>

/// Main log, device log and loop log of this run and of earlier ones together keep below this.
constexpr qint64 kMaxLogBytes = 50 * 1000 * 1000;

/// What may stay in the folder of the log files: so many of earlier runs, and not more than kMaxLogBytes in
/// all, also while this run writes. The files of this run have bounds of their own, which leave room for it.
class LogFolder
{
public:
    /// `ownPrefix` begins the names of this run's files, which are never deleted here.
    LogFolder(const QString& path, const QString& ownPrefix);

    /// Deletes the oldest logs and dumps of earlier runs until their numbers and sizes are right.
    void deleteOldFiles() const;
    /// To be told of what is written, by any thread; from time to time that leads to another look at the
    /// sizes.
    void grew(qint64 bytes);

private:
    void keepBelowMaximum() const;

    const QString m_path;
    const QString m_ownPrefix;
    std::atomic<qint64> m_unseenBytes{0};
};
