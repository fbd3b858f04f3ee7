#pragma once

#include "controllers/AbsRGBController.h"
#include "effects/IEffectWorker.h"

#include <QHash>
#include <QSharedPointer>
#include <QThread>

/// Which worker feeds which controller: joins the two, gives an asynchronous worker its thread, and carries
/// the properties to it. The functions that EffectsManager has as well keep what it promises. Main thread
/// only.
class EffectBindings
{
public:
    /// Connects the two and loads the worker. The effect is the worker's entry in the catalogue. The
    /// controller must have no worker.
    void bind(const QSharedPointer<AbsRGBController>& controller, const QSharedPointer<IEffectWorker>& worker,
              const EffectWorkerOptions& effect);
    void unbind(const QString& controllerId);
    /// Unloads all workers, then lets them go and ends their threads.
    void clear();

    QSharedPointer<IEffectWorker> boundWorker(const QString& controllerId) const;
    QJsonValue effectProperty(const QString& controllerId, const QString& key) const;
    /// Silently: with the worker's signals blocked meanwhile.
    void setEffectProperty(const QString& controllerId, const QString& key, const QJsonValue& val,
                           bool silently) const;

private:
    /// Released from the last member to the first: the thread ends only after the worker's deletion was
    /// posted to it, and runs that deletion before it ends.
    struct Binding
    {
        QSharedPointer<QThread> thread; ///< null for a worker of the main thread
        QSharedPointer<AbsRGBController> controller;
        QSharedPointer<IEffectWorker> worker;
    };

    static void unload(const Binding& binding);

    QHash<QString, Binding> m_bindings; ///< by controller id
};
