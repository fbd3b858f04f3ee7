// The file that tells AudioPeakValues where its bars lie. The prefix of the log lines is older than the
// class.
#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"
#include "support/config/DataFile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QStandardPaths>
#include <json/json.h>
#include <memory>

namespace {

constexpr int kMaxLeds = 0xFFFF; // what the devices' frames can state

/// The first candidate that exists, else the last one.
QString configFile(const QString& model, const QString& id)
{
    const QString name = id.isEmpty() ? model : QString(id).replace(u':', u'_');
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    const QString shipped = QCoreApplication::applicationDirPath();
    QString path;
    for (const auto& [folder, file] :
         {std::pair(own, name), std::pair(shipped, name), std::pair(shipped, model)}) {
        path = QStringLiteral("%1/controler_config/%2.json").arg(folder, file);
        if (QFile::exists(path))
            return path;
        qInfo().noquote().nospace() << "QIndependentObject::readJson json file fullname " << path
                                    << " File not exists!";
    }
    return path;
}

/// False, and `out` as it was, for what is no whole number. The library would throw.
bool readInt(const Json::Value& object, const char* key, int& out)
{
    if (!object.isObject() || !object[key].isInt())
        return false;
    out = object[key].asInt();
    return true;
}

void readSetting(const Json::Value& root, const char* key, int& out)
{
    if (root.isMember(key) && !readInt(root, key, out))
        qWarning().noquote() << "QIndependentObject::readJson" << key << "is not a whole number";
}

/// The elements of a list that may be missing, or be something else.
const Json::Value& list(const Json::Value& root, const char* key)
{
    const Json::Value& value = root[key];
    if (value.isNull() || value.isArray())
        return value;
    qWarning().noquote() << "QIndependentObject::readJson" << key << "is not a list";
    return Json::Value::nullSingleton();
}

void reportIllegal(const char* key, int count)
{
    if (count > 0)
        qWarning().noquote() << "QIndependentObject::readJson" << key << "has illegal elements:" << count;
}

/// Null when the text is no object.
Json::Value parsed(const QByteArray& text)
{
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    Json::Value root;
    std::string error;
    try {
        if (!reader->parse(text.constData(), text.constData() + text.size(), &root, &error) ||
            !root.isObject()) {
            root = Json::Value();
            if (error.empty())
                error = "not an object";
        }
    } catch (const std::exception& e) { // nested too deep
        root = Json::Value();
        error = e.what();
    }
    if (!error.empty())
        qWarning().noquote() << "***QIndependentObject::readJson"
                             << QString::fromStdString(error).simplified();
    return root;
}

} // namespace

void AudioPeakValues::readJson(const QString& model, const QString& id)
{
    qDebug().noquote() << "QIndependentObject::readJson" << model << id;
    const QString path = configFile(model, id);
    QString reason;
    const std::optional<QByteArray> bytes = readDataFile(path, &reason);
    if (!bytes) {
        qWarning().noquote().nospace()
            << "QIndependentObject::readJson readJson error:" << path << ' ' << reason;
        return;
    }
    const Json::Value root = parsed(*bytes);
    if (root.isNull())
        return;
    readSetting(root, "screenWidth", m_widthSize);
    readSetting(root, "screenHeight", m_heightSize);
    int keyNum = m_keyNum;
    readSetting(root, "key_num", keyNum);
    if (keyNum >= 0 && keyNum <= kMaxLeds)
        m_keyNum = m_ledCount = keyNum;
    else
        qWarning() << "QIndependentObject::readJson key_num is illegal:" << keyNum;
    readSetting(root, "key_space", m_keySpace);
    readKeyArray(root);
    readKeyMusic(root);
    qInfo().noquote().nospace() << "QIndependentObject::readJson " << path << " m_width_size:" << m_widthSize
                                << " m_height_size:" << m_heightSize;
}

void AudioPeakValues::readKeyArray(const Json::Value& root) const
{
    int illegal = 0;
    for (const Json::Value& key : list(root, "key_array")) {
        int id = 0;
        int x = 0;
        int y = 0;
        if (!readInt(key, "id", id) || !readInt(key, "x", x) || !readInt(key, "y", y)) {
            ++illegal;
            continue;
        }
        // 0 leaves the count to the device: no id is beyond it.
        if (x >= m_widthSize || y >= m_heightSize || (m_keyNum > 0 && id > m_keyNum))
            qDebug().noquote() << QStringLiteral(
                                      ":QIndependentObject::readJson %1 < %2 && %3 < %4 && %5 <= %6")
                                      .arg(x)
                                      .arg(m_widthSize)
                                      .arg(y)
                                      .arg(m_heightSize)
                                      .arg(id)
                                      .arg(m_keyNum);
        else if (x < 0 || y < 0)
            qDebug().noquote() << QStringLiteral(
                                      ":QIndependentObject::readJson x >= 0&&y >= 0: x = %1 ;y=%2; ")
                                      .arg(x)
                                      .arg(y);
    }
    reportIllegal("key_array", illegal);
}

void AudioPeakValues::readKeyMusic(const Json::Value& root)
{
    int illegal = 0;
    for (const Json::Value& element : list(root, "key_music")) {
        PeakSegment segment;
        if (readInt(element, "id", segment.id) && readInt(element, "start", segment.start) &&
            readInt(element, "stop", segment.stop) && readInt(element, "direction", segment.direction))
            m_musicSegments.append(segment);
        else
            ++illegal;
    }
    reportIllegal("key_music", illegal);
}
