#include "productPictures.h"

#include "ProductScene.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

constexpr int kQuality = 92;
constexpr QSize kIconSize(160, 160);
constexpr QSize kImageSize(480, 360);

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

ProductScene sceneOf(const QString& model, const QJsonObject& map)
{
    const double width = map.value(QLatin1String("key_len")).toInt(120);
    const double height = map.value(QLatin1String("key_wid")).toInt(67);
    QVector<QPointF> leds;
    const QJsonArray array = map.value(QLatin1String("key_array")).toArray();
    for (const QJsonValue& led : array) {
        leds.append({(led[QLatin1String("x")].toInt() + 0.5) / width,
                     (led[QLatin1String("y")].toInt() + 0.5) / height});
    }
    return {model, leds, width / height};
}

} // namespace

bool writeProductPictures(const QString& configFolder, const QString& imageFolder,
                          const QString& fallbackIcon)
{
    const QJsonObject models = readObject(configFolder + QLatin1String("/LVController.json"));
    QSet<QString> general;
    for (auto it = models.begin(); it != models.end(); ++it) {
        const QJsonObject map = readObject(QStringLiteral("%1/%2.json").arg(configFolder, it.key()));
        if (map.isEmpty() || it.key().size() != 6)
            return false;
        const ProductScene scene = sceneOf(it.key(), map);
        const QImage icon = scene.draw(kIconSize);
        const QImage image = scene.draw(kImageSize);
        const auto save = [&](const QString& name) {
            return icon.save(QStringLiteral("%1/productIcons/%2.jpg").arg(imageFolder, name), "jpg",
                             kQuality) &&
                   image.save(QStringLiteral("%1/products/%2.jpg").arg(imageFolder, name), "jpg", kQuality);
        };
        if (!save(it.key()))
            return false;
        const QString prefix = it.key().left(4);
        if (!general.contains(prefix)) {
            general.insert(prefix);
            if (!save(prefix))
                return false;
        }
        if (it.key() == QLatin1String("LV0127") && !icon.save(fallbackIcon, "jpg", kQuality))
            return false;
    }
    return !general.isEmpty();
}
