#include "effects/EffectGroupFile.h"

#include "support/config/DataFile.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

void logParseFailure(const QString& reason)
{
    qCritical().noquote().nospace() << "Failed to parse group information file in "
                                    << "EffectsManager::loadGroupInfoFromJson"
                                    << ", reason: " << reason;
}

} // namespace

QJsonArray readEffectGroupFile(const QString& path)
{
    QString reason;
    const std::optional<QByteArray> text = readDataFile(path, &reason);
    if (!text) {
        qCritical().noquote() << "Failed to open file" << path << reason;
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*text, &error);
    if (error.error != QJsonParseError::NoError) {
        logParseFailure(error.errorString());
        return {};
    }
    QJsonArray groups = document.object().value(QLatin1String("groups")).toArray();
    if (groups.isEmpty())
        qCritical().noquote() << "Not found groups in file:" << path;
    return groups;
}
