#include "controllers/LVControllerEnumerator.h"

#include "controllers/ControllerDefaults.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/ProbeDialogue.h"
#include "support/config/ConfigurationManager.h"
#include "support/log/Loggers.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonObject>
#include <QThread>
#include <QThreadPool>

#include <algorithm>

namespace {

/// The log shows the caller's line.
void logInfo(const QString& text, int line = __builtin_LINE())
{
    deviceLogger().log(log4cplus::INFO_LOG_LEVEL, toLogString(text), __FILE__, line);
}

void logWarning(const QString& text, int line = __builtin_LINE())
{
    deviceLogger().log(log4cplus::WARN_LOG_LEVEL, toLogString(text), __FILE__, line);
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// Devices without a serial once shared one object. The first of them that is found gets it.
void inheritSettings(const QString& shared, const QString& id)
{
    auto* config = ConfigurationManager::instance();
    QJsonObject& from = config->controllerJsonObj(shared);
    QJsonObject& to = config->controllerJsonObj(id);
    if (from.isEmpty() || !to.isEmpty())
        return;
    to = std::exchange(from, {});
    config->saveControllerJsonObj(id);
    config->saveControllerJsonObj(shared);
}

/// The last reference may go within a signal of the controller, so it is deleted later; its light goes out
/// now, and several that go together do so at the same time.
void releaseController(AbsRGBController* controller)
{
    if (controller->thread() == QThread::currentThread())
        controller->beginRelease();
    controller->deleteLater();
}

/// `then` comes on the main thread with what `look` returns; not once `context` has gone.
template <typename Look, typename Then>
void lookInBackground(QObject* context, const Look& look, const Then& then)
{
    QThreadPool::globalInstance()->start([look, then, guard = QPointer<QObject>(context)] {
        QMetaObject::invokeMethod(QCoreApplication::instance(), [then, guard, found = look()] {
            if (guard)
                then(found);
        });
    });
}

} // namespace

LVControllerEnumerator::LVControllerEnumerator(std::unique_ptr<ISerialPortSource> source,
                                               DiscoveryTiming timing, QObject* parent)
    : IDeviceEnumerator(parent)
    , m_source(source ? std::move(source) : CombinedSerialPortSource::createDefault())
    , m_timing(timing)
{
    qRegisterMetaType<AbsRGBControllerPtr>("AbsRGBControllerPtr");
    qRegisterMetaType<AbsRGBControllerPtr>("QSharedPointer<AbsRGBController>");
    walkPorts();
    connect(this, &LVControllerEnumerator::deviceArrival, this, &LVControllerEnumerator::onDeviceArrival,
            Qt::QueuedConnection);
    connect(m_source.get(), &ISerialPortSource::portArrived, this, [this](const QString& name) {
        logInfo(QStringLiteral("Received a new device from system event: ") + name);
        m_silences.remove(name);
        emit deviceArrival(name);
    });
    m_scanTimer.setInterval(m_timing.scanMs);
    connect(&m_scanTimer, &QTimer::timeout, this, &LVControllerEnumerator::scanCH340Devices);
    m_scanTimer.start();
}

LVControllerEnumerator::~LVControllerEnumerator() = default;

void LVControllerEnumerator::walkPorts()
{
    logInfo(QStringLiteral("Begin scan devices list"));
    auto* walk = new QTimer(this);
    connect(walk, &QTimer::timeout, this, [this, walk, ports = m_source->availablePorts()]() mutable {
        if (ports.isEmpty()) {
            logInfo(QStringLiteral("End scan devices list"));
            walk->stop();
            walk->deleteLater();
            lookForAdapters();
            return;
        }
        makeController(ports.takeFirst().name);
    });
    walk->start(m_timing.walkMs);
}

void LVControllerEnumerator::onDeviceArrival(QString deviceName)
{
    QTimer::singleShot(m_timing.arrivalMs, this, [this, deviceName] { makeController(deviceName); });
}

void LVControllerEnumerator::setAsleep(bool asleep)
{
    m_isAsleep = asleep;
    if (asleep) {
        for (ProbeDialogue* dialogue : dialogues())
            giveUp(dialogue); // its answer would be lost, and the port may be another one afterwards
        m_scanTimer.stop();
        return;
    }
    m_hastyScans = m_timing.hastyScans;
    m_scanTimer.start(0);
}

void LVControllerEnumerator::scanCH340Devices()
{
    m_scanTimer.start(m_hastyScans > 0 ? m_timing.hasteMs : m_timing.scanMs);
    const bool isHasty = m_hastyScans > 0 && m_hastyScans-- > 0;
    lookForAdapters();
    if (m_pendingDevices.isEmpty())
        return;
    QSet<QString> present;
    const QList<SerialPortRecord> ports = m_source->availablePorts();
    for (const SerialPortRecord& port : ports)
        present.insert(port.name);
    const QSet<QString> names = m_pendingDevices;
    for (const QString& name : names) {
        const QPointer<LVController> controller = m_adopted.value(name);
        if (controller && controller->options().status == 0)
            m_pendingDevices.remove(name); // a second arrival failed on the port that is ours already
        else if (present.contains(name) && isHasty && !isProbed(name))
            makeController(name);
        else if (present.contains(name) && !isHasty)
            onDeviceArrival(name);
        else if (!present.contains(name)) // waits silently for its return
            forget(name);
    }
}

void LVControllerEnumerator::makeController(const QString& portName)
{
    if (m_isAsleep) {
        logInfo(QStringLiteral("Asked after the machine's sleep: ") + portName);
        m_pendingDevices.insert(portName);
        return;
    }
    logInfo(QStringLiteral("Start verifying device: ") + portName);
    const SerialPortRecord record = m_source->find(portName);
    if (!record.description.contains(QLatin1String("CH340"))) {
        logInfo(QStringLiteral("Unknown device ") + portName);
        forget(portName);
        return;
    }
    auto* dialogue = new ProbeDialogue(record, this);
    connect(dialogue, &ProbeDialogue::answered, this,
            [this, dialogue](const QByteArray& raw) { onReply(dialogue, raw); });
    connect(dialogue, &ProbeDialogue::timedOut, this, [this, dialogue] { onTimedOut(dialogue); });
    connect(dialogue, &ProbeDialogue::lost, this, [this, dialogue] { onLost(dialogue); });
    if (!dialogue->start(m_timing.replyMs, questions(portName), m_timing.silenceMs)) {
        logWarning(QStringLiteral("Failed to init the serial port ") + portName);
        m_pendingDevices.insert(portName);
        if (!isOurs(dialogue))
            noteOpenError(dialogue);
        delete dialogue;
        return;
    }
    if (!m_portless.isEmpty())
        lookForAdapters(); // it may be one of them
    if (!m_findings.contains(portName) || m_findings[portName].kind == PortFinding::Kind::NotPermitted)
        note({portName});
}

bool LVControllerEnumerator::isOurs(const ProbeDialogue* dialogue) const
{
    return m_adopted.value(dialogue->portName()) || isProbed(dialogue->portName(), dialogue);
}

bool LVControllerEnumerator::isProbed(const QString& portName, const ProbeDialogue* except) const
{
    const QList<ProbeDialogue*> all = dialogues();
    return std::any_of(all.begin(), all.end(), [&](const ProbeDialogue* dialogue) {
        return dialogue != except && dialogue->portName() == portName;
    });
}

QList<ProbeDialogue*> LVControllerEnumerator::dialogues() const
{
    return findChildren<ProbeDialogue*>(QString(), Qt::FindDirectChildrenOnly);
}

void LVControllerEnumerator::noteOpenError(const ProbeDialogue* dialogue)
{
    const SerialPortRecord& record = dialogue->record();
    const auto warn = [record, error = dialogue->openErrorString()] {
        logWarning(QStringLiteral("The serial port %1 cannot be opened: %2").arg(record.name, error));
    };
    if (dialogue->openError() == SerialLine::DeviceNotFoundError)
        forget(record.name);
    else if (dialogue->openError() == SerialLine::PermissionError)
        find(
            record.name,
            [record, before = holderBefore(record.name)] { return PortFinding::ofRefusal(record, before); },
            warn);
    else if (note({record.name, PortFinding::Kind::Silent}))
        warn();
}

/// Not while all is well: a device is there, and nothing was missed.
void LVControllerEnumerator::lookForAdapters()
{
    const bool hasDevice = std::any_of(m_adopted.begin(), m_adopted.end(),
                                       [](const QPointer<LVController>& each) { return !each.isNull(); });
    if ((hasDevice && m_portless.isEmpty()) || m_isLookingForAdapters)
        return;
    const QList<PortlessAdapter> adapters = m_source->portlessAdapters();
    if (adapters.isEmpty())
        return setPortless({});
    m_isLookingForAdapters = true;
    lookInBackground(
        this,
        [adapters, before = m_portless] {
            PortFindings portless;
            for (const PortlessAdapter& adapter : adapters) {
                const auto known = std::find_if(before.begin(), before.end(), [&](const PortFinding& each) {
                    return each.port == adapter.socket;
                });
                portless.append(
                    PortFinding::ofAdapter(adapter, known == before.end() ? PortHolder() : known->holder));
            }
            return portless;
        },
        [this](const PortFindings& portless) {
            m_isLookingForAdapters = false;
            setPortless(portless);
        });
}

void LVControllerEnumerator::setPortless(const PortFindings& portless)
{
    if (portless == m_portless)
        return;
    m_portless = portless;
    for (const PortFinding& finding : qAsConst(m_portless))
        logWarning(QStringLiteral("The adapter at %1 gives no serial port").arg(finding.port));
    tellFindings();
}

void LVControllerEnumerator::find(const QString& portName, const std::function<PortFinding()>& look,
                                  const std::function<void()>& then)
{
    if (m_lookedInto.contains(portName))
        return;
    m_lookedInto.insert(portName);
    const auto tell = [this, portName, then, turn = m_turns.value(portName)](const PortFinding& finding) {
        m_lookedInto.remove(portName);
        if (turn == m_turns.value(portName) && note(finding) && then)
            then();
    };
    lookInBackground(this, look, tell);
}

bool LVControllerEnumerator::note(const PortFinding& finding)
{
    ++m_turns[finding.port];
    const auto known = m_findings.constFind(finding.port);
    if (known != m_findings.constEnd() && known->isLike(finding))
        return false; // told already, and tried again every few seconds
    m_findings.insert(finding.port, finding);
    tellFindings();
    return true;
}

void LVControllerEnumerator::forget(const QString& portName)
{
    ++m_turns[portName];
    if (m_findings.remove(portName) > 0)
        tellFindings();
}

void LVControllerEnumerator::tellFindings()
{
    PortFindings all = m_portless;
    for (const PortFinding& finding : qAsConst(m_findings))
        all.append(finding);
    emit findingsChanged(all);
}

int LVControllerEnumerator::questions(const QString& portName) const
{
    // One long wait for a slow device; a port without any must not be held most of the time.
    return m_silences.value(portName) == 1 ? m_timing.patience : 1;
}

void LVControllerEnumerator::onTimedOut(ProbeDialogue* dialogue)
{
    const QString portName = dialogue->portName();
    logInfo(QStringLiteral("device response timeout\uFF1A") + portName);
    QString line = QStringLiteral("No answer to \"%1\" within %2 ms from %3")
                       .arg(QLatin1String(ProbeDialogue::kQuestion))
                       .arg(questions(portName) * m_timing.replyMs)
                       .arg(portName);
    const int silences = ++m_silences[portName];
    if (silences == 1)
        line += QStringLiteral(", it will be given %1 ms once").arg(questions(portName) * m_timing.replyMs);
    if (silences <= 2)
        logInfo(line);
    find(portName, [record = dialogue->record(), before = holderBefore(portName)] {
        return PortFinding::ofSilence(record, before);
    });
    giveUp(dialogue);
}

void LVControllerEnumerator::onLost(ProbeDialogue* dialogue)
{
    const QString portName = dialogue->portName();
    if (m_source->find(portName).isValid())
        note({portName, PortFinding::Kind::Silent});
    else
        forget(portName);
    refuse(dialogue);
}

void LVControllerEnumerator::refuse(ProbeDialogue* dialogue)
{
    logInfo(QStringLiteral("Failed to verify deviece ") + dialogue->portName());
    giveUp(dialogue);
}

void LVControllerEnumerator::giveUp(ProbeDialogue* dialogue)
{
    m_pendingDevices.insert(dialogue->portName());
    // A user's dialog may hold the deletion up, and the port must be free for the next attempt.
    dialogue->dropPort();
    dialogue->deleteLater();
}

void LVControllerEnumerator::onReply(ProbeDialogue* dialogue, const QByteArray& raw)
{
    ProbeReply reply = ProbeReply::parse(raw);
    if (!reply.isValid()) {
        find(dialogue->portName(),
             [record = dialogue->record(), raw, before = holderBefore(dialogue->portName())] {
                 return PortFinding::ofUnknownAnswer(record, raw, before);
             });
        refuse(dialogue);
        return;
    }
    const QString portName = dialogue->portName();
    logInfo(quoted(portName) + QStringLiteral(" removed the raw string tail: ") + quoted(reply.text));
    if (reply.hasSerial)
        logInfo(QStringLiteral("Loading device serial and model: ") + reply.text);
    else
        logWarning(QStringLiteral("The device has no serial: ") + reply.text);
    if (reply.serial.isEmpty()) {
        reply.standIn(dialogue->record().place());
        inheritSettings(reply.model + QLatin1Char(':'), reply.id);
    }
    logInfo(quoted(portName) + QStringLiteral(" id: ") + quoted(reply.id));

    LVController* controller = adopt(dialogue, reply);
    if (!controller)
        return refuse(dialogue);
    const AbsRGBControllerPtr shared(controller, &releaseController);
    logInfo(QStringLiteral("ControllerEnumerator found a device:") + controller->options().id);
    m_pendingDevices.remove(portName);
    m_silences.remove(portName);
    m_adopted.insert(portName, controller);
    // The scan brings a failed device back even where the system reports no new arrival, and one whose
    // controller was refused because its predecessor was still there.
    const auto tryAgain = [this, portName, controller] {
        m_pendingDevices.insert(portName);
        const LVController* present = m_adopted.value(portName);
        if (!present || present == controller)
            forget(portName);
    };
    connect(controller, &QObject::destroyed, this, tryAgain);
    connect(controller, &AbsRGBController::statusChanged, this, [tryAgain](uint32_t status) {
        if (status != 0)
            tryAgain();
    });
    emit deviceEnabled(shared);
}

LVController* LVControllerEnumerator::adopt(ProbeDialogue* dialogue, const ProbeReply& reply)
{
    ControlOptions options;
    options.portName = dialogue->portName();
    options.model = reply.model;
    options.serial = reply.serial;
    options.id = reply.id;
    if (ControllerDefaults::apply(options))
        forget(options.portName);
    else
        note({options.portName, PortFinding::Kind::UnknownModel, options.model});
    if (options.icon.isNull())
        options.icon.load(QStringLiteral(":/images/Lv0127Icon.jpg"));
    if (options.image.isNull())
        options.image = options.icon;

    auto controller = std::make_unique<LVController>(options, dialogue->takePort(), nullptr);
    if (controller->isUseless())
        return nullptr;
    dialogue->deleteLater();
    if (!controller->loadConfig())
        controller->startAsNew();
    if (controller->options().kindName.isEmpty())
        controller->setKindName(controller->options().model);
    controller->rebuildHeader();
    controller->saveConfig();
    return controller.release();
}
