#include "effects/EffectBindings.h"

#include "effects/EffectThread.h"
#include "support/ThreadStart.h"
#include "support/plugins/GuardedCall.h"

#include <QDebug>
#include <utility>

namespace {

/// Ends the thread when the last reference goes; the worker's pending deletion is run before it ends.
void destroyThread(QThread* thread)
{
    qInfo() << "Destroying effect thread" << thread;
    thread->quit();
    thread->wait();
    delete thread;
}

void connectWorker(IEffectWorker* worker, AbsRGBController* controller)
{
    const auto queued = [](auto... ends) { QObject::connect(ends..., Qt::QueuedConnection); };
    queued(worker, &IEffectWorker::updateColors, controller, &AbsRGBController::update);
    queued(controller, &AbsRGBController::installDirectionChanged, worker, &IEffectWorker::onCtlDirChanged);
    queued(controller, &AbsRGBController::brightnessChanged, worker, &IEffectWorker::onCtlBrightnessChanged);
    queued(controller, &AbsRGBController::kindNameChanged, worker, &IEffectWorker::onCtlKindNameChanged);
    queued(controller, &AbsRGBController::enableChanged, worker, &IEffectWorker::onCtlEnableChanged);
    queued(controller, &AbsRGBController::darkChanged, worker, &IEffectWorker::onCtlDarkChanged);
    queued(controller, &AbsRGBController::lineBusy, worker, &IEffectWorker::onCtlLineBusy);
}

void load(IEffectWorker& worker, const ControlOptions& options, bool isDark)
{
    guardedCall("load", [&] { worker.load(options); });
    if (isDark)
        guardedCall("onCtlDarkChanged", [&] { worker.onCtlDarkChanged(true); });
}

/// Null when there is none to be had: then nothing was done.
QSharedPointer<QThread> loadInNewThread(const QSharedPointer<IEffectWorker>& worker,
                                        const QSharedPointer<AbsRGBController>& controller)
{
    QSharedPointer<QThread> thread(new EffectThread(worker.data()), destroyThread);
    qInfo() << "Starting effect thread" << thread.data();
    qInfo().noquote() << "Relate effect id:" << worker->options().id << "controller id"
                      << controller->options().id;
    if (!startThread(*thread))
        return {};
    worker->moveToThread(thread.data());
    // The options are copied here: the controller changes them on the main thread.
    QMetaObject::invokeMethod(
        worker.data(),
        [worker, controller, options = controller->options(), isDark = controller->isDark()] {
            load(*worker, options, isDark);
        },
        Qt::QueuedConnection);
    return thread;
}

} // namespace

void EffectBindings::bind(const QSharedPointer<AbsRGBController>& controller,
                          const QSharedPointer<IEffectWorker>& worker, const EffectWorkerOptions& effect)
{
    const ControlOptions ctlOptions = controller->options();
    connectWorker(worker.data(), controller.data());
    QSharedPointer<QThread> thread;
    if (effect.async) {
        qInfo().noquote() << "The effect is async, we will create a new thread by effect" << effect.id;
        thread = loadInNewThread(worker, controller);
    }
    if (!thread)
        load(*worker, ctlOptions, controller->isDark());
    m_bindings.insert(ctlOptions.id, {thread, controller, worker});
    qInfo().noquote() << ctlOptions.id << "has connected to" << effect.id;
}

void EffectBindings::unbind(const QString& controllerId)
{
    if (!m_bindings.contains(controllerId)) {
        qWarning().noquote() << "Not found controller in EffectsManager::unbindController" << controllerId;
        return;
    }
    const Binding binding = m_bindings.take(controllerId); // first: unload may lead back here
    QObject::disconnect(binding.worker.data(), nullptr, binding.controller.data(), nullptr);
    qInfo().noquote() << controllerId << "has disconected to" << binding.worker->options().id;
    unload(binding);
}

QJsonValue EffectBindings::effectProperty(const QString& controllerId, const QString& key) const
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

void EffectBindings::setEffectProperty(const QString& controllerId, const QString& key, const QJsonValue& val,
                                       bool silently) const
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

void EffectBindings::clear()
{
    const QHash<QString, Binding> ending = std::exchange(m_bindings, {}); // first: as in unbind
    for (const Binding& binding : ending)
        unload(binding);
}

QSharedPointer<IEffectWorker> EffectBindings::boundWorker(const QString& controllerId) const
{
    return m_bindings.value(controllerId).worker;
}

void EffectBindings::unload(const Binding& binding)
{
    // What waits in the queue of the worker's own thread, its load first of all, has its turn before: what
    // the user chose last is not lost, and nothing reaches the worker after its unload.
    if (binding.worker->thread() != QThread::currentThread())
        QMetaObject::invokeMethod(
            binding.worker.data(), [] {}, Qt::BlockingQueuedConnection);
    guardedCall("unload", [&] { binding.worker->unload(); });
}
