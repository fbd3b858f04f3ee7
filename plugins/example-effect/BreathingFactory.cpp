#include "BreathingFactory.h"

#include "Breathing.h"

BreathingFactory::BreathingFactory(QObject* parent)
    : IEffectFactory(parent)
{
    m_breathing.id = QStringLiteral("id.effect.colorful.breathing");
    m_breathing.name = QStringLiteral("呼吸");
    m_breathing.desc = m_breathing.name;
    m_breathing.order = 100;
    m_breathing.async = true;
}

IEffectWorker* BreathingFactory::createWorker(QString effectId)
{
    return effectId == m_breathing.id ? new Breathing(m_breathing, nullptr) : nullptr;
}

QList<EffectWorkerOptions> BreathingFactory::workerOptionsList()
{
    return {m_breathing};
}
