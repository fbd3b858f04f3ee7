#include "effects/InternalEffectFactory.h"

#include "effects/EffectCatalogue.h"
#include "effects/EffectTypes.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QMetaMethod>

namespace {

EffectWorkerOptions toOptions(const EffectCatalogueRow& row, bool advancedMode)
{
    EffectWorkerOptions options;
    options.id = QString::fromLatin1(row.id);
    options.name = QString::fromUtf8(row.name);
    if (*row.icon != '\0')
        options.icon = QImage(QString::fromLatin1(row.icon));
    options.desc = options.name;
    options.order = row.order;
    options.sOptWidget = QString::fromLatin1(row.sOptWidget);
    if (advancedMode)
        options.lOptWidget = QString::fromLatin1(row.advancedLOptWidget);
    return options;
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
    registerEffectTypes();
    const bool advancedMode = ConfigurationManager::instance()
                                  ->appConfig(ConfigKeys::kScreenSyncAdvancedMode.key)
                                  .toBool(ConfigKeys::kScreenSyncAdvancedMode.fallback);
    for (const EffectCatalogueRow& row : effectCatalogue()) {
        const QString typeName = QString::fromLatin1(row.workerClass) + u'*';
        if (QMetaType::type(typeName.toLatin1()) == QMetaType::UnknownType)
            continue; // its class is still to come
        const EffectWorkerOptions options = toOptions(row, advancedMode);
        m_workerClasses.insert(options.id, typeName);
        m_workerOptions.insert(options.id, options);
    }
}

IEffectWorker* InternalEffectFactory::createWorker(QString effectId)
{
    return createByTypeName(m_workerClasses.value(effectId), m_workerOptions.value(effectId));
}

QList<EffectWorkerOptions> InternalEffectFactory::workerOptionsList()
{
    return m_workerOptions.values();
}

IEffectWorker* InternalEffectFactory::createByTypeName(const QString& typeName,
                                                       const EffectWorkerOptions& options)
{
    const QMetaObject* meta = QMetaType::metaObjectForType(QMetaType::type(typeName.toLatin1()));
    if (!meta)
        return nullptr;

    QObject* const noParent = nullptr;
    QObject* object = nullptr;
    for (int i = 0; i < meta->constructorCount(); ++i) {
        if (takesOptionsAndParent(meta->constructor(i))) {
            object = meta->newInstance(Q_ARG(const EffectWorkerOptions&, options), Q_ARG(QObject*, noParent));
            break;
        }
    }
    if (!object)
        object = meta->newInstance(Q_ARG(QObject*, noParent));

    auto* worker = qobject_cast<IEffectWorker*>(object);
    if (!worker)
        delete object;
    return worker;
}
