#pragma once

#include "effects/EffectGroupInfo.h"
#include "effects/IEffectWorker.h"

#include <QMap>
#include <QSharedPointer>
#include <QStringList>

class IEffectFactory;

/// Which groups and effects there are, and where they come from: group files and plug-ins in `effects` below
/// the working directory, and what is built in. Filled once. The functions that EffectsManager has as well
/// keep what it promises.
class EffectRegistry
{
public:
    inline static const QString kFallbackGroup = QStringLiteral("id.effect.colorful");

    /// Factories and plug-ins become the owner's children.
    void load(QObject* owner);
    /// Takes over what a factory offers; what it says of its effects may be anything.
    void addFactory(IEffectFactory* factory);

    QStringList effectIds() const { return m_effects.keys(); }
    bool hasEffect(const QString& effectId) const { return m_effects.contains(effectId); }
    EffectWorkerOptions effectOptions(const QString& effectId) const
    {
        return m_effects.value(effectId).options;
    }
    /// Released by deleteLater. Null, after a log line, for an unknown effect or one that yields no worker.
    QSharedPointer<IEffectWorker> createWorker(const QString& effectId) const;

    QStringList groupIds() const { return m_groups.keys(); }
    EffectGroupInfo groupInfo(const QString& groupId) const { return m_groups.value(groupId); }
    QString nextGroupByOrder(const QString& groupId) const;
    QString previousGroupByOrder(const QString& groupId) const;
    QString usableEffect(const QString& groupId) const;

private:
    struct Effect
    {
        EffectWorkerOptions options;
        IEffectFactory* factory = nullptr;
    };

    void addGroup(const QJsonObject& record);
    void loadPlugin(const QString& path, QObject* owner);
    void addGroupWithoutFile(const QString& groupId);
    QMap<int, QString>::const_iterator placeOf(const QString& groupId) const;

    QMap<QString, Effect> m_effects;
    QMap<QString, EffectGroupInfo> m_groups;
    QMap<int, QString> m_groupOrder; ///< the sequence of the groups that have a place in it
};
