#pragma once

#include "support/config/JsonFile.h"

#include <map>

/// The objects of all devices in one file, read at first use. Every object has an address for good.
class ControllerStore
{
public:
    explicit ControllerStore(const QString& path)
        : m_file(path)
    {
    }

    /// The device's object; empty, and not written while it is, for an unknown device.
    QJsonObject& object(const QString& key);

    /// Both leave an unused store alone. False when the disk refuses.
    bool write() { return !m_loaded || m_file.write(toJson()); }
    bool writeWithBackup() { return !m_loaded || m_file.writeWithBackup(toJson()); }
    /// Empties all objects and deletes the file. False when something remains on the disk.
    bool reset();

private:
    void load();
    QJsonObject toJson() const;

    JsonFile m_file;
    std::map<QString, QJsonObject> m_objects;
    QJsonObject m_others; // members that are no device
    bool m_loaded = false;
};
