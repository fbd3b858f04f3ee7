#pragma once

#include "effects/IEffectFactory.h"

/// What the program loads: the list of this library's effects and their creation.
class BreathingFactory : public IEffectFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IEffectFactory_iid FILE "example-effect.json")
    Q_INTERFACES(IEffectFactory)

public:
    explicit BreathingFactory(QObject* parent = nullptr);

    IEffectWorker* createWorker(QString effectId) override;
    QList<EffectWorkerOptions> workerOptionsList() override;

private:
    EffectWorkerOptions m_breathing;
};
