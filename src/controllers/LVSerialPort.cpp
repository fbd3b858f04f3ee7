#include "controllers/LVSerialPort.h"

#include <QDebug>

#include <utility>

namespace {

constexpr qint64 kReportMs = 5000;
constexpr int kDrainPollMs = 2;
constexpr int kSettleMs = 15; ///< lets the adapter pass on its last bytes before the port closes
constexpr int kLoggedBytes = 256;
constexpr int kTalkWindowMs = 1000;
constexpr int kChunksPerWindow = 20; ///< more than a finger presses a button
constexpr qint64 kReadBufferBytes = 4096;

} // namespace

LVSerialPort::LVSerialPort(QObject* parent)
    : QObject(parent)
    , m_port(new QSerialPort)
{
    qRegisterMetaType<QByteArray>("QByteArray");
    qRegisterMetaType<QSerialPort::SerialPortError>();
    m_clock.start();
    for (QTimer* timer : {&m_paceTimer, &m_drainTimer, &m_talkTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_paceTimer, &QTimer::timeout, this, &LVSerialPort::sendWaiting);
    connect(&m_drainTimer, &QTimer::timeout, this, &LVSerialPort::checkDrained);
    connect(&m_talkTimer, &QTimer::timeout, this, &LVSerialPort::onDevCmdArrival);
}

LVSerialPort::~LVSerialPort()
{
    m_port->disconnect(this);
    closePort();
    delete m_port; // deleteLater() within the last events of a thread is never carried out
}

bool LVSerialPort::init(const SerialPortRecord& record)
{
    m_name = record.name;
    m_port->setPortName(record.systemLocation);
    m_port->setBaudRate(QSerialPort::Baud115200, QSerialPort::AllDirections);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setParity(QSerialPort::NoParity);
    if (!m_port->open(QIODevice::ReadWrite)) {
        qWarning().noquote().nospace() << "[SerialPort]: Failed to open the serial port " << m_name
                                       << "\r\n\terror: " << static_cast<int>(m_port->error());
        return false;
    }
    m_port->clear(QSerialPort::AllDirections);
    m_crashBlackOut.open((std::intptr_t)(m_port->handle())); // a number or a pointer, as the system has it
    connect(m_port, &QSerialPort::errorOccurred, this, &LVSerialPort::onPortError);
    connect(m_port, &QSerialPort::bytesWritten, this, &LVSerialPort::sendWaiting);
    return true;
}

void LVSerialPort::startPacing()
{
    m_writeTimer.start();
    m_dropReportTimer.start();
    m_paced = true;
    if (!m_port->isOpen())
        return;
    m_port->readAll(); // the end of the probe's answer is no press, and a full buffer would never signal
    m_port->setReadBufferSize(kReadBufferBytes);
}

void LVSerialPort::write(QByteArray bytes)
{
    if (m_dead || m_release || !m_port->isOpen())
        return;
    if (!m_paced) {
        m_port->write(bytes);
        return;
    }
    if (!m_waiting.isEmpty()) {
        ++m_dropped;
        reportDrops();
    }
    m_waiting = bytes;
    sendWaiting();
}

void LVSerialPort::sendWaiting()
{
    if (m_waiting.isEmpty() || m_dead || m_port->bytesToWrite() > 0)
        return; // bytesWritten() leads back here
    const qint64 delayUs = m_line.delayUs(nowUs(), m_waiting.size());
    if (delayUs > 0) {
        m_paceTimer.start(static_cast<int>((delayUs + 999) / 1000));
        return;
    }
    m_paceTimer.stop();
    const QByteArray frame = m_waiting;
    m_waiting.clear();
    transmit(frame);
    reportWrite();
}

void LVSerialPort::transmit(const QByteArray& bytes)
{
    m_port->write(bytes);
    m_line.sent(nowUs(), bytes.size());
}

void LVSerialPort::reportWrite()
{
    m_writeTimeSum += static_cast<double>(m_writeTimer.restart());
    ++m_writeCount;
    if (m_writeTimeSum > static_cast<double>(kReportMs) && m_writeCount >= 1) {
        qInfo().noquote().nospace() << "[[loop]][SerialPort]: Mean write time: "
                                    << m_writeTimeSum / m_writeCount << "ms";
        m_writeTimeSum = 0.0;
        m_writeCount = 0;
    }
}

void LVSerialPort::reportDrops()
{
    if (m_dropReportTimer.elapsed() < kReportMs)
        return;
    qInfo().noquote().nospace() << "[[loop]][SerialPort]: " << m_name << " could not carry "
                                << m_dropped - m_reportedDrops << " frames in " << m_dropReportTimer.restart()
                                << "ms";
    m_reportedDrops = m_dropped;
}

void LVSerialPort::onDevCmdArrival()
{
    if (!m_port->isOpen() || talksTooMuch())
        return;
    m_talkTimer.stop(); // nothing is left to come back for, and nothing to read is no press
    const QByteArray data = m_port->readAll();
    const QByteArray shown = data.left(kLoggedBytes);
    qDebug() << "*****Received some data from " << m_name << shown << "toint() " << shown.toInt(nullptr, 10)
             << " QByteArray::fromHex(00) " << QByteArray::fromHex("00");
    // The text before the first NUL decides: whatever follows a leading 0x00, it is a press.
    if (*data.constData() == '\0') {
        qDebug() << "======================Received click signal from" << m_name
                 << " rawData======================" << shown;
        emit deviceCommand1();
    } else {
        qDebug() << "======================Received a unknown data ======================" << shown;
    }
}

bool LVSerialPort::talksTooMuch()
{
    if (!m_talkWindow.isValid() || m_talkWindow.hasExpired(kTalkWindowMs)) {
        m_talkWindow.start();
        m_chunks = 0;
    }
    if (m_chunks < kChunksPerWindow) {
        ++m_chunks;
        return false;
    }
    if (!m_talkTimer.isActive()) {
        if (!std::exchange(m_toldOfTalk, true))
            qWarning().noquote() << "[SerialPort]:" << m_name << "talks without end and is read slowly";
        m_talkTimer.start(kTalkWindowMs);
    }
    return true;
}

std::optional<quint32> LVSerialPort::statusOf(QSerialPort::SerialPortError error)
{
    switch (static_cast<int>(error)) {
    case 0: // NoError
        return 0;
    case 7: // WriteError
    case 8: // ReadError
    case 9: // ResourceError
        return 2;
    case 1:  // DeviceNotFoundError
    case 2:  // PermissionError
    case 3:  // OpenError
    case 10: // UnsupportedOperationError
    case 11: // UnknownError
    case 12: // TimeoutError
    case 13: // NotOpenError
        return 3;
    default: // parity, framing and break say nothing about the device
        return std::nullopt;
    }
}

void LVSerialPort::onPortError(QSerialPort::SerialPortError error)
{
    // A hung-up port signals without end until it is closed: the first error is the only one that counts.
    if (m_dead)
        return;
    if (statusOf(error).value_or(0) != 0) {
        m_dead = true;
        m_waiting.clear();
        m_paceTimer.stop();
        QMetaObject::invokeMethod(this, &LVSerialPort::closeDead, Qt::QueuedConnection);
    }
    emit errorOccurred(error, m_port->errorString());
}

void LVSerialPort::closeDead()
{
    if (m_release)
        finishRelease(false);
    else
        closePort();
}

void LVSerialPort::closePort()
{
    m_crashBlackOut.close();
    if (m_port->isOpen())
        m_port->close();
}

void LVSerialPort::release(const QByteArray& black, QDeadlineTimer deadline,
                           std::shared_ptr<PortRelease> result)
{
    if (m_release)
        return;
    m_release = std::move(result);
    m_releaseDeadline = deadline;
    m_waiting.clear();
    m_paceTimer.stop();
    if (m_dead || !m_port->isOpen() || black.isEmpty()) {
        finishRelease(false);
        return;
    }
    // What was written before is at most half a frame ahead of it, so the last one need not wait.
    transmit(black);
    checkDrained();
}

void LVSerialPort::checkDrained()
{
    if (m_released)
        return;
    const qint64 backlogUs = m_line.backlogUs(nowUs());
    if (m_port->bytesToWrite() == 0 && backlogUs == 0) {
        QTimer::singleShot(kSettleMs, Qt::PreciseTimer, this, [this] { finishRelease(true); });
    } else if (m_releaseDeadline.remainingTime() <= kSettleMs) {
        m_port->clear(QSerialPort::AllDirections); // or closing would wait for the rest
        finishRelease(false);
    } else {
        const qint64 untilIdleMs = (backlogUs + 999) / 1000;
        m_drainTimer.start(static_cast<int>(
            qBound<qint64>(kDrainPollMs, untilIdleMs, m_releaseDeadline.remainingTime() - kSettleMs)));
    }
}

void LVSerialPort::finishRelease(bool blackWritten)
{
    if (std::exchange(m_released, true))
        return;
    m_drainTimer.stop();
    closePort();
    m_release->blackWritten = blackWritten && !m_dead;
    m_release->done.release();
}
