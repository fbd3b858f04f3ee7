#include "effects/EffectsManager.h"

#include "effects/EffectThread.h"
#include "effects/IColorStrapManager.h"
#include "effects/IEffectFactory.h"
#include "effects/InternalEffectFactory.h"
#include "support/capture/DeskDuplManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/plugins/GuardedCall.h"

#include <QDebug>
#include <QMetaMethod>
#include <algorithm>

namespace {

constexpr char kFallbackGroup[] = "id.effect.colorful";

/// Ends the thread when the last reference goes; the worker's pending deletion is run before it ends.
void destroyThread(QThread* thread)
{
    qInfo() << "Destroying effect thread" << thread;
    thread->quit();
    thread->wait();
    delete thread;
}

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
    if (stored.toInt(0) <= 0) { // the effects' timers would run flat out
        if (!stored.isUndefined() && !stored.isNull())
            qWarning() << "[EffectsManager]: Not an update interval:" << stored;
        config->setAppConfig(interval.key, interval.fallback);
    }
    qInfo().noquote() << "Devcie update interval:" << config->appConfig(interval.key).toVariant().toString();

    loadGroupsInfo();
    loadExternalWorkers();
    // Last, so that a plug-in which claims the id of a built-in effect loses.
    loadWorkersFromFactory(new InternalEffectFactory(this), nullptr);
}

EffectsManager::~EffectsManager()
{
    for (const EffectBinding& binding : qAsConst(m_bindings))
        unload(binding);
    // First of all the threads end: until then their workers may use the services.
    m_bindings.clear();
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
    const ControlOptions ctlOptions = controller->options();
    if (m_bindings.contains(ctlOptions.id)) {
        if (boundEffectId(ctlOptions.id) == effectId)
            return boundWorker(ctlOptions.id);
        unbindController(ctlOptions.id);
    }

    const auto entry = m_factories.constFind(effectId);
    if (entry == m_factories.constEnd()) {
        qCritical().noquote() << "[EffectsManager]: Not found worker factory for this effect, id:"
                              << effectId;
        return {};
    }
    QSharedPointer<IEffectWorker> worker = createWorker(entry->factory, effectId);
    if (!worker) {
        qCritical().noquote() << "[EffectsManager]: Failed to create effect worker, id:" << effectId;
        return {};
    }

    injectServices(worker.data());
    connectWorker(worker.data(), controller.data());

    QSharedPointer<QThread> thread;
    if (m_workerOptions.value(effectId).async) {
        qInfo().noquote() << "The effect is async, we will create a new thread by effect" << effectId;
        thread = loadInNewThread(worker, controller);
    } else {
        guardedCall("load", [&] { worker->load(ctlOptions); });
    }

    m_bindings.insert(ctlOptions.id, {thread, controller, worker});
    qInfo().noquote() << ctlOptions.id << "has connected to" << effectId;
    ConfigurationManager::instance()->setGlobalValue(
        ConfigKeys::lastBindingKey(ctlOptions.id, EffectWorkerOptions::groupOf(effectId)), effectId);
    return worker;
}

void EffectsManager::unbindController(const QString& controllerId)
{
    if (!m_bindings.contains(controllerId)) {
        qWarning().noquote() << "Not found controller in EffectsManager::unbindController" << controllerId;
        return;
    }
    const EffectBinding binding = m_bindings.take(controllerId); // first: unload may lead back here
    QObject::disconnect(binding.worker.data(), nullptr, binding.controller.data(), nullptr);
    qInfo().noquote() << controllerId << "has disconected to" << binding.worker->options().id;
    unload(binding);
}

QJsonValue EffectsManager::effectProperty(const QString& controllerId, const QString& key)
{
    const QSharedPointer<IEffectWorker> worker = boundWorker(controllerId);
    QJsonValue value;
    if (!worker) {
        qCritical().noquote() << "Not found bingding of controller:" << controllerId;
        return value;
    }
    const auto read = [&] { guardedCall("effectProperty", [&] { value = worker->effectProperty(key); }); };
    if (worker->thread() == QThread::currentThread())
        read();
    else
        QMetaObject::invokeMethod(worker.data(), read, Qt::BlockingQueuedConnection);
    return value;
}

void EffectsManager::setEffectProperty(const QString& controllerId, const QString& key, QJsonValue val)
{
    writeProperty(controllerId, key, val, false);
}

void EffectsManager::setEffectPropertySilently(const QString& controllerId, const QString& key,
                                               const QJsonValue& val)
{
    writeProperty(controllerId, key, val, true);
}

void EffectsManager::writeProperty(const QString& controllerId, const QString& key, const QJsonValue& val,
                                   bool silently)
{
    const QSharedPointer<IEffectWorker> worker = boundWorker(controllerId);
    if (!worker) {
        qCritical().noquote() << "Not found bingding of controller:" << controllerId;
        return;
    }
    // The plain pointer: the call waits in the worker's own queue and dies with it.
    const auto write = [target = worker.data(), key, val, silently] {
        const bool wasBlocked = target->signalsBlocked();
        target->blockSignals(silently || wasBlocked);
        guardedCall("setEffectProperty", [&] { target->setEffectProperty(key, val); });
        target->blockSignals(wasBlocked);
    };
    if (worker->thread() == QThread::currentThread())
        write();
    else
        QMetaObject::invokeMethod(worker.data(), write, Qt::QueuedConnection);
}

QString EffectsManager::lastBindingEffect(const QString& controllerId, const QString& groupId)
{
    if (groupId.isEmpty())
        return defaultEffect(QLatin1String(kFallbackGroup));
    if (controllerId.isEmpty())
        return defaultEffect(groupId);
    const QString last = ConfigurationManager::instance()
                             ->globalValue(ConfigKeys::lastBindingKey(controllerId, groupId))
                             .toString();
    return last.isEmpty() ? defaultEffect(groupId) : last;
}

QString EffectsManager::usableEffect(const QString& groupId)
{
    const EffectGroupInfo group = groupInfo(groupId.isEmpty() ? QLatin1String(kFallbackGroup) : groupId);
    if (hasEffect(group.defaultEffect) || group.workers.isEmpty())
        return hasEffect(group.defaultEffect) ? group.defaultEffect : QString();
    return *std::min_element(group.workers.begin(), group.workers.end(),
                             [this](const auto& a, const auto& b) {
                                 const int orderOfA = m_workerOptions[a].order;
                                 const int orderOfB = m_workerOptions[b].order;
                                 return orderOfA != orderOfB ? orderOfA < orderOfB : a < b;
                             });
}

QString EffectsManager::boundEffectId(const QString& controllerId)
{
    const auto binding = m_bindings.constFind(controllerId);
    return binding == m_bindings.constEnd() ? QString() : binding->worker->options().id;
}

QSharedPointer<IEffectWorker> EffectsManager::boundWorker(const QString& controllerId)
{
    return m_bindings.value(controllerId).worker;
}

QSharedPointer<IEffectWorker> EffectsManager::createWorker(IEffectFactory* factory, const QString& effectId)
{
    IEffectWorker* worker = nullptr;
    guardedCall("createWorker", [&] { worker = factory->createWorker(effectId); });
    return {worker, &QObject::deleteLater};
}

void EffectsManager::injectServices(IEffectWorker* worker)
{
    inject(worker, "DIDeskDuplication(IDeskDuplManager*)", "DeskDuplManager", m_deskDuplManager,
           [this] { return createDeskDuplManager(); });
    inject(worker, "DIColorStrapManager(IColorStrapManager*)", "ColorStrapManager", m_colorStrapManager,
           [this] { return createColorStrapManager(); });
}

void EffectsManager::connectWorker(IEffectWorker* worker, AbsRGBController* controller)
{
    connect(worker, &IEffectWorker::updateColors, controller, &AbsRGBController::update,
            Qt::QueuedConnection);
    connect(controller, &AbsRGBController::installDirectionChanged, worker, &IEffectWorker::onCtlDirChanged,
            Qt::QueuedConnection);
    connect(controller, &AbsRGBController::brightnessChanged, worker, &IEffectWorker::onCtlBrightnessChanged,
            Qt::QueuedConnection);
    connect(controller, &AbsRGBController::kindNameChanged, worker, &IEffectWorker::onCtlKindNameChanged,
            Qt::QueuedConnection);
    connect(controller, &AbsRGBController::enableChanged, worker, &IEffectWorker::onCtlEnableChanged,
            Qt::QueuedConnection);
}

QSharedPointer<QThread> EffectsManager::loadInNewThread(const QSharedPointer<IEffectWorker>& worker,
                                                        const QSharedPointer<AbsRGBController>& controller)
{
    QSharedPointer<QThread> thread(new EffectThread(worker.data()), destroyThread);
    qInfo() << "Starting effect thread" << thread.data();
    qInfo().noquote() << "Relate effect id:" << worker->options().id << "controller id"
                      << controller->options().id;
    thread->start(QThread::InheritPriority);
    worker->moveToThread(thread.data());
    // The options are copied here: the controller changes them on the main thread.
    QMetaObject::invokeMethod(
        worker.data(),
        [worker, controller, options = controller->options()] {
            guardedCall("load", [&] { worker->load(options); });
        },
        Qt::QueuedConnection);
    return thread;
}

void EffectsManager::unload(const EffectBinding& binding)
{
    // What waits in the queue of the worker's own thread, its load first of all, has its turn before: what
    // the user chose last is not lost, and nothing reaches the worker after its unload.
    if (binding.worker->thread() != QThread::currentThread())
        QMetaObject::invokeMethod(
            binding.worker.data(), [] {}, Qt::BlockingQueuedConnection);
    guardedCall("unload", [&] { binding.worker->unload(); });
}

IDeskDuplManager* EffectsManager::createDeskDuplManager()
{
    return new DeskDuplManager(this);
}

IColorStrapManager* EffectsManager::createColorStrapManager()
{
    return nullptr;
}
