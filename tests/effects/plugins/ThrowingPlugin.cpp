#include "effects/IEffectFactory.h"

#include <stdexcept>

/// A factory that fails as soon as it is asked for anything.
class ThrowingFactory : public IEffectFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IEffectFactory_iid)
    Q_INTERFACES(IEffectFactory)

public:
    IEffectWorker* createWorker(QString) override { throw std::runtime_error("createWorker"); }
    QList<EffectWorkerOptions> workerOptionsList() override { throw std::runtime_error("no list today"); }
};

#include "ThrowingPlugin.moc"
