#pragma once

#include "effects/EffectBindings.h"
#include "effects/EffectRegistry.h"

#include <QObject>

class IColorStrapManager;
class IDeskDuplManager;

/// The engine of the effects: knows which there are (EffectRegistry), gives controllers the workers that feed
/// them, at most one each (EffectBindings), and gives workers the services they ask for. What there is is
/// complete when the constructor returns and never changes. Main thread only.
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
    void unbindController(const QString& controllerId) { m_bindings.unbind(controllerId); }

    /// Null without a binding or for an unknown key. Waits for a worker that has its own thread.
    QJsonValue effectProperty(const QString& controllerId, const QString& key)
    {
        return m_bindings.effectProperty(controllerId, key);
    }
    void setEffectProperty(const QString& controllerId, const QString& key, QJsonValue val)
    {
        m_bindings.setEffectProperty(controllerId, key, val, false);
    }
    /// The same with the worker's signals blocked meanwhile.
    void setEffectPropertySilently(const QString& controllerId, const QString& key, const QJsonValue& val)
    {
        m_bindings.setEffectProperty(controllerId, key, val, true);
    }

    /// The neighbours in the sequence of groups, which wraps. For a group without a place in the sequence
    /// the next is the first by order, the previous the first by id; both empty where there is no group.
    QString nextGroupByOrder(const QString& groupId) { return m_registry.nextGroupByOrder(groupId); }
    QString previousGroupByOrder(const QString& groupId) { return m_registry.previousGroupByOrder(groupId); }
    /// Empty for an unknown group.
    QString defaultEffect(const QString& groupId) { return m_registry.groupInfo(groupId).defaultEffect; }
    /// The effect that the controller had last in this group, else the group's default. Without a group the
    /// default of the colourful group.
    QString lastBindingEffect(const QString& controllerId, const QString& groupId);

    bool hasEffect(const QString& effectId) const { return m_registry.hasEffect(effectId); }
    /// An effect of the group that does exist: its default, else the first by order. Without a group one of
    /// the colourful group; empty where there is none.
    QString usableEffect(const QString& groupId) { return m_registry.usableEffect(groupId); }

    /// Empty without a binding.
    QString boundEffectId(const QString& controllerId);
    /// Null without a binding.
    QSharedPointer<IEffectWorker> boundWorker(const QString& controllerId)
    {
        return m_bindings.boundWorker(controllerId);
    }

    QStringList groupIds() { return m_registry.groupIds(); }
    /// A default-constructed record for an unknown id.
    EffectGroupInfo groupInfo(const QString& groupId) { return m_registry.groupInfo(groupId); }
    /// A default-constructed record for an unknown id.
    EffectWorkerOptions effectOptions(const QString& effectId) { return m_registry.effectOptions(effectId); }

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
    void injectServices(IEffectWorker* worker);

    IDeskDuplManager* m_deskDuplManager = nullptr;
    IColorStrapManager* m_colorStrapManager = nullptr;
    EffectRegistry m_registry;
    EffectBindings m_bindings;
};
