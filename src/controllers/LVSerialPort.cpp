#include "controllers/LVSerialPort.h"

#include <QDebug>

#include <utility>

namespace {

constexpr qint64 kReportMs = 5000;
constexpr int kDrainPollMs = 2;
constexpr int kSettleMs = 15; ///< lets the adapter pass on its last bytes before the port closes
constexpr int kLoggedBytes = 256;

} // namespace

LVSerialPort::LVSerialPort(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<QByteArray>("QByteArray");
    qRegisterMetaType<SerialLine::SerialPortError>("SerialLine::SerialPortError");
    m_clock.start();
    for (QTimer* timer : {&m_lineTimer, &m_talkTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_lineTimer, &QTimer::timeout, this, &LVSerialPort::advance);
    connect(&m_talkTimer, &QTimer::timeout, this, &LVSerialPort::onDevCmdArrival);
}

LVSerialPort::~LVSerialPort()
{
    m_line.disconnect(this);
    close(false);
}

bool LVSerialPort::init(const SerialPortRecord& record)
{
    m_name = record.name;
    if (!m_line.open(record.systemLocation)) {
        qWarning().noquote().nospace() << "[SerialPort]: Failed to open the serial port " << m_name
                                       << "\r\n\terror: " << static_cast<int>(m_line.error());
        return false;
    }
    m_crashBlackOut.open(m_line.handle());
    connect(&m_line, &SerialLine::errorOccurred, this, &LVSerialPort::onPortError);
    connect(&m_line, &SerialLine::bytesWritten, this, &LVSerialPort::advance);
    m_state = State::Probing;
    return true;
}

void LVSerialPort::startPacing()
{
    m_writeTimer.start();
    if (m_state != State::Probing)
        return;
    m_state = State::Paced;
    m_line.readAll(); // the end of the probe's answer is no press, and a full buffer would never signal
}

void LVSerialPort::write(QByteArray bytes)
{
    if (m_state == State::Probing)
        m_line.write(bytes);
    if (m_state != State::Paced)
        return;
    if (m_pacer.offer(bytes))
        ++m_dropped;
    if (const qint64 us = m_pacer.earlyUs(nowUs()))
        emit lineBusy(static_cast<int>((us + 999) / 1000));
    advance();
}

void LVSerialPort::advance()
{
    if (m_state == State::Releasing)
        return finishWhenDrained();
    if (m_state != State::Paced || !m_pacer.isWaiting() || m_line.bytesToWrite() > 0)
        return;
    const qint64 delayUs = m_pacer.delayUs(nowUs());
    if (delayUs > 0) {
        m_lineTimer.start(static_cast<int>((delayUs + 999) / 1000));
        return;
    }
    m_line.write(m_pacer.take(nowUs()));
    reportWrite();
}

void LVSerialPort::reportWrite()
{
    m_writeTimeSum += static_cast<double>(m_writeTimer.restart());
    ++m_writeCount;
    if (m_writeTimeSum <= static_cast<double>(kReportMs))
        return;
    const double mean = m_writeTimeSum / m_writeCount;
    if (m_writeBrake.isDue(mean))
        qInfo().noquote().nospace() << "[[loop]][SerialPort]: Mean write time: " << mean << "ms";
    const quint64 dropped = m_dropped - m_reportedDrops;
    m_reportedDrops += dropped;
    if (dropped > 0 && m_dropBrake.isDue(static_cast<double>(dropped) / m_writeTimeSum))
        qInfo().noquote().nospace() << "[[loop]][SerialPort]: " << m_name << " could not carry " << dropped
                                    << " frames in " << m_writeTimeSum << "ms";
    m_writeTimeSum = 0.0;
    m_writeCount = 0;
}

void LVSerialPort::onDevCmdArrival()
{
    if (!m_line.isOpen())
        return;
    if (const int delayMs = m_talk.delayMs(m_clock.elapsed())) {
        if (!std::exchange(m_toldOfTalk, true))
            qWarning().noquote() << "[SerialPort]:" << m_name << "talks without end and is read slowly";
        m_talkTimer.start(delayMs);
        return;
    }
    m_talkTimer.stop(); // nothing is left to come back for, and nothing to read is no press
    const QByteArray data = m_line.readAll();
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

std::optional<quint32> LVSerialPort::statusOf(SerialLine::SerialPortError error)
{
    const auto isBetween = [error](int first, int last) { return error >= first && error <= last; };
    if (error == SerialLine::NoError)
        return 0;
    if (isBetween(SerialLine::WriteError, SerialLine::ResourceError))
        return 2;
    if (isBetween(SerialLine::DeviceNotFoundError, SerialLine::OpenError) ||
        isBetween(SerialLine::UnsupportedOperationError, SerialLine::NotOpenError))
        return 3;
    return std::nullopt; // parity, framing and break say nothing about the device
}

void LVSerialPort::onPortError(SerialLine::SerialPortError error)
{
    // A hung-up port signals without end until it is closed: the first error is the only one that counts.
    if (m_state == State::Dead)
        return;
    if (statusOf(error).value_or(0) != 0) {
        m_state = State::Dead;
        // The line may still be there: its strip must not stay lit until it is found again, or for good.
        const auto drop = [this] {
            m_crashBlackOut.send();
            close(false);
        };
        QMetaObject::invokeMethod(this, drop, Qt::QueuedConnection);
    }
    emit errorOccurred(error, m_line.errorString());
}

void LVSerialPort::tellWhenSent(std::shared_ptr<QSemaphore> sent, QDeadlineTimer deadline)
{
    if (deadline.hasExpired())
        return; // nobody waits any more, and the line may be stuck for good
    const bool isBusy = m_pacer.isWaiting() || m_line.bytesToWrite() > 0 || busyMs() > 0;
    if (m_state != State::Paced || !isBusy) {
        QTimer::singleShot(kSettleMs, Qt::PreciseTimer, this, [sent] { sent->release(); });
        return;
    }
    const auto again = static_cast<int>(qMax<qint64>(kDrainPollMs, busyMs()));
    QTimer::singleShot(again, Qt::PreciseTimer, this,
                       [this, sent, deadline] { tellWhenSent(sent, deadline); });
}

void LVSerialPort::release(const QByteArray& black, QDeadlineTimer deadline,
                           std::shared_ptr<PortRelease> result)
{
    m_release = std::move(result);
    m_releaseDeadline = deadline;
    if ((m_state != State::Paced && m_state != State::Probing) || black.isEmpty())
        return close(false);
    m_state = State::Releasing;
    // What was written before is at most half a frame ahead of it, so the last one need not wait.
    m_pacer.offer(black);
    m_line.write(m_pacer.take(nowUs()));
    finishWhenDrained();
}

void LVSerialPort::finishWhenDrained()
{
    const qint64 leftMs = m_releaseDeadline.remainingTime() - kSettleMs;
    if (m_line.bytesToWrite() == 0 && busyMs() == 0) {
        QTimer::singleShot(kSettleMs, Qt::PreciseTimer, this, [this] { close(true); });
    } else if (leftMs <= 0) {
        m_line.clear(); // or closing would wait for the rest
        close(false);
    } else {
        m_lineTimer.start(static_cast<int>(qBound<qint64>(kDrainPollMs, busyMs(), leftMs)));
    }
}

void LVSerialPort::close(bool blackWritten)
{
    m_lineTimer.stop();
    m_crashBlackOut.close();
    m_line.close();
    const bool worked = m_state == State::Releasing;
    if (m_state != State::Dead)
        m_state = State::Closed;
    if (const auto release = std::exchange(m_release, nullptr)) {
        release->blackWritten = blackWritten && worked;
        release->done.release();
    }
}
