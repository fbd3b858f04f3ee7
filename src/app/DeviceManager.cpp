#include "app/DeviceManager.h"

#include "app/DisconnectionHistory.h"
#include "app/LedCountSession.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/VTControllerEnumerator.h"
#include "effects/EffectNotice.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/plugins/GuardedCall.h"
#include "support/plugins/PluginFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QMessageBox>
#include <QPluginLoader>

#include <algorithm>

namespace {

constexpr uint32_t kWorking = 0;
constexpr int kSendMs = 500;

/// Without a display nobody can answer a dialog.
bool isHeadless()
{
    return QCoreApplication::instance()->property("isHeadless").toBool();
}

} // namespace

DeviceManager::DeviceManager(LumivarApp*, QObject* parent)
    : QObject(parent)
    , m_effects(nullptr)
{
    qRegisterMetaType<AbsRGBControllerPtr>("QSharedPointer<AbsRGBController>");
    qRegisterMetaType<AbsRGBControllerPtr>("AbsRGBControllerPtr");
    qRegisterMetaType<PortFindings>("PortFindings");
    loadExternalDeviceEnumerators();
    createBuiltInEnumerators();
}

DeviceManager::~DeviceManager()
{
    delete m_disconnectionWarning;
    qDeleteAll(m_countSessions);
    // All strips go black at the same time; each controller's destructor then only waits for its own.
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->beginRelease();
}

void DeviceManager::releaseAll()
{
    qDeleteAll(std::exchange(m_countSessions, {}));
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->beginRelease();
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->waitForRelease();
}

void DeviceManager::setDark(bool dark)
{
    if (std::exchange(m_isDark, dark) == dark)
        return;
    qInfo() << "[DeviceManager]: The devices are kept dark:" << dark;
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->setDark(dark);
}

void DeviceManager::setAsleep(bool asleep)
{
    for (const auto& enumerator : qAsConst(m_enumerators))
        enumerator->setAsleep(asleep);
    const QDeadlineTimer deadline(kSendMs, Qt::PreciseTimer);
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers)) {
        if (asleep)
            controller->waitUntilSent(deadline);
    }
}

DeviceManager::DeferredDeletes::~DeferredDeletes()
{
    // The event loop has ended by now, so nobody else would carry out the deleteLater of the pointers.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

AbsRGBControllerPtr DeviceManager::controller(const QString& id) const
{
    return m_controllers.value(id);
}

const ControlOptions& DeviceManager::controlOptions(const QString& id) const
{
    static const ControlOptions invalid;
    const auto found = m_controllers.constFind(id);
    return found == m_controllers.constEnd() ? invalid : (*found)->options();
}

QList<QString> DeviceManager::controllerIds() const
{
    return m_controllers.keys();
}

void DeviceManager::loadExternalDeviceEnumerators()
{
    QDir dir{QString()};
    if (!dir.cd(QStringLiteral("deviceEnumerators")))
        qCritical() << "Not found Dir: deviceEnumerators, Unable to load external enumerators";
    dir.makeAbsolute();
    for (const QFileInfo& file : dir.entryInfoList({pluginFilePattern()})) {
        const QString path = file.absoluteFilePath();
        QPluginLoader loader(path);
        QObject* instance = nullptr;
        guardedCall("an enumerator plug-in's constructor", [&] { instance = loader.instance(); });
        if (!instance) {
            qWarning().noquote() << QStringLiteral("Failed to load EffectPlugin by path %1").arg(path)
                                 << loader.errorString();
            continue;
        }
        auto* enumerator = qobject_cast<IDeviceEnumerator*>(instance);
        if (!enumerator) {
            qWarning().noquote() << QStringLiteral("Invailed EffectPlugin by path %1").arg(path)
                                 << loader.errorString();
            continue;
        }
        addEnumerator(path, QSharedPointer<IDeviceEnumerator>(enumerator));
        qInfo().noquote() << QStringLiteral("Successed to load EffectPlugin by path %1").arg(file.fileName());
    }
}

void DeviceManager::createBuiltInEnumerators()
{
    addEnumerator(QStringLiteral("@@@LVControllerEnumerator"),
                  QSharedPointer<LVControllerEnumerator>::create());
    if (QCoreApplication::instance()->property("enable VTController").toBool())
        addEnumerator(QStringLiteral("@@@VTControllerEnumerator"),
                      QSharedPointer<VTControllerEnumerator>::create());
}

void DeviceManager::addEnumerator(const QString& key, const QSharedPointer<IDeviceEnumerator>& enumerator)
{
    connect(enumerator.data(), &IDeviceEnumerator::deviceEnabled, this, &DeviceManager::addController,
            Qt::QueuedConnection);
    connect(enumerator.data(), &IDeviceEnumerator::findingsChanged, this,
            [this, key](const PortFindings& findings) {
                m_findings.insert(key, findings);
                emit findingsChanged();
            });
    m_enumerators.insert(key, enumerator);
}

PortFindings DeviceManager::findings() const
{
    PortFindings all;
    for (const PortFindings& findings : m_findings)
        all += findings;
    // Of a model that is not known the count of LEDs is what was missing most.
    const auto isSettled = [this](const PortFinding& finding) {
        return finding.kind == PortFinding::Kind::UnknownModel &&
               std::any_of(m_controllers.begin(), m_controllers.end(), [&](const AbsRGBControllerPtr& each) {
                   return each->options().portName == finding.port && each->options().nbLeds > 1;
               });
    };
    all.erase(std::remove_if(all.begin(), all.end(), isSettled), all.end());
    return all;
}

void DeviceManager::lookAgain()
{
    for (const auto& enumerator : qAsConst(m_enumerators)) {
        if (const auto strips = enumerator.objectCast<LVControllerEnumerator>())
            strips->lookAgain();
    }
}

void DeviceManager::addController(AbsRGBControllerPtr controller)
{
    if (!controller) {
        qWarning() << "[DeviceManager]: Cannot add an empty controller";
        return;
    }
    const ControlOptions options = controller->options();
    if (m_controllers.contains(options.id)) {
        qWarning() << "[DeviceManager]: The controller already exists" << options.id;
        return;
    }
    if (!options.isValid()) {
        qWarning() << "[DeviceManager]: Cannot add a controller with an invalid ID";
        return;
    }
    m_controllers.insert(options.id, controller);
    controller->setDark(m_isDark);
    qInfo().noquote() << "A new controller has been added to manager: " << options.model << ":"
                      << options.serial;
    connect(controller.data(), &AbsRGBController::statusChanged, this,
            [this, id = options.id](uint32_t status, const QString& description) {
                onControllerStatusChanged(id, status, description);
            });
    if (!controlOptions(options.id).isValid()) {
        qCritical() << "DeviceManager returned an invalid ControlOptions, ctlName: " << options.id;
        return;
    }

    if (options.nbLeds > 0) {
        bindStoredEffect(options.id);
        emit newController(options.id);
        return;
    }
    askLedCount(controller, [this, id = options.id](bool accepted) {
        if (!accepted)
            qInfo() << "The user unconfigures the new device, so 1 LED is set for the new device " << id;
        emit newController(id);
    });
}

void DeviceManager::bindStoredEffect(const QString& id)
{
    const AbsRGBControllerPtr target = controller(id);
    if (!target)
        return;
    const AbsRGBController::EffectChoice choice = target->chosenEffect();
    const bool known =
        !choice.workMode.isEmpty() && !choice.subMode.isEmpty() && m_effects.hasEffect(choice.subMode);
    QString effect = known ? choice.subMode : m_effects.lastBindingEffect(id, QString());
    if (!m_effects.hasEffect(effect)) // the group's file names none, or one that is gone
        effect = m_effects.usableEffect(QString());
    auto* config = ConfigurationManager::instance();
    const QString lastKey = ConfigKeys::lastBindingKey(id, EffectWorkerOptions::groupOf(effect));
    const QJsonValue last = config->globalValue(lastKey);
    setControllerEffect(id, effect, false);
    if (known || choice.subMode.isEmpty())
        return;
    // A stand-in is no choice: the plug-in of the user's effect may be back with the next start.
    target->keepChosenEffect(choice);
    config->setGlobalValue(lastKey, last);
}

bool DeviceManager::setControllerLayout(const QString& id)
{
    const AbsRGBControllerPtr found = controller(id);
    if (!found || m_countSessions.contains(id))
        return found != nullptr;
    m_effects.unbindController(id); // so that it does not paint over the test pattern
    askLedCount(found, [this, id](bool) {
        if (m_effects.boundEffectId(id).isEmpty()) {
            qWarning().noquote() << "Failed to bind controller " << id << "to effect"
                                 << controlOptions(id).subMode;
            removeController(id);
        }
        qInfo().noquote() << "End configuring the device";
    });
    return true;
}

void DeviceManager::askLedCount(const AbsRGBControllerPtr& controller, const std::function<void(bool)>& then)
{
    const QString id = controller->options().id;
    const auto goOn = [this, id, then](bool accepted) {
        if (!m_effects.boundEffectId(id).isEmpty()) // by a button meanwhile, without knowing the count
            m_effects.unbindController(id);
        bindStoredEffect(id);
        then(accepted);
    };
    if (isHeadless()) {
        qWarning() << "[DeviceManager]: The LED count cannot be asked for without a display, device:" << id;
        const uint32_t stored = controller->options().nbLeds;
        controller->setNbLeds(qMax(stored, 1U));
        controller->saveProperty(QLatin1String(ConfigKeys::kNbLeds.key), stored); // it is asked another time
        return goOn(false);
    }
    auto* session = new LedCountSession(controller, dialogParent());
    m_countSessions.insert(id, session);
    connect(session, &LedCountSession::answered, this, [this, id, goOn](bool accepted) {
        m_countSessions.take(id)->deleteLater();
        goOn(accepted);
    });
}

void DeviceManager::setControllerEffect(const QString& id, const QString& effectId, bool enable)
{
    const AbsRGBControllerPtr target = controller(id);
    if (!target) {
        qCritical() << "Not found device controller, id: " << id;
        return;
    }
    target->setWorkMode(EffectWorkerOptions::groupOf(effectId));
    target->setSubMode(effectId);
    const IEffectWorkerPtr worker = m_effects.bindController(target, effectId);
    if (!worker) {
        qWarning() << "Cannot bind controller: " << id << " to effect: " << effectId;
        return;
    }
    if (enable) { // the user's pick, perhaps of what only stood in and is bound already
        ConfigurationManager::instance()->setGlobalValue(
            ConfigKeys::lastBindingKey(id, EffectWorkerOptions::groupOf(effectId)), effectId);
        target->setEnable(true);
        answerNotice(id, false);
    }
    // The same worker comes back when the same effect is chosen again: one connection is enough.
    disconnect(worker.data(), &IEffectWorker::effectPropertyChanged, this, nullptr);
    connect(
        worker.data(), &IEffectWorker::effectPropertyChanged, this,
        [this, id, effectId](const QString& key, const QJsonValue& val) {
            onEffectPropertyChanged(id, effectId, key, val);
        },
        Qt::QueuedConnection);
}

void DeviceManager::answerNotice(const QString& id, bool isClicked)
{
    const QLatin1String key(EffectNotice::kActionKey);
    if (!m_effects.effectProperty(id, key).toString().isEmpty())
        m_effects.setEffectProperty(id, key, isClicked);
}

void DeviceManager::onEffectPropertyChanged(QString ctl, QString effect, QString key, QJsonValue val)
{
    if (m_effects.boundEffectId(ctl) == effect)
        emit effectPropertyChanged(ctl, effect, key, val);
}

void DeviceManager::removeController(const QString& id)
{
    AbsRGBControllerPtr gone = m_controllers.take(id);
    if (!gone)
        return;
    disconnect(gone.data(), &AbsRGBController::statusChanged, this, nullptr); // not about its successor
    delete m_countSessions.take(id); // nobody needs its answer any more
    gone.reset();
    qInfo().noquote() << "[DeviceManager]: " << id << "has been removed";
    emit controllerFailed(id);
}

void DeviceManager::onControllerStatusChanged(const QString& id, uint32_t status, const QString& description)
{
    using namespace DisconnectionHistory;
    if (status == kWorking || !m_controllers.contains(id))
        return;
    qInfo().noquote() << "Device has failed: " << id << ", Reason: " << description;

    auto* config = ConfigurationManager::instance();
    const QString key = ConfigKeys::disconnectionScheduleKey(id);
    const QJsonArray history = withFailure(config->appConfig(key).toArray(), QDateTime::currentDateTime());
    config->setAppConfig(key, history);
    switch (judge(history)) {
    case Verdict::Fine:
        break;
    case Verdict::FirstUnreadable:
        qCritical().noquote() << "Failed to parse firstTime string when check the device history by "
                                 "disconnection schedule,timeString: "
                              << history.first().toString();
        break;
    case Verdict::LastUnreadable:
        qCritical().noquote() << "Failed to parse lastTime string when check the device history by "
                                 "disconnection schedule,timeString: "
                              << history.last().toString();
        break;
    case Verdict::TooOften:
        warnOfDisconnections(id);
        config->setAppConfig(key, QJsonValue::Null);
        qInfo().noquote() << "The disconnection schedule of the controller: " << id << " has been cleared";
        break;
    }
    emit controllerFailed(id);
}

void DeviceManager::warnOfDisconnections(const QString& id)
{
    if (isHeadless()) {
        qWarning() << "[DeviceManager]: The device disconnects often, perhaps it lacks power:" << id;
        return;
    }
    if (m_disconnectionWarning)
        return; // a strip that keeps dropping out all night is one window in the morning
    // Not modal: the strip must come back even while nobody is there to press the button.
    auto* box = new QMessageBox(
        QMessageBox::Information, QStringLiteral("Lumivar"),
        tr("嘿嘿，老铁，听说你的灯带有点小问题啊。检测到灯带频烦断开，可能是电力不够哦。快来把灯带插到主板的"
           "USB口，或者有独立电源的USB扩展上试试看吧。如果还是有这种情况，赶紧联系售后，真的很抱歉给你带来不"
           "便"
           "啦。希望快点搞定，加油哦！✌️"),
        QMessageBox::NoButton, dialogParent());
    box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false);
    m_disconnectionWarning = box;
    box->show();
}

QWidget* DeviceManager::dialogParent() const
{
    return reinterpret_cast<QWidget*>(
        static_cast<quintptr>(QCoreApplication::instance()->property("mainWindowPointer").toULongLong()));
}
