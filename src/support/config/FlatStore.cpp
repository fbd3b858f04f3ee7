#include "support/config/FlatStore.h"

QJsonObject& FlatStore::values()
{
    if (!m_loaded) {
        m_loaded = true;
        m_values = m_file.load();
    }
    return m_values;
}

bool FlatStore::set(const QString& key, const QJsonValue& value)
{
    const QJsonValue old = values().value(key);
    if (old == value)
        return false;
    m_values.insert(key, value);
    return true;
}

bool FlatStore::reset()
{
    m_loaded = true;
    m_values = QJsonObject();
    return m_file.remove();
}
