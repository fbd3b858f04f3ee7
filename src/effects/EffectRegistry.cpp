#include "effects/EffectRegistry.h"

#include "effects/ColorStrapManager.h"
#include "effects/EffectGroupFile.h"
#include "effects/IEffectFactory.h"
#include "effects/InternalEffectFactory.h"
#include "support/plugins/GuardedCall.h"
#include "support/plugins/PluginFiles.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QJsonObject>
#include <QPluginLoader>
#include <algorithm>
#include <limits>
#include <optional>

namespace {

/// What is in the folder beside the program; `loss` says what does not happen where there is none.
std::optional<QFileInfoList> shippedFiles(const QString& pattern, const char* loss)
{
    QDir dir;
    if (!dir.cd(QStringLiteral("effects"))) {
        qCritical("Not found path ./effects, %s", loss);
        return std::nullopt;
    }
    return dir.entryInfoList({pattern});
}

} // namespace

void EffectRegistry::load(QObject* owner)
{
    if (const auto files = shippedFiles(QStringLiteral("*.json"), "cannot load group informations")) {
        for (const QFileInfo& file : *files) {
            if (file.fileName() == QLatin1String(ColorStrapManager::kShippedFile))
                continue; // a neighbour, no group file
            const QJsonArray records = readEffectGroupFile(file.absoluteFilePath());
            for (const QJsonValue& record : records)
                addGroup(record.toObject());
        }
        qDebug() << m_groups.size() << "group informations were successfully loaded.";
    }
    if (const auto files = shippedFiles(pluginFilePattern(), "Cannot load external effects")) {
        for (const QFileInfo& file : *files)
            loadPlugin(file.absoluteFilePath(), owner);
    }
    // Last, so that a plug-in which claims the id of a built-in effect loses.
    addFactory(new InternalEffectFactory(owner));
}

void EffectRegistry::addGroup(const QJsonObject& record)
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
    const QByteArray name = record.value(QLatin1String("name")).toString(group.id).toUtf8();
    group.name = QCoreApplication::translate("EffectsManager", name.constData());
    group.desc = record.value(QLatin1String("desc")).toString(group.name);
    const QString icon = record.value(QLatin1String("icon")).toString();
    if (!icon.isEmpty())
        group.icon = EffectPicture::fromFile(icon);
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

void EffectRegistry::loadPlugin(const QString& path, QObject* owner)
{
    auto* loader = new (std::nothrow) QPluginLoader(path, owner);
    if (!loader) {
        qCritical().noquote() << "Failed to create QPluginLoader instance by path" << path;
        return;
    }
    IEffectFactory* factory = nullptr;
    guardedCall("the plug-in's constructor",
                [&] { factory = qobject_cast<IEffectFactory*>(loader->instance()); });
    if (factory)
        return addFactory(factory);
    qCritical().noquote() << "Failed to load IEffectFactory instance by path:" << path
                          << "reason:" << loader->errorString();
    delete loader;
}

void EffectRegistry::addFactory(IEffectFactory* factory)
{
    QList<EffectWorkerOptions> effects;
    guardedCall("workerOptionsList", [&] { effects = factory->workerOptionsList(); });
    for (const EffectWorkerOptions& effect : qAsConst(effects)) {
        const QString groupId = EffectWorkerOptions::groupOf(effect.id);
        if (groupId.isEmpty()) {
            qCritical().noquote() << "[EffectsManager]: Skip an effect with an invalid id:" << effect.id;
            continue;
        }
        if (!m_groups.contains(groupId)) {
            qCritical().noquote() << "Not found group for the effect worker:" << effect.id;
            addGroupWithoutFile(groupId);
        }
        m_effects.insert(effect.id, {effect, factory});
        m_groups[groupId].workers.insert(effect.id);
    }
}

void EffectRegistry::addGroupWithoutFile(const QString& groupId)
{
    EffectGroupInfo group;
    group.id = group.name = group.desc = groupId;
    // It has no place in the sequence, so its order must not be found there.
    group.order = std::numeric_limits<int>::max();
    while (m_groupOrder.contains(group.order))
        --group.order;
    m_groups.insert(groupId, group);
}

QMap<int, QString>::const_iterator EffectRegistry::placeOf(const QString& groupId) const
{
    const auto group = m_groups.constFind(groupId);
    const bool known = group != m_groups.constEnd();
    const auto place = known ? m_groupOrder.constFind(group->order) : m_groupOrder.constEnd();
    if (place == m_groupOrder.constEnd())
        qCritical("[EffectManager]: Not found group %s: %s", known ? "order" : "info",
                  qUtf8Printable(groupId));
    return place;
}

QString EffectRegistry::nextGroupByOrder(const QString& groupId) const
{
    auto place = placeOf(groupId);
    if (place != m_groupOrder.constEnd() && ++place != m_groupOrder.constEnd())
        return *place;
    return m_groupOrder.isEmpty() ? QString() : m_groupOrder.first();
}

QString EffectRegistry::previousGroupByOrder(const QString& groupId) const
{
    const auto place = placeOf(groupId);
    if (place == m_groupOrder.constEnd())
        return m_groups.isEmpty() ? QString() : m_groups.firstKey();
    return place == m_groupOrder.constBegin() ? m_groupOrder.last() : *std::prev(place);
}

QString EffectRegistry::usableEffect(const QString& groupId) const
{
    const EffectGroupInfo group = m_groups.value(groupId.isEmpty() ? kFallbackGroup : groupId);
    if (hasEffect(group.defaultEffect) || group.workers.isEmpty())
        return hasEffect(group.defaultEffect) ? group.defaultEffect : QString();
    return *std::min_element(group.workers.begin(), group.workers.end(),
                             [this](const auto& a, const auto& b) {
                                 const int orderOfA = m_effects[a].options.order;
                                 const int orderOfB = m_effects[b].options.order;
                                 return orderOfA != orderOfB ? orderOfA < orderOfB : a < b;
                             });
}

QSharedPointer<IEffectWorker> EffectRegistry::createWorker(const QString& effectId) const
{
    const auto entry = m_effects.constFind(effectId);
    if (entry == m_effects.constEnd()) {
        qCritical().noquote() << "[EffectsManager]: Not found worker factory for this effect, id:"
                              << effectId;
        return {};
    }
    IEffectWorker* worker = nullptr;
    guardedCall("createWorker", [&] { worker = entry->factory->createWorker(effectId); });
    if (!worker) {
        qCritical().noquote() << "[EffectsManager]: Failed to create effect worker, id:" << effectId;
        return {};
    }
    return {worker, &QObject::deleteLater};
}
