#include "DeviceManager.h"

#include "DisconnectionHistory.h"
#include "GuardedCall.h"
#include "PluginFiles.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/VTControllerEnumerator.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControllerConfigDialog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QMessageBox>
#include <QPluginLoader>

namespace {

constexpr uint32_t kWorking = 0;
constexpr int kFirstHighMark = 200; ///< LEDs addressed by the test pattern at least
constexpr LV_RGB kTestRed{255, 0, 0};

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
    loadExternalDeviceEnumerators();
    createBuiltInEnumerators();
}

DeviceManager::~DeviceManager()
{
    delete m_disconnectionWarning;
    // All strips go black at the same time; each controller's destructor then only waits for its own.
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->beginRelease();
}

void DeviceManager::releaseAll()
{
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->beginRelease();
    for (const AbsRGBControllerPtr& controller : qAsConst(m_controllers))
        controller->waitForRelease();
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
    m_enumerators.insert(key, enumerator);
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

    if (options.nbLeds == 0) {
        const bool chosen = setControllerLayout(*controller);
        // The device may have failed and gone while the dialog was open.
        if (m_controllers.value(options.id) != controller)
            return;
        if (!chosen) {
            controller->setNbLeds(1);
            qInfo() << "The user unconfigures the new device, so 1 LED is set for the new device "
                    << options.id;
        }
    }
    if (!m_effects.boundEffectId(options.id).isEmpty()) // by a button meanwhile, without knowing the count
        m_effects.unbindController(options.id);
    bindFirstEffect(controlOptions(options.id));
    emit newController(options.id);
}

void DeviceManager::bindFirstEffect(const ControlOptions& options)
{
    const QString id = options.id;
    const bool known =
        !options.workMode.isEmpty() && !options.subMode.isEmpty() && m_effects.hasEffect(options.subMode);
    QString effect = known ? options.subMode : m_effects.lastBindingEffect(id, QString());
    if (!m_effects.hasEffect(effect)) // the group's file names none, or one that is gone
        effect = m_effects.usableEffect(QString());
    setControllerEffect(id, effect, false);
}

bool DeviceManager::setControllerLayout(const QString& id)
{
    // Held here, because the device may fail and go while the dialog is open.
    const AbsRGBControllerPtr found = controller(id);
    return found && setControllerLayout(*found);
}

bool DeviceManager::setControllerLayout(AbsRGBController& controller)
{
    const uint32_t stored = controller.options().nbLeds;
    const uint32_t previous = qMax(stored, 1U);
    controller.setNbLeds(previous);
    // Where nobody answered, the question comes again with the next start or the device's return.
    const auto leaveOpen = [&] {
        if (stored == 0)
            controller.saveProperty(QLatin1String(ConfigKeys::kNbLeds.key), 0);
    };
    if (isHeadless()) {
        qWarning() << "[DeviceManager]: The LED count cannot be asked for without a display, device:"
                   << controller.options().id;
        leaveOpen();
        return false;
    }
    ControllerConfigDialog dialog(dialogParent());
    int highest = kFirstHighMark;
    dialog.setNbLed(static_cast<int>(previous));
    dialog.setDeviceName(controller.options().kindName);

    // The transport pads with black, so exactly `count` LEDs are red on a strip of up to `highest`.
    const auto showCount = [&](int count) {
        highest = qMax(highest, count);
        controller.setNbLeds(static_cast<uint32_t>(highest));
        controller.update(QVector<LV_RGB>(count, kTestRed));
    };
    connect(&dialog, &ControllerConfigDialog::nbLEDChanged, &controller, showCount);
    showCount(dialog.nbLed()); // raises the mark to what may be lit by now
    connect(&dialog, &QDialog::accepted, &controller, [&] {
        controller.setNbLeds(static_cast<uint32_t>(dialog.nbLed()));
        qDebug() << "The number of LEDs on the device has changed to " << dialog.nbLed()
                 << "by user operation.";
    });
    connect(&dialog, &QDialog::rejected, &controller, [&] {
        controller.update({}); // or what the pattern lit beyond the count would stay lit
        controller.setNbLeds(previous);
        qDebug() << "The operation of configuring the device is cancelled , device id "
                 << controller.options().id;
    });
    // A device that fails meanwhile needs no answer any more.
    connect(this, &DeviceManager::controllerFailed, &dialog, [&](const QString& failed) {
        if (failed != controller.options().id)
            return;
        dialog.reject();
        leaveOpen();
    });
    const int result = dialog.exec();
    if (dialog.isVisible()) { // the program ends: the test pattern's count must not be what is stored
        dialog.reject();
        leaveOpen();
    }
    return result != QDialog::Rejected;
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
    if (!bindEffect(target, effectId)) {
        qWarning() << "Cannot bind controller: " << id << " to effect: " << effectId;
        return;
    }
    if (enable)
        target->setEnable(true);
}

IEffectWorkerPtr DeviceManager::bindEffect(const AbsRGBControllerPtr& controller, const QString& effectId)
{
    IEffectWorkerPtr worker = m_effects.bindController(controller, effectId);
    if (!worker)
        return {};
    const QString id = controller->options().id;
    // The same worker comes back when the same effect is chosen again: one connection is enough.
    disconnect(worker.data(), &IEffectWorker::effectPropertyChanged, this, nullptr);
    connect(
        worker.data(), &IEffectWorker::effectPropertyChanged, this,
        [this, id, effectId](const QString& key, const QJsonValue& val) {
            onEffectPropertyChanged(id, effectId, key, val);
        },
        Qt::QueuedConnection);
    return worker;
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
