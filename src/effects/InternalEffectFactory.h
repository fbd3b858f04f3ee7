#pragma once

#include "effects/IEffectFactory.h"

#include <QHash>

/// The effects that are compiled in. Workers are created by class name through the meta-type system; a row of
/// the catalogue whose class is not registered is not offered.
class InternalEffectFactory : public IEffectFactory
{
    Q_OBJECT

public:
    /// Reads once whether the advanced mode of the screen effects is offered.
    explicit InternalEffectFactory(QObject* parent);

    /// Only for ids of workerOptionsList(); null when the class cannot be instantiated as a worker.
    IEffectWorker* createWorker(QString effectId) override;
    QList<EffectWorkerOptions> workerOptionsList() override;

    /// Creates an object of a registered pointer type such as "Marquee*", by its constructor with options
    /// and parent, else by the one with the parent alone. Null when that gives no worker.
    static IEffectWorker* createByTypeName(const QString& typeName, const EffectWorkerOptions& options);

private:
    QHash<QString, QString> m_workerClasses; ///< effect id to pointer type name
    QHash<QString, EffectWorkerOptions> m_workerOptions;
};
