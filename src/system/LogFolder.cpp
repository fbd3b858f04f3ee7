#include "system/LogFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace {

constexpr qint64 kLookAgainBytes = 1024 * 1024;

/// Deletes the oldest matching files until `kept` remain. The files of this run start with `ownPrefix`
/// and are not counted.
void keepNewest(const QDir& dir, const QString& pattern, int kept, const QString& ownPrefix)
{
    QStringList oldestFirst = dir.entryList({pattern}, QDir::Files, QDir::Time | QDir::Reversed);
    const auto isOwn = [&](const QString& name) { return name.startsWith(ownPrefix); };
    oldestFirst.erase(std::remove_if(oldestFirst.begin(), oldestFirst.end(), isOwn), oldestFirst.end());
    for (int i = 0; i < oldestFirst.size() - kept; ++i) {
        QFile::remove(dir.filePath(oldestFirst[i]));
        QFile::remove(dir.filePath(oldestFirst[i] + QLatin1String(".1"))); // a rolling file's backup
    }
}

} // namespace

LogFolder::LogFolder(const QString& path, const QString& ownPrefix)
    : m_path(path)
    , m_ownPrefix(ownPrefix)
{
}

void LogFolder::deleteOldFiles() const
{
    QDir dir(m_path);
    keepNewest(dir, QStringLiteral("*.log"), 40, m_ownPrefix);
    // A folder that is missing leaves the walk where it is; the next cleaning then works on that folder.
    dir.cd(QStringLiteral("devices"));
    keepNewest(dir, QStringLiteral("*.log"), 20, m_ownPrefix);
    dir.cd(QStringLiteral("../usrOptions"));
    keepNewest(dir, QStringLiteral("*.log"), 20, m_ownPrefix);
    dir.cd(QStringLiteral("../../dumps"));
    keepNewest(dir, QStringLiteral("*.dmp"), 20, m_ownPrefix);
    keepBelowMaximum();
}

void LogFolder::grew(qint64 bytes)
{
    if ((m_unseenBytes += bytes) < kLookAgainBytes)
        return;
    m_unseenBytes = 0;
    keepBelowMaximum();
}

void LogFolder::keepBelowMaximum() const
{
    QFileInfoList files;
    for (const QString& folder : {m_path, m_path + QLatin1String("/devices")})
        files +=
            QDir(folder).entryInfoList({QStringLiteral("*.log"), QStringLiteral("*.log.1")}, QDir::Files);
    const auto isOlder = [](const QFileInfo& a, const QFileInfo& b) {
        return a.lastModified() < b.lastModified();
    };
    std::sort(files.begin(), files.end(), isOlder);
    qint64 excess = kLookAgainBytes - kMaxLogBytes;
    for (const QFileInfo& file : qAsConst(files))
        excess += file.size();
    for (const QFileInfo& file : qAsConst(files)) {
        if (excess <= 0)
            return;
        if (!file.fileName().startsWith(m_ownPrefix) && QFile::remove(file.filePath()))
            excess -= file.size();
    }
}
