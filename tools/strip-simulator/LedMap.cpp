#include "LedMap.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

bool LedMap::isFrame() const
{
    return std::all_of(leds.begin(), leds.end(), [this](QPoint led) {
        const int x = std::min(led.x(), canvas.width() - 1 - led.x());
        const int y = std::min(led.y(), canvas.height() - 1 - led.y());
        return x * 6 < canvas.width() || y * 6 < canvas.height();
    });
}

LedMap LedMap::load(const QString& path)
{
    QFile file(path);
    LedMap map;
    if (!file.open(QIODevice::ReadOnly))
        return map;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    map.canvas = {root.value(QLatin1String("key_len")).toInt(), root.value(QLatin1String("key_wid")).toInt()};
    const QJsonArray entries = root.value(QLatin1String("key_array")).toArray();
    map.leds.resize(entries.size());
    for (const auto& entry : entries) {
        const QJsonObject led = entry.toObject();
        const int index = led.value(QLatin1String("id")).toInt() - 1;
        if (index < 0 || index >= map.leds.size())
            return {};
        map.leds[index] = {led.value(QLatin1String("x")).toInt(), led.value(QLatin1String("y")).toInt()};
    }
    return map;
}
