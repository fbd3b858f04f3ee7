#include "support/config/EffectStore.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QDir>
#include <QRegularExpression>
#include <QUrl>
#include <vector>

QString EffectStore::fileName(const QString& effectId)
{
    // Letters, digits and "-._~" stay as they are, so that the usual ids can be read in the folder.
    QByteArray name = QUrl::toPercentEncoding(effectId);
    static const QRegularExpression reserved(
        QStringLiteral("^(\\.|((con|prn|aux|nul|com\\d|lpt\\d)(\\.|$)))"),
        QRegularExpression::CaseInsensitiveOption);
    if (reserved.match(QString::fromLatin1(name)).hasMatch()) // hidden files, device names
        name = '%' + QByteArray::number(name.at(0), 16) + name.mid(1);
    if (name.isEmpty())
        name = "%";
    constexpr int kLongestName = 200; // of the 255 that file systems take
    if (name.size() > kLongestName) {
        const QByteArray hash = QCryptographicHash::hash(effectId.toUtf8(), QCryptographicHash::Sha1);
        name = name.left(kLongestName / 2) + "%%" + hash.toHex();
    }
    return QString::fromLatin1(name) + QLatin1String(".json");
}

EffectStore::Effect& EffectStore::effect(const QString& effectId)
{
    const auto known = m_effects.find(effectId);
    if (known != m_effects.end())
        return known->second;
    return m_effects.try_emplace(effectId, m_folder + QLatin1Char('/') + fileName(effectId)).first->second;
}

QJsonValue EffectStore::value(const QString& effectId, const QString& controllerId, const QString& key)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QJsonValue object = effect(effectId).controllers.value(controllerId);
    return key.isEmpty() ? object : object.toObject().value(key);
}

void EffectStore::setValue(const QString& effectId, const QString& controllerId, const QString& key,
                           const QJsonValue& value)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Effect& target = effect(effectId);
    const QJsonValue old = target.controllers.value(controllerId);
    QJsonValue updated = value;
    if (!key.isEmpty()) {
        QJsonObject object = old.toObject();
        object.insert(key, value);
        updated = object;
    } else if (!value.isObject()) {
        qWarning() << "[ConfigurationManager]: no object for all values of" << effectId << controllerId;
        return;
    }
    if (updated == old)
        return;
    target.controllers.insert(controllerId, updated);
    target.changed = true;
}

bool EffectStore::markPending(const QString& effectId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Effect& target = effect(effectId);
    if (!target.changed || target.pending)
        return false;
    target.pending = true;
    return true;
}

bool EffectStore::write(bool all)
{
    struct Snapshot
    {
        Effect* effect;
        QJsonObject controllers;
    };
    std::vector<Snapshot> snapshots;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (auto& entry : m_effects) {
            Effect& effect = entry.second;
            if (!all && !effect.pending)
                continue;
            snapshots.push_back({&effect, effect.controllers});
            effect.changed = effect.pending = false;
        }
    }
    bool written = true;
    for (const Snapshot& snapshot : snapshots) {
        JsonFile& file = snapshot.effect->file;
        if (all ? file.writeWithBackup(snapshot.controllers) : file.write(snapshot.controllers))
            continue;
        const std::lock_guard<std::mutex> lock(m_mutex);
        snapshot.effect->changed = snapshot.effect->pending = true;
        written = false;
    }
    return written;
}

void EffectStore::reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    // The folder is this store's alone, so files of effects that nobody has used yet go as well.
    QDir folder(m_folder);
    for (const QString& name : folder.entryList({QStringLiteral("*.json*")}, QDir::Files | QDir::Hidden)) {
        if (!folder.remove(name))
            qWarning().noquote() << "[ConfigurationManager]: cannot remove" << folder.filePath(name);
    }
    for (auto& entry : m_effects) {
        Effect& effect = entry.second;
        effect.controllers = QJsonObject();
        effect.pending = effect.changed = !effect.file.remove();
    }
}
