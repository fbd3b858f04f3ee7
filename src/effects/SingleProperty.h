#pragma once

#include "support/config/hashPropertyKey.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

/// The property protocol of workers and option widgets that have one property.
namespace SingleProperty {

/// What effectProperty() answers: the value, the object of all properties for the empty key, else null.
inline QJsonValue read(const QString& key, const char* name, const QJsonValue& value)
{
    if (hashPropertyKey(key) == hashPropertyKey(name))
        return value;
    return key.isEmpty() ? QJsonValue(QJsonObject{{name, value}}) : QJsonValue(QJsonValue::Null);
}

/// What setEffectProperty() has to apply: the value itself, or the member of the object that comes with the
/// empty key; undefined for nothing.
inline QJsonValue written(const QString& key, const char* name, const QJsonValue& val)
{
    if (hashPropertyKey(key) == hashPropertyKey(name))
        return val;
    return key.isEmpty() ? val.toObject().value(QLatin1String(name)) : QJsonValue(QJsonValue::Undefined);
}

} // namespace SingleProperty
