#pragma once

#include "effects/IEffectFactory.h"

#include <QVector>

/// The effects that are compiled in and offered: rows of the catalogue, see there. Registers what pages and
/// entries create by its class name.
class InternalEffectFactory : public IEffectFactory
{
    Q_OBJECT

public:
    /// Reads once whether the advanced mode of the screen effects is offered, and the extra effects.
    explicit InternalEffectFactory(QObject* parent);

    /// Only for ids of workerOptionsList(); null when the class cannot be instantiated as a worker.
    IEffectWorker* createWorker(QString effectId) override;
    QList<EffectWorkerOptions> workerOptionsList() override;

    /// An object of the class, by its constructor with options and parent, else by the one with the parent
    /// alone. Null when that gives no worker.
    static IEffectWorker* create(const QMetaObject& workerClass, const EffectWorkerOptions& options);

private:
    struct Effect
    {
        const QMetaObject* worker;
        EffectWorkerOptions options;
    };
    QVector<Effect> m_effects;
};
