#include "support/config/FlatStore.h"

QJsonObject& FlatStore::values()
{
    if (!m_isLoaded) {
        m_isLoaded = true;
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
    touch();
    return true;
}

bool FlatStore::write(bool all)
{
    if (!m_isLoaded || !(all || m_isDirty))
        return true;
    collect();
    m_isDirty = !(all ? m_file.writeWithBackup(m_values) : m_file.write(m_values));
    return !m_isDirty;
}

void FlatStore::reset()
{
    m_isLoaded = true;
    m_values = QJsonObject();
    m_isDirty = !m_file.remove();
}
