#pragma once

#include "support/config/JsonFile.h"

#include <QJsonValue>
#include <map>
#include <mutex>

/// The settings of all effects: one file an effect, holding controller id, then key, then value. A file is
/// read at the first use of its effect. Values may be used from any thread; what touches the disk is for the
/// owner's thread, and no reader waits for a write.
class EffectStore
{
public:
    explicit EffectStore(const QString& folder)
        : m_folder(folder)
    {
    }

    /// Undefined when absent; an empty key stands for the controller's whole object.
    QJsonValue value(const QString& effectId, const QString& controllerId, const QString& key);
    /// Memory only. An empty key replaces the controller's whole object by `value`, which must be one.
    void setValue(const QString& effectId, const QString& controllerId, const QString& key,
                  const QJsonValue& value);
    /// Marks the effect's changes for write(); true when there are some that were not marked before.
    bool markPending(const QString& effectId);

    /// Writes the marked effects; with `all` those that are not as well, and their backups. False when one
    /// could not be written; it stays marked.
    bool write(bool all);
    /// Forgets everything and deletes the files.
    void reset();

    /// A plain file name for any effect id; different ids (case counts) give different names.
    static QString fileName(const QString& effectId);

private:
    struct Effect
    {
        explicit Effect(const QString& path)
            : file(path)
            , controllers(file.load())
        {
        }

        JsonFile file; // owner's thread once it is loaded
        QJsonObject controllers;
        bool changed = false; // in memory, not yet on disk
        bool pending = false; // to be written
    };

    Effect& effect(const QString& effectId); // m_mutex is held

    const QString m_folder;
    std::mutex m_mutex;
    std::map<QString, Effect> m_effects; // never shrinks: addresses stay valid without the mutex
};
