#include "effects/ColorStrapManager.h"

#include "effects/rgb.h"
#include "support/config/ConfigKeys.h"
#include "support/config/DataFile.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <mutex>

namespace {

const QString kName = QStringLiteral("name");
const QString kEndsColor = QStringLiteral("endsColor");
const QString kKeyColors = QStringLiteral("keyColors");
const QString kKey = QStringLiteral("key");
const QString kColor = QStringLiteral("color");

QString effectId()
{
    return QLatin1String(ConfigKeys::kColorStrapsEffect);
}

QString listKey()
{
    return QLatin1String(ConfigKeys::kColorStrapList);
}

/// Invalid for anything but three components from 0 to 255; further elements do not count.
QColor toColor(const QJsonValue& value)
{
    const QJsonArray rgb = value.toArray();
    if (rgb.size() < 3)
        return {};
    return {rgb.at(0).toInt(0), rgb.at(1).toInt(0), rgb.at(2).toInt(0)};
}

bool isGoodKeyColor(const QJsonValue& keyColor)
{
    const double key = keyColor[kKey].toDouble(2.0);
    return key >= 0.0 && key <= 1.0 && toColor(keyColor[kColor]).isValid();
}

bool isGoodStrap(const QJsonValue& strap)
{
    const QJsonArray keyColors = strap[kKeyColors].toArray();
    return toColor(strap[kEndsColor]).isValid() && !keyColors.isEmpty() &&
           std::all_of(keyColors.begin(), keyColors.end(), isGoodKeyColor);
}

QJsonObject toJson(const ColorStrap& strap)
{
    QJsonArray keyColors;
    for (const KeyColor& keyColor : strap.keyColors)
        keyColors.append(QJsonObject{{kKey, keyColor.key}, {kColor, toRgbArray(keyColor.color)}});
    return {{kName, strap.name}, {kEndsColor, toRgbArray(strap.endsColor)}, {kKeyColors, keyColors}};
}

/// Empty, after a log line that says why, when the file yields no list.
QJsonArray readShippedList(const QString& path)
{
    QString reason;
    const std::optional<QByteArray> text = readDataFile(path, &reason);
    if (!text) {
        qCritical().noquote() << "Failed to open" << path << "errStr:" << reason;
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*text, &error);
    if (error.error != QJsonParseError::NoError) {
        qCritical().noquote() << "Failed to parse" << path << error.errorString();
        return {};
    }
    const QJsonObject object = document.object();
    if (object.isEmpty())
        qCritical().noquote() << "ColorStrapManager: The JsonObject is empty." << path;
    return object.value(listKey()).toArray();
}

} // namespace

ColorStrapManager::ColorStrapManager(QObject* parent, ConfigurationManager* config)
    : IColorStrapManager(parent)
    , m_config(config)
{
    init();
}

void ColorStrapManager::init()
{
    if (loadFromUsrData())
        return;
    if (!loadFromAppPath()) {
        m_straps = {toJson({QStringLiteral("( 1 )"), {{0.5, QColor(255, 0, 0)}}, QColor(255, 255, 255)})};
        qDebug() << "Succeeded to loaded" << m_straps.size() << "color strap";
    }
    save();
}

bool ColorStrapManager::loadFromUsrData()
{
    const QJsonArray stored =
        m_config->effectJsonValue(effectId(), QLatin1String(ConfigKeys::kAllControllers), listKey())
            .toArray();
    if (stored.isEmpty())
        qWarning("Failed to load color straps from usr data.");
    // The store keeps what was not taken until the user changes something.
    const int count = adopt(stored);
    if (count > 0)
        qDebug() << "Succeeded load" << count << "color strap from user data.";
    return count > 0;
}

bool ColorStrapManager::loadFromAppPath()
{
    const int count = adopt(readShippedList(QLatin1String("effects/") + QLatin1String(kShippedFile)));
    if (count > 0)
        qDebug() << "Succeeded load" << count << "color strap from application data.";
    return count > 0;
}

int ColorStrapManager::adopt(const QJsonArray& array)
{
    QJsonArray good;
    std::copy_if(array.begin(), array.end(), std::back_inserter(good), isGoodStrap);
    if (!good.isEmpty())
        m_straps = good;
    return good.size();
}

QJsonObject ColorStrapManager::strapJsonObj(int i) const
{
    if (holds(i))
        return m_straps.at(i).toObject();
    qCritical() << "Invalied strap index" << i;
    return {};
}

ColorStrap ColorStrapManager::strap(int i)
{
    QJsonObject object;
    {
        const std::shared_lock<std::shared_mutex> lock(m_strapsLock);
        object = strapJsonObj(i);
    }
    if (object.isEmpty()) {
        qCritical() << "Not found color strap" << i;
        return {};
    }
    ColorStrap strap{object.value(kName).toString(), {}, toColor(object.value(kEndsColor))};
    const QJsonArray keyColors = object.value(kKeyColors).toArray();
    for (const QJsonValue& keyColor : keyColors)
        strap.keyColors.append({keyColor[kKey].toDouble(0.5), toColor(keyColor[kColor])});
    return strap;
}

int ColorStrapManager::strapCount()
{
    const std::shared_lock<std::shared_mutex> lock(m_strapsLock);
    return m_straps.size();
}

bool ColorStrapManager::isValidStrapIndex(int i)
{
    const std::shared_lock<std::shared_mutex> lock(m_strapsLock);
    return holds(i);
}

void ColorStrapManager::removeStrap(int i)
{
    {
        const std::lock_guard<std::shared_mutex> lock(m_strapsLock);
        if (!holds(i)) {
            qCritical() << "Invalied strap index" << i;
            return;
        }
        if (m_straps.size() == 1) {
            qWarning("The last ribbon cannot be removed");
            return;
        }
        m_straps.removeAt(i);
    }
    save();
    emit strapRemoved(i);
}

int ColorStrapManager::addStrap(const ColorStrap& s)
{
    const QJsonObject object = toJson(s);
    int index = 0;
    {
        const std::lock_guard<std::shared_mutex> lock(m_strapsLock);
        index = m_straps.size();
        m_straps.append(object);
    }
    save();
    emit strapAdded(index);
    return index;
}

int ColorStrapManager::addDefaultStrap()
{
    const QString name = QStringLiteral("(%1)").arg(strapCount());
    return addStrap({name, {{0.5, QColor(255, 0, 0)}}, QColor(0, 255, 0)});
}

void ColorStrapManager::setStrap(int i, const ColorStrap& s)
{
    const QJsonObject object = toJson(s);
    {
        const std::lock_guard<std::shared_mutex> lock(m_strapsLock);
        if (!holds(i)) {
            qCritical() << "Invalied strap index" << i;
            return;
        }
        m_straps.replace(i, object);
    }
    save();
    emit strapChanged(i);
}

void ColorStrapManager::save()
{
    {
        const std::shared_lock<std::shared_mutex> lock(m_strapsLock);
        m_config->setEffectJsonValue(effectId(), QLatin1String(ConfigKeys::kAllControllers), listKey(),
                                     m_straps);
    }
    m_config->saveEffectJsonObj(effectId());
}
