#include "controllers/LVController.h"

#include "controllers/LVSerialPort.h"
#include "controllers/LedFrame.h"
#include "controllers/LineBudget.h"
#include "controllers/PortHolder.h"
#include "support/ThreadStart.h"
#include "support/crash/CrashStack.h"
#include "support/log/Loggers.h"

#include <QDebug>
#include <QThread>
#include <utility>

namespace {
constexpr int kReleaseMs = 500;     ///< counts from the beginning, so it holds for any number of devices
constexpr int kReleaseGraceMs = 50; ///< of which the port leaves this for a busy machine
} // namespace

LVController::LVController(const ControlOptions& options, LVSerialPort* serial, QObject* parent)
    : AbsRGBController(parent)
    , m_serial(serial)
{
    describe(options);
    connect(this, &LVController::writeToPort, m_serial, &LVSerialPort::write, Qt::QueuedConnection);
    connect(m_serial, &LVSerialPort::lineBusy, this, &AbsRGBController::lineBusy, Qt::QueuedConnection);
    // Two hops: an error of the first moment must not overtake the queued hand-over of this controller to its
    // owner, who would never hear of it.
    connect(
        m_serial, &LVSerialPort::errorOccurred, this,
        [this](SerialLine::SerialPortError error, const QString& description) {
            QMetaObject::invokeMethod(
                this, [this, error, description] { onSerialError(error, description); },
                Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
    m_thread = new QThread(this);
    m_thread->setObjectName(threadName(options.portName));
    const auto onStart = [name = m_thread->objectName()] {
        installCrashStackForThread();
        nameThread(name);
    };
    connect(m_thread, &QThread::started, m_thread, onStart, Qt::DirectConnection);
    if (!startThread(*m_thread)) {
        delete std::exchange(m_thread, nullptr);
        return;
    }
    m_serial->moveToThread(m_thread);
    connect(m_serial, &LVSerialPort::deviceCommand1, this, &LVController::onDevCmd1, Qt::QueuedConnection);
    connect(m_serial->line(), &SerialLine::readyRead, m_serial, &LVSerialPort::onDevCmdArrival);
    QMetaObject::invokeMethod(m_serial, &LVSerialPort::startPacing, Qt::QueuedConnection);
}

LVController::~LVController()
{
    if (isUseless()) {
        delete m_serial;
        return;
    }
    beginRelease();
    waitForRelease();
    m_serial->deleteLater();
    stopThread();
    qDebug().noquote() << "[Controller]:" << m_options.id
                       << "The port is released, the black buffer is writeen: " << m_release->blackWritten
                       << ", nbLEDS:" << m_options.nbLeds;
}

void LVController::writeColors(const QVector<LV_RGB>& colors)
{
    if (LedFrame::statedCount(m_header) == 0)
        return;
    emit writeToPort(LedFrame::build(m_header, colors));
}

void LVController::rebuildHeader()
{
    m_header = LedFrame::header(m_options.nbLeds);
    m_options.frameSlotUs = static_cast<int>(LineBudget().costUs(LedFrame::build(m_header, {}).size()));
    QMetaObject::invokeMethod(
        m_serial,
        [serial = m_serial, leds = LedFrame::statedCount(m_header)] { serial->setCrashLedCount(leds); },
        Qt::QueuedConnection);
}

void LVController::beginRelease()
{
    if (m_release)
        return;
    m_release = std::make_shared<PortRelease>();
    m_releaseDeadline = QDeadlineTimer(kReleaseMs, Qt::PreciseTimer);
    QByteArray black;
    if (LedFrame::statedCount(m_header) > 0)
        black = LedFrame::build(m_header, blackColors());
    QMetaObject::invokeMethod(
        m_serial,
        [serial = m_serial, black, deadline = m_releaseDeadline - kReleaseGraceMs, result = m_release] {
            serial->release(black, deadline, result);
        },
        Qt::QueuedConnection);
}

void LVController::waitForRelease()
{
    if (!m_release || m_portClosed)
        return;
    m_portClosed = m_release->done.tryAcquire(1, static_cast<int>(m_releaseDeadline.remainingTime()));
}

void LVController::waitUntilSent(QDeadlineTimer deadline)
{
    const auto sent = std::make_shared<QSemaphore>();
    QMetaObject::invokeMethod(
        m_serial, [serial = m_serial, sent, deadline] { serial->tellWhenSent(sent, deadline); },
        Qt::QueuedConnection);
    if (!sent->tryAcquire(1, static_cast<int>(deadline.remainingTime())))
        qWarning().noquote() << "[Controller]:" << m_options.id << "its line did not get through in time";
}

void LVController::stopThread()
{
    m_thread->quit();
    if (m_portClosed) {
        m_thread->wait(); // nothing is left on it that could block
        m_thread->deleteLater();
        return;
    }
    // The driver holds the thread; leaving it behind is better than not ending.
    qWarning().noquote() << "[Controller]:" << m_options.id << "its port does not close";
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->setParent(nullptr);
}

void LVController::onDevCmd1()
{
    LOG4CPLUS_INFO(deviceLogger(), toLogString(QStringLiteral("Device button clicked ") + m_options.id));
    emit devActionActived(0);
}

void LVController::onSerialError(SerialLine::SerialPortError error, QString description)
{
    const auto status = LVSerialPort::statusOf(error);
    if (!status || *status == m_options.status)
        return;
    m_options.status = *status;
    emit statusChanged(*status, description);
}
