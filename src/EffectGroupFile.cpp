#include "EffectGroupFile.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr qint64 kMaxFileBytes = 4 * 1024 * 1024; // a real one has a few thousand

void logParseFailure(const QString& reason)
{
    qCritical().noquote().nospace() << "Failed to parse group information file in "
                                    << "EffectsManager::loadGroupInfoFromJson"
                                    << ", reason: " << reason;
}

} // namespace

QJsonArray readEffectGroupFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qCritical().noquote() << "Failed to open file" << path;
        return {};
    }
    const QByteArray text = file.read(kMaxFileBytes + 1);
    if (text.size() > kMaxFileBytes) {
        logParseFailure(QStringLiteral("the file is too large: ") + path);
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        logParseFailure(error.errorString());
        return {};
    }
    QJsonArray groups = document.object().value(QLatin1String("groups")).toArray();
    if (groups.isEmpty())
        qCritical().noquote() << "Not found groups in file:" << path;
    return groups;
}
