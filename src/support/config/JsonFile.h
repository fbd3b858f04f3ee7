#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// One JSON object on disk, with a backup beside it (`<name>.bak`). At every instant either the file or its
/// backup is whole: the file is replaced in one step, and the one it replaces becomes the backup.
/// Holds no lock: one thread at a time.
class JsonFile
{
public:
    explicit JsonFile(const QString& path)
        : m_path(path)
    {
    }

    /// The object on disk, or the backup's when the file is damaged or gone; empty when there is neither.
    /// What does not parse is moved aside as `<name>.corrupt-<time>`, never deleted. What the system does not
    /// let be read, for lack of descriptors perhaps, is left alone, and nothing is written in its place.
    QJsonObject load();

    /// Replaces the file, unless it holds this object already; that costs no disk access. False when the
    /// disk refuses: the old file stands. Logs only the first of a row of failures.
    bool write(const QJsonObject& object);

    /// As write(), and makes sure that the file is really there and that the backup is its equal.
    bool writeWithBackup(const QJsonObject& object);

    /// Deletes the file and everything that was ever put beside it. False when something remains.
    bool remove();

private:
    enum class Content { None, Unknown, Object };
    Content read(const QString& path, QJsonObject* object) const;
    bool replace(const QString& path, const QByteArray& bytes, QString* error);
    void keepAsBackup() const;

    const QString m_path;
    QByteArray m_saved;           // the object on disk in our own formatting; empty: none, or a damaged one
    bool m_hasLeftovers = false;  // that could not be removed: even an empty object has to replace them
    bool m_backupIsEqual = false; // known to be so
    bool m_isUnknown = false;     // what stands there was not to be read
    bool m_failing = false;       // the last write failed and was logged
};
