#include "support/config/ControllerStore.h"

QJsonObject& ControllerStore::object(const QString& key)
{
    const auto [entry, isNew] = m_objects.try_emplace(key);
    if (isNew)
        entry->second = values().value(key).toObject();
    return entry->second;
}

void ControllerStore::collect()
{
    for (const auto& [key, object] : m_objects) {
        if (!object.isEmpty())
            values().insert(key, object);
        else if (values().value(key).isObject()) // other members are no device's
            values().remove(key);
    }
}

void ControllerStore::reset()
{
    for (auto& entry : m_objects)
        entry.second = QJsonObject();
    FlatStore::reset();
}
