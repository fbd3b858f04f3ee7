#pragma once

#include "controllers/AbsRGBController.h"
#include "effects/EffectGroupInfo.h"
#include "effects/IEffectWorker.h"

#include <QHash>
#include <QJsonValue>
#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QThread>

class IColorStrapManager;
class IDeskDuplManager;
class IEffectFactory;
class QPluginLoader;

/// The registry of effects, and the relation of controllers to the workers that feed them: a controller has
/// at most one. The catalogue is complete when the constructor returns and never changes.
/// Reads group files and plug-ins from `effects` below the working directory. Main thread only.
class EffectsManager : public QObject
{
    Q_OBJECT

public:
    explicit EffectsManager(QObject* parent);
    ~EffectsManager() override;

    /// Gives the controller a worker of this effect, in place of the one it has. The bound worker itself if
    /// it is of this effect already; null if the effect is unknown or yields no worker, the controller then
    /// being unbound. An asynchronous worker may not have run its load when this returns.
    QSharedPointer<IEffectWorker> bindController(QSharedPointer<AbsRGBController> controller,
                                                 const QString& effectId);
    /// Unloads the controller's worker and lets it go; waits for the end of the worker's own thread.
    void unbindController(const QString& controllerId);

    /// Null without a binding or for an unknown key. Waits for a worker that has its own thread.
    QJsonValue effectProperty(const QString& controllerId, const QString& key);
    void setEffectProperty(const QString& controllerId, const QString& key, QJsonValue val);
    /// The same with the worker's signals blocked meanwhile.
    void setEffectPropertySilently(const QString& controllerId, const QString& key, const QJsonValue& val);

    /// The neighbours in the sequence of groups, which wraps. For a group without a place in the sequence
    /// the next is the first by order, the previous the first by id; both empty where there is no group.
    QString nextGroupByOrder(const QString& groupId);
    QString previousGroupByOrder(const QString& groupId);
    /// Empty for an unknown group.
    QString defaultEffect(const QString& groupId);
    /// The effect that the controller had last in this group, else the group's default. Without a group the
    /// default of the colourful group.
    QString lastBindingEffect(const QString& controllerId, const QString& groupId);

    bool hasEffect(const QString& effectId) const { return m_factories.contains(effectId); }
    /// An effect of the group that does exist: its default, else the first by order. Without a group one of
    /// the colourful group; empty where there is none.
    QString usableEffect(const QString& groupId);

    /// Empty without a binding.
    QString boundEffectId(const QString& controllerId);
    /// Null without a binding.
    QSharedPointer<IEffectWorker> boundWorker(const QString& controllerId);

    QStringList groupIds();
    /// A default-constructed record for an unknown id.
    EffectGroupInfo groupInfo(const QString& groupId);
    /// A default-constructed record for an unknown id.
    EffectWorkerOptions effectOptions(const QString& effectId);

signals:
    /// One effect was taken into the catalogue; happens inside the constructor alone.
    void workerReady(QString effectId);
    /// Never emitted.
    void groupReady(QString groupId);

protected:
    /// Makes the service when the first worker asks for it; the manager owns it. Null: it does not exist,
    /// and workers go without.
    virtual IDeskDuplManager* createDeskDuplManager();
    virtual IColorStrapManager* createColorStrapManager();

private:
    struct EffectFactoryEntry
    {
        IEffectFactory* factory = nullptr;
        QPluginLoader* loader = nullptr; ///< null for a built-in effect
    };
    /// Released from the last member to the first: the thread ends only after the worker's deletion was
    /// posted to it, and runs that deletion before it ends.
    struct EffectBinding
    {
        QSharedPointer<QThread> thread; ///< null for a worker of the main thread
        QSharedPointer<AbsRGBController> controller;
        QSharedPointer<IEffectWorker> worker;
    };

    void loadGroupsInfo();
    bool loadGroupInfoFromJson(const QString& path);
    void addGroup(const QJsonObject& record);
    void loadExternalWorkers();
    bool loadExternalWorkers(const QString& path);
    void loadWorkersFromFactory(IEffectFactory* factory, QPluginLoader* loader);
    void addGroupWithoutFile(const QString& groupId);

    void writeProperty(const QString& controllerId, const QString& key, const QJsonValue& val, bool silently);
    static QSharedPointer<IEffectWorker> createWorker(IEffectFactory* factory, const QString& effectId);
    void injectServices(IEffectWorker* worker);
    void connectWorker(IEffectWorker* worker, AbsRGBController* controller);
    static QSharedPointer<QThread> loadInNewThread(const QSharedPointer<IEffectWorker>& worker,
                                                   const QSharedPointer<AbsRGBController>& controller);
    static void unload(const EffectBinding& binding);

    IDeskDuplManager* m_deskDuplManager = nullptr;
    IColorStrapManager* m_colorStrapManager = nullptr;
    QMap<QString, EffectFactoryEntry> m_factories;
    QMap<QString, EffectWorkerOptions> m_workerOptions;
    QHash<QString, EffectBinding> m_bindings; ///< by controller id
    QMap<QString, EffectGroupInfo> m_groups;
    QMap<int, QString> m_groupOrder;
};
