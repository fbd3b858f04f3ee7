#include "controllers/ControllerDefaults.h"

#include "support/config/DataFile.h"
#include "support/config/StoredNumber.h"

#include <QDebug>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QMutexLocker>

namespace {

constexpr int kFamilySize = 4; ///< models that share these characters share pictures

QJsonObject readModel(const QString& path, const QString& model)
{
    QString reason;
    const std::optional<QByteArray> bytes = readDataFile(path, &reason);
    if (!bytes)
        qCritical().noquote().nospace()
            << "[ControllerEnumerator]: Failed to open \"" << path << "\", errStr:" << reason;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(bytes.value_or(QByteArray()), &error);
    if (error.error != QJsonParseError::NoError)
        qCritical().noquote().nospace()
            << "[ControllerEnumerator]: Failed to parse json document from LVController.json, errStr:"
            << error.errorString();
    return document.object().value(model).toObject();
}

/// Null where there is none. Devices of a model share their pictures, which are most of what a device costs
/// in memory; of each model that was seen they are kept.
QImage pictureAt(const QString& path)
{
    static QMutex mutex;
    static QHash<QString, QImage> kept;
    const QMutexLocker lock(&mutex);
    const QString file = QFileInfo(path).absoluteFilePath();
    if (kept.contains(file))
        return kept.value(file);
    QImage picture(path);
    if (!picture.isNull())
        kept.insert(file, picture);
    return picture;
}

QImage loadPicture(const QJsonObject& defaults, const char* kind, const QString& model)
{
    const QString path = defaults.value(QLatin1String(kind)).toString();
    if (path.isEmpty())
        qWarning().noquote() << "The filename is empty of the" << kind << "of the controller" << model;
    QImage picture = path.isEmpty() ? QImage() : pictureAt(path);
    if (picture.isNull())
        qWarning().noquote().nospace()
            << "Failed to load " << kind << " of the controller " << model << ", image path:" << path;
    return picture;
}

} // namespace

bool ControllerDefaults::isKnown(const QString& model, const QString& path)
{
    return !readModel(path, model).isEmpty();
}

bool ControllerDefaults::apply(ControlOptions& options, const QString& path)
{
    const QJsonObject defaults = readModel(path, options.model);
    const auto number = [&](const auto& setting) {
        return storedNumber(defaults.value(QLatin1String(setting.key)), setting, options.model)
            .value_or(setting.fallback);
    };
    options.brightness = static_cast<float>(number(ConfigKeys::kBrightness));
    options.nbLeds = static_cast<std::uint32_t>(number(ConfigKeys::kNbLeds));
    options.ledPerUnit = defaults.value(QLatin1String("ledPerUnit")).toInt(1);
    options.adjustableLength = defaults.value(QLatin1String("adjustableLength")).toBool(false);
    options.unavailable_modes = defaults.value(QLatin1String("unavailable_modes")).toArray();

    options.icon = loadPicture(defaults, "icon", options.model);
    options.image = loadPicture(defaults, "image", options.model);
    const bool isKnown = !defaults.isEmpty();
    if (options.model.size() < kFamilySize)
        return isKnown;
    const QString family = options.model.left(kFamilySize);
    if (options.icon.isNull())
        options.icon = pictureAt(QStringLiteral("images/productIcons/%1.jpg").arg(family));
    if (options.image.isNull())
        options.image = pictureAt(QStringLiteral("images/products/%1.jpg").arg(family));
    return isKnown;
}
