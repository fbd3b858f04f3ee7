#include "support/config/ControllerStore.h"

QJsonObject& ControllerStore::object(const QString& key)
{
    if (!m_loaded)
        load();
    return m_objects[key];
}

void ControllerStore::load()
{
    m_loaded = true;
    m_others = m_file.load();
    for (auto member = m_others.begin(); member != m_others.end();) {
        if (member.value().isObject()) {
            m_objects[member.key()] = member.value().toObject();
            member = m_others.erase(member);
        } else {
            ++member;
        }
    }
}

QJsonObject ControllerStore::toJson() const
{
    QJsonObject all = m_others;
    for (const auto& [key, object] : m_objects) {
        if (!object.isEmpty())
            all.insert(key, object);
    }
    return all;
}

bool ControllerStore::reset()
{
    m_loaded = true;
    m_others = QJsonObject();
    for (auto& entry : m_objects)
        entry.second = QJsonObject();
    return m_file.remove();
}
