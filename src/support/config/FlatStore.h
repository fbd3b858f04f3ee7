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
    virtual ~FlatStore() = default;

    /// The values themselves; the reference stays valid.
    QJsonObject& values();
    /// True when that changed something.
    bool set(const QString& key, const QJsonValue& value);
    /// Something was written through a reference.
    void touch() { m_isDirty = true; }

    /// Writes what has changed; with `all` whatever may have, and the backup as well. False when the disk
    /// refuses: then it is still to be written.
    bool write(bool all);
    /// Forgets the values and deletes the file.
    virtual void reset();

protected:
    /// Called before values() is written.
    virtual void collect() {}

private:
    JsonFile m_file;
    QJsonObject m_values;
    bool m_isLoaded = false; // else there is nothing to write
    bool m_isDirty = false;
};
