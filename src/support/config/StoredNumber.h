#pragma once

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <optional>

/// The files of the settings are edited by hand, too. A stored value that is no number, or lies outside the
/// bounds, is told of with one log line and does not count; it stays stored as it is. The line has the
/// caller's place, or the log would take those of several numbers for one run. Any thread.
bool isUsableNumber(const QJsonValue& stored, double least, double most, bool whole, const QString& name,
                    const char* file, int line);

/// The stored number or, where none is stored, its default; nothing where the stored value does not count.
/// `owner` is the device or model it belongs to, for the log.
template <typename T>
std::optional<T> storedNumber(const QJsonValue& stored, const ConfigKeys::Number<T>& number,
                              const QString& owner = {}, const char* file = __builtin_FILE(),
                              int line = __builtin_LINE())
{
    if (stored.isUndefined())
        return number.fallback;
    const QString name = QString(QLatin1String(number.key) + QLatin1Char(' ') + owner).trimmed();
    if (!isUsableNumber(stored, number.least, number.most, std::is_integral_v<T>, name, file, line))
        return std::nullopt;
    return static_cast<T>(stored.toDouble());
}

/// A number of the application store, where null is as good as none; its default where the stored value does
/// not count. Main thread.
template <typename T>
T applicationNumber(const ConfigKeys::Number<T>& number, const char* file = __builtin_FILE(),
                    int line = __builtin_LINE())
{
    const QJsonValue stored = ConfigurationManager::instance()->appConfig(QLatin1String(number.key));
    if (stored.isNull())
        return number.fallback;
    return storedNumber(stored, number, {}, file, line).value_or(number.fallback);
}
