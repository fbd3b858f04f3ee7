// The catalogue of EffectsManager: groups, effects and where they come from.
#include "effects/EffectGroupFile.h"
#include "effects/EffectsManager.h"
#include "effects/IEffectFactory.h"
#include "support/plugins/GuardedCall.h"
#include "support/plugins/PluginFiles.h"

#include <QDebug>
#include <QDir>
#include <QJsonObject>
#include <QPluginLoader>
#include <limits>

namespace {

constexpr char kEffectsFolder[] = "effects";

} // namespace

void EffectsManager::loadGroupsInfo()
{
    QDir dir;
    if (!dir.cd(QLatin1String(kEffectsFolder))) {
        qCritical() << "Not found path ./effects, cannot load group informations";
        return;
    }
    dir.makeAbsolute();
    const QFileInfoList files = dir.entryInfoList({QStringLiteral("*.json")});
    for (const QFileInfo& file : files)
        loadGroupInfoFromJson(file.absoluteFilePath());
    qDebug() << m_groups.size() << "group informations were successfully loaded.";
}

bool EffectsManager::loadGroupInfoFromJson(const QString& path)
{
    const QJsonArray records = readEffectGroupFile(path);
    for (const QJsonValue& record : records)
        addGroup(record.toObject());
    return !records.isEmpty();
}

void EffectsManager::addGroup(const QJsonObject& record)
{
    EffectGroupInfo group;
    group.id = record.value(QLatin1String("id")).toString();
    if (group.id.isEmpty()) {
        qWarning() << "Incorrect group information format";
        return;
    }
    if (m_groups.contains(group.id)) {
        qWarning().noquote() << "Skip existing group information" << group.id;
        return;
    }
    group.name = tr(record.value(QLatin1String("name")).toString(group.id).toUtf8().constData());
    group.desc = record.value(QLatin1String("desc")).toString(group.name);
    const QString icon = record.value(QLatin1String("icon")).toString();
    if (!icon.isEmpty())
        group.icon = QImage(icon);
    group.defaultEffect = record.value(QLatin1String("defaultEffect")).toString();
    group.order = record.value(QLatin1String("order")).toInt(0);

    const auto holder = m_groupOrder.constFind(group.order);
    if (holder != m_groupOrder.constEnd()) {
        qWarning().noquote().nospace() << "[EffectManager]: Group order conflict: " << group.id
                                       << ". The order already exists: " << *holder;
        group.order = static_cast<int>(qHash(group.id, 0));
    }
    m_groupOrder.insert(group.order, group.id);
    m_groups.insert(group.id, group);
    qInfo().noquote() << "Succeed to load group information" << group.id;
}

void EffectsManager::loadExternalWorkers()
{
    QDir dir;
    if (!dir.cd(QLatin1String(kEffectsFolder))) {
        qCritical() << "Not found path ./effects, Cannot load external effects";
        return;
    }
    dir.makeAbsolute();
    const QFileInfoList files = dir.entryInfoList({pluginFilePattern()});
    for (const QFileInfo& file : files)
        loadExternalWorkers(file.absoluteFilePath());
}

bool EffectsManager::loadExternalWorkers(const QString& path)
{
    auto* loader = new (std::nothrow) QPluginLoader(path, this);
    if (!loader) {
        qCritical().noquote() << "Failed to create QPluginLoader instance by path" << path;
        return false;
    }
    IEffectFactory* factory = nullptr;
    guardedCall("the plug-in's constructor",
                [&] { factory = qobject_cast<IEffectFactory*>(loader->instance()); });
    if (!factory) {
        qCritical().noquote() << "Failed to load IEffectFactory instance by path:" << path
                              << "reason:" << loader->errorString();
        delete loader;
        return false;
    }
    loadWorkersFromFactory(factory, loader);
    return true;
}

void EffectsManager::loadWorkersFromFactory(IEffectFactory* factory, QPluginLoader* loader)
{
    QList<EffectWorkerOptions> effects;
    guardedCall("workerOptionsList", [&] { effects = factory->workerOptionsList(); });
    for (const EffectWorkerOptions& effect : qAsConst(effects)) {
        const QString groupId = EffectWorkerOptions::groupOf(effect.id);
        if (groupId.isEmpty()) {
            qCritical().noquote() << "[EffectsManager]: Skip an effect with an invalid id:" << effect.id;
            continue;
        }
        m_workerOptions.insert(effect.id, effect);
        if (!m_groups.contains(groupId)) {
            qCritical().noquote() << "Not found group for the effect worker:" << effect.id;
            addGroupWithoutFile(groupId);
        }
        m_factories.insert(effect.id, {factory, loader});
        m_groups[groupId].workers.insert(effect.id);
        emit workerReady(effect.id);
    }
}

void EffectsManager::addGroupWithoutFile(const QString& groupId)
{
    EffectGroupInfo group;
    group.id = group.name = group.desc = groupId;
    // It has no place in the sequence, so its order must not be found there.
    group.order = std::numeric_limits<int>::max();
    while (m_groupOrder.contains(group.order))
        --group.order;
    m_groups.insert(groupId, group);
}

QString EffectsManager::nextGroupByOrder(const QString& groupId)
{
    const auto group = m_groups.constFind(groupId);
    auto place = m_groupOrder.constEnd();
    if (group == m_groups.constEnd()) {
        qCritical().noquote() << "[EffectManager]: Not found group info:" << groupId;
    } else {
        place = m_groupOrder.constFind(group->order);
        if (place == m_groupOrder.constEnd())
            qCritical().noquote() << "[EffectManager]: Not found group order:" << groupId;
        else
            ++place;
    }
    if (place != m_groupOrder.constEnd())
        return *place;
    return m_groupOrder.isEmpty() ? QString() : m_groupOrder.first();
}

QString EffectsManager::previousGroupByOrder(const QString& groupId)
{
    const auto group = m_groups.constFind(groupId);
    if (group == m_groups.constEnd()) {
        qCritical().noquote() << "[EffectManager]: Not found group info:" << groupId;
        return m_groups.isEmpty() ? QString() : m_groups.firstKey();
    }
    const auto place = m_groupOrder.constFind(group->order);
    if (place == m_groupOrder.constEnd()) {
        qCritical().noquote() << "[EffectManager]: Not found group order:" << groupId;
        return m_groups.firstKey();
    }
    return place == m_groupOrder.constBegin() ? m_groupOrder.last() : *std::prev(place);
}

QString EffectsManager::defaultEffect(const QString& groupId)
{
    return m_groups.value(groupId).defaultEffect;
}

QStringList EffectsManager::groupIds()
{
    return m_groups.keys();
}

EffectGroupInfo EffectsManager::groupInfo(const QString& groupId)
{
    return m_groups.value(groupId);
}

EffectWorkerOptions EffectsManager::effectOptions(const QString& effectId)
{
    return m_workerOptions.value(effectId);
}
