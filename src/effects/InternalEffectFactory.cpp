#include "effects/InternalEffectFactory.h"

#include "effects/EffectCatalogue.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QMetaMethod>
#include <algorithm>

namespace {

EffectWorkerOptions toOptions(const EffectRow& row, bool advancedMode)
{
    EffectWorkerOptions options;
    options.id = QString::fromLatin1(row.id);
    options.name = QString::fromUtf8(row.name);
    if (*row.icon != '\0')
        options.icon = EffectPicture::fromFile(QString::fromLatin1(row.icon));
    options.desc = options.name;
    options.order = row.order;
    options.sOptWidget = QString::fromLatin1(row.sOptWidget.name);
    if (advancedMode)
        options.lOptWidget = QString::fromLatin1(row.advancedLOptWidget.name);
    return options;
}

bool isSet(const ConfigKeys::Setting<bool>& setting)
{
    return ConfigurationManager::instance()->appConfig(setting.key).toBool(setting.fallback);
}

bool takesOptionsAndParent(const QMetaMethod& constructor)
{
    return constructor.parameterCount() == 2 && constructor.parameterTypes().at(0) == "EffectWorkerOptions" &&
           constructor.parameterTypes().at(1) == "QObject*";
}

} // namespace

InternalEffectFactory::InternalEffectFactory(QObject* parent)
    : IEffectFactory(parent)
{
    qRegisterMetaType<EffectWorkerOptions>("EffectWorkerOptions");
    const bool advancedMode = isSet(ConfigKeys::kScreenSyncAdvancedMode);
    const bool withExtras = isSet(ConfigKeys::kExtraEffects);
    for (const EffectRow& row : effectCatalogue()) {
        if (withExtras || !row.isExtra)
            m_effects.append({row.worker.meta, toOptions(row, advancedMode)});
    }
}

IEffectWorker* InternalEffectFactory::createWorker(QString effectId)
{
    const auto effect = std::find_if(m_effects.cbegin(), m_effects.cend(),
                                     [&effectId](const Effect& each) { return each.options.id == effectId; });
    return effect == m_effects.cend() ? nullptr : create(*effect->worker, effect->options);
}

QList<EffectWorkerOptions> InternalEffectFactory::workerOptionsList()
{
    QList<EffectWorkerOptions> list;
    for (const Effect& effect : qAsConst(m_effects))
        list.append(effect.options);
    return list;
}

IEffectWorker* InternalEffectFactory::create(const QMetaObject& workerClass,
                                             const EffectWorkerOptions& options)
{
    QObject* const noParent = nullptr;
    QObject* object = nullptr;
    for (int i = 0; i < workerClass.constructorCount(); ++i) {
        if (takesOptionsAndParent(workerClass.constructor(i))) {
            object = workerClass.newInstance(Q_ARG(const EffectWorkerOptions&, options),
                                             Q_ARG(QObject*, noParent));
            break;
        }
    }
    if (!object)
        object = workerClass.newInstance(Q_ARG(QObject*, noParent));

    auto* worker = qobject_cast<IEffectWorker*>(object);
    if (!worker)
        delete object;
    return worker;
}
