#include "effects/EffectsManager.h"

#include "effects/ColorStrapManager.h"
#include "support/capture/DeskDuplManager.h"
#include "support/config/StoredNumber.h"
#include "support/plugins/GuardedCall.h"

#include <QDebug>
#include <QMetaMethod>

namespace {

/// Hands the service to a worker that declares the method; the first of them has the service made.
template <typename Service, typename Create>
void inject(IEffectWorker* worker, const char* signature, const char* name, Service*& service, Create create)
{
    const QMetaObject* meta = worker->metaObject();
    const QMetaMethod method = meta->method(meta->indexOfMethod(signature));
    if (!method.isValid())
        return;
    if (!service)
        service = create();
    if (!service) {
        qWarning("[EffectsManager]: There is no %s for %s", name, meta->className());
        return;
    }
    const QByteArray type = method.parameterTypes().constFirst();
    guardedCall(signature, [&] {
        method.invoke(worker, Qt::DirectConnection, QGenericArgument(type.constData(), &service));
    });
    qInfo("The %s has injected to %s", name, meta->className());
}

} // namespace

EffectsManager::EffectsManager(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<IDeskDuplManager*>("IDeskDuplManager*");
    qRegisterMetaType<IColorStrapManager*>("IColorStrapManager*");

    auto* config = ConfigurationManager::instance();
    const auto& interval = ConfigKeys::kDevUpdateIntervalMs;
    const QJsonValue stored = config->appConfig(interval.key);
    if (stored.isUndefined() || stored.isNull())
        config->setAppConfig(interval.key, interval.fallback);
    qInfo().noquote() << "Devcie update interval:" << applicationNumber(interval);

    m_registry.load(this);
    const QStringList effects = m_registry.effectIds();
    for (const QString& effect : effects)
        emit workerReady(effect);
}

EffectsManager::~EffectsManager()
{
    m_bindings.clear(); // first: until their threads end the workers may use the services
    delete m_deskDuplManager;
    delete m_colorStrapManager;
}

QSharedPointer<IEffectWorker> EffectsManager::bindController(QSharedPointer<AbsRGBController> controller,
                                                             const QString& effectId)
{
    if (!controller) {
        qCritical() << "[EffectsManager]: Cannot bind an empty controller";
        return {};
    }
    const QString id = controller->options().id;
    if (boundWorker(id)) {
        if (boundEffectId(id) == effectId)
            return boundWorker(id);
        unbindController(id);
    }
    QSharedPointer<IEffectWorker> worker = m_registry.createWorker(effectId);
    if (!worker)
        return {};
    injectServices(worker.data());
    m_bindings.bind(controller, worker, m_registry.effectOptions(effectId));
    ConfigurationManager::instance()->setGlobalValue(
        ConfigKeys::lastBindingKey(id, EffectWorkerOptions::groupOf(effectId)), effectId);
    return worker;
}

QString EffectsManager::lastBindingEffect(const QString& controllerId, const QString& groupId)
{
    if (groupId.isEmpty())
        return defaultEffect(EffectRegistry::kFallbackGroup);
    if (controllerId.isEmpty())
        return defaultEffect(groupId);
    const QString last = ConfigurationManager::instance()
                             ->globalValue(ConfigKeys::lastBindingKey(controllerId, groupId))
                             .toString();
    return last.isEmpty() ? defaultEffect(groupId) : last;
}

QString EffectsManager::boundEffectId(const QString& controllerId)
{
    const QSharedPointer<IEffectWorker> worker = boundWorker(controllerId);
    return worker ? worker->options().id : QString();
}

void EffectsManager::injectServices(IEffectWorker* worker)
{
    inject(worker, "DIDeskDuplication(IDeskDuplManager*)", "DeskDuplManager", m_deskDuplManager,
           [this] { return createDeskDuplManager(); });
    inject(worker, "DIColorStrapManager(IColorStrapManager*)", "ColorStrapManager", m_colorStrapManager,
           [this] { return createColorStrapManager(); });
}

IDeskDuplManager* EffectsManager::createDeskDuplManager()
{
    return new DeskDuplManager(this);
}

IColorStrapManager* EffectsManager::createColorStrapManager()
{
    return new ColorStrapManager(nullptr);
}
