#include "controllers/ProbeDialogue.h"

#include "controllers/LVSerialPort.h"

ProbeDialogue::ProbeDialogue(const SerialPortRecord& record, QObject* parent)
    : QObject(parent)
    , m_record(record)
    , m_serial(new LVSerialPort)
{
    m_replyTimer.setSingleShot(true);
    m_tickTimer.setTimerType(Qt::PreciseTimer);
}

ProbeDialogue::~ProbeDialogue()
{
    dropPort();
}

bool ProbeDialogue::start(int replyMs, int questions, int silenceMs)
{
    if (!m_serial->init(m_record))
        return false;
    // Queued, so that the port may change its thread in the handler.
    connect(m_serial->line(), &SerialLine::readyRead, this, &ProbeDialogue::onReadyRead,
            Qt::QueuedConnection);
    connect(m_serial, &LVSerialPort::errorOccurred, this, &ProbeDialogue::onPortError, Qt::QueuedConnection);
    connect(&m_replyTimer, &QTimer::timeout, this, &ProbeDialogue::onSilence);
    m_replyTimer.setInterval(replyMs);
    m_questions = questions;
    ask();
    connect(&m_tickTimer, &QTimer::timeout, this, [this] {
        m_collector.tick();
        onReadyRead();
    });
    m_tickTimer.setInterval(silenceMs / ReplyCollector::kTicksOfSilence);
    return true;
}

SerialLine::SerialPortError ProbeDialogue::openError() const
{
    return m_serial->line()->error();
}

QString ProbeDialogue::openErrorString() const
{
    return m_serial->line()->errorString();
}

LVSerialPort* ProbeDialogue::takePort()
{
    QObject::disconnect(m_serial->line(), nullptr, this, nullptr);
    QObject::disconnect(m_serial, nullptr, this, nullptr);
    return std::exchange(m_serial, nullptr);
}

void ProbeDialogue::dropPort()
{
    finish();
    delete std::exchange(m_serial, nullptr); // no handler of ours runs within a signal of the port
}

void ProbeDialogue::ask()
{
    --m_questions;
    m_serial->write(QByteArray(kQuestion));
    m_replyTimer.start();
}

void ProbeDialogue::onSilence()
{
    onReadyRead(); // an answer that a busy program has not come to is in time
    if (m_finished || !m_collector.isEmpty())
        return;
    if (m_questions > 0)
        ask(); // the first question may have been lost on a device that was still starting
    else if (finish())
        emit timedOut();
}

void ProbeDialogue::onReadyRead()
{
    onPortError();  // an answer from a port that is gone by now is of no use
    if (m_finished) // was queued before; the port is somebody else's or gone
        return;
    m_collector.add(m_serial->line()->readAll());
    if (m_collector.isEmpty())
        return;
    m_replyTimer.stop();
    if (!m_tickTimer.isActive())
        m_tickTimer.start();
    if (m_collector.isOver() && finish())
        emit answered(m_collector.reply());
}

void ProbeDialogue::onPortError()
{
    if (!m_finished && m_serial->isDead() && finish())
        emit lost();
}

bool ProbeDialogue::finish()
{
    m_replyTimer.stop();
    m_tickTimer.stop();
    return !std::exchange(m_finished, true);
}
