#pragma once

#include "effects/IEffectWorker.h"
#include "support/SharedLibrary.h"

#include <QList>
#include <QObject>
#include <QtPlugin>

/// Where effects come from: the built-in catalogue and plug-ins alike.
class LUMIVAR_EFFECTS_EXPORT IEffectFactory : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// A new worker, owned by the caller; null on failure.
    virtual IEffectWorker* createWorker(QString effectId) = 0;
    virtual QList<EffectWorkerOptions> workerOptionsList() = 0;
};

#define IEffectFactory_iid "id.interface.EffectFactoryInterface"
Q_DECLARE_INTERFACE(IEffectFactory, IEffectFactory_iid)
