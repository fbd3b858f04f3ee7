#pragma once

#include "support/config/JsonFile.h"

#include <QJsonValue>

/// A flat object and its file, read at first use: by then the log system stands and hears of damage.
class FlatStore
{
public:
    explicit FlatStore(const QString& path)
        : m_file(path)
    {
    }

    /// The values themselves; the reference stays valid.
    QJsonObject& values();
    /// True when that changed something.
    bool set(const QString& key, const QJsonValue& value);

    /// Both leave an unused store alone. False when the disk refuses.
    bool write() { return !m_loaded || m_file.write(m_values); }
    bool writeWithBackup() { return !m_loaded || m_file.writeWithBackup(m_values); }
    /// Forgets the values and deletes the file. False when something remains on the disk.
    bool reset();

private:
    JsonFile m_file;
    QJsonObject m_values;
    bool m_loaded = false;
};
