#include "SimulatedStrips.h"

#include "VirtualTime.h"
#include "controllers/PortHolder.h"
#include "controllers/SerialLine.h"

#include <QThread>
#include <QTimer>
#include <algorithm>
#include <vector>

namespace {

constexpr qint64 kByteNs = 1000000000 / 11520;
constexpr qint64 kForgetNs = 200000000; ///< a strip drops a frame that goes no further
constexpr int kMostLeds = 400;
constexpr int kLateMs = 7000;
constexpr int kPauseMs = 50; ///< behind an answer
constexpr int kBusyMs = 11;  ///< for longer than the program's looks at an answer are apart

std::vector<SimulatedStrip*> s_strips;
SimulatedPorts* s_ports = nullptr;

} // namespace

struct SerialLine::Private final : LineEnd
{
    explicit Private(SerialLine* owner)
        : line(owner)
    {
    }
    void receive(const QByteArray& bytes) override
    {
        input += bytes;
        emit line->readyRead();
    }
    void detach() override { strip = nullptr; }
    void fail() override
    {
        if (!isOpen)
            return;
        error = ResourceError;
        emit line->errorOccurred(error);
    }
    void goOn() override
    {
        if (isOpen)
            line->write({});
    }

    SerialLine* line;
    SimulatedStrip* strip = nullptr; ///< null while the line is open: it has gone
    bool isOpen = false;
    QByteArray input;
    QByteArray output; ///< what a jammed line has not taken
    SerialPortError error = NoError;
};

SerialLine::SerialLine(QObject* parent)
    : QObject(parent)
    , d(new Private(this))
{
}

SerialLine::~SerialLine()
{
    close();
}

bool SerialLine::open(const QString& location)
{
    SimulatedStrip* strip = SimulatedStrip::at(location);
    d->error = !strip ? DeviceNotFoundError : strip->isOpen() ? PermissionError : NoError;
    if (d->error != NoError)
        return false;
    d->strip = strip;
    d->isOpen = true;
    strip->open(this, d.get());
    return true;
}

bool SerialLine::isOpen() const
{
    return d->isOpen;
}

void SerialLine::close()
{
    d->output.clear();
    d->input.clear();
    d->isOpen = false;
    if (SimulatedStrip* strip = std::exchange(d->strip, nullptr))
        strip->close();
}

std::intptr_t SerialLine::handle() const
{
    return reinterpret_cast<std::intptr_t>(this);
}

void SerialLine::write(const QByteArray& bytes)
{
    d->output += bytes;
    if (!d->isOpen || !d->strip || d->strip->isJammed())
        return;
    d->strip->take(std::exchange(d->output, QByteArray()));
    QMetaObject::invokeMethod(this, &SerialLine::bytesWritten, Qt::QueuedConnection);
}

qint64 SerialLine::bytesToWrite() const
{
    return d->output.size();
}

QByteArray SerialLine::readAll()
{
    return std::exchange(d->input, QByteArray());
}

void SerialLine::clear()
{
    d->output.clear();
    d->input.clear();
}

SerialLine::SerialPortError SerialLine::error() const
{
    return d->error;
}

QString SerialLine::errorString() const
{
    return QString::number(d->error);
}

SimulatedStrip::SimulatedStrip(int number)
    : m_number(number)
{
    s_strips.push_back(this);
}

QString SimulatedStrip::id() const
{
    return QStringLiteral("LV0127:0A") + QString::number(m_number, 16).rightJustified(2, '0').toUpper();
}

void SimulatedStrip::plugIn(const QString& portName)
{
    m_port = portName;
    m_parser.reset();
    m_colors.clear();
    m_answeredNs = 0;
}

void SimulatedStrip::unplug(int tellAfterMs)
{
    m_port.clear();
    m_isJammed = false;
    if (m_end) {
        m_end->detach();
        QTimer::singleShot(tellAfterMs, Qt::PreciseTimer, m_line, [end = m_end] { end->fail(); });
        close();
    }
    m_colors.clear();
}

bool SimulatedStrip::isTalking() const
{
    return VirtualTime::nowNs() <= m_answeredNs;
}

void SimulatedStrip::say(const QByteArray& bytes)
{
    if (!isTalking())
        say(bytes, 0);
}

void SimulatedStrip::say(const QByteArray& bytes, int afterMs)
{
    if (m_line)
        QTimer::singleShot(afterMs, Qt::PreciseTimer, m_line, [this, bytes, end = m_end] {
            if (m_end == end)
                end->receive(bytes);
        });
}

void SimulatedStrip::jam(bool jammed)
{
    m_isJammed = jammed;
    if (m_line)
        QTimer::singleShot(0, m_line, [end = m_end] { end->goOn(); });
}

const QVector<LV_RGB>& SimulatedStrip::colors()
{
    catchUp();
    return m_colors;
}

bool SimulatedStrip::isBlack()
{
    const auto& shown = colors();
    return std::all_of(shown.begin(), shown.end(), [](LV_RGB led) { return led == LV_RGB{}; });
}

SimulatedStrip* SimulatedStrip::at(const QString& location)
{
    for (SimulatedStrip* each : s_strips) {
        if (each->isPlugged() && location == each->m_port)
            return each;
    }
    return nullptr;
}

void SimulatedStrip::open(QObject* line, LineEnd* end)
{
    m_line = line;
    m_end = end;
    m_lastByteNs = 0;
}

void SimulatedStrip::close()
{
    catchUp();
    m_onTheWay.clear();
    m_line = nullptr;
    m_end = nullptr;
}

void SimulatedStrip::take(const QByteArray& bytes)
{
    catchUp();
    m_lastByteNs = qMax<qint64>(m_lastByteNs, VirtualTime::nowNs());
    for (const char byte : bytes)
        m_onTheWay.emplace_back(m_lastByteNs += kByteNs, byte);
    if (bytes == "Moni-A") // nobody may look at the strip until it has answered
        QTimer::singleShot(1, Qt::PreciseTimer, m_line, [this] { catchUp(); });
}

void SimulatedStrip::catchUp()
{
    const qint64 now = VirtualTime::nowNs();
    while (!m_onTheWay.empty() && m_onTheWay.front().first <= now) {
        QByteArray run;
        const qint64 first = m_onTheWay.front().first;
        while (!m_onTheWay.empty() && m_onTheWay.front().first <= std::min(now, first + kForgetNs)) {
            run += m_onTheWay.front().second;
            m_onTheWay.pop_front();
        }
        if (first > m_heardNs + kForgetNs)
            m_parser.reset();
        m_heardNs = first + (run.size() - 1) * kByteNs;
        const StripParser::Events events = m_parser.feed(run, 0);
        for (const StripFrame& frame : events.frames) {
            m_colors.resize(std::max(m_colors.size(), std::min(kMostLeds, frame.colors.size())));
            std::copy_n(frame.colors.begin(), std::min(kMostLeds, frame.colors.size()), m_colors.begin());
        }
        if (events.probes > 0)
            reply();
    }
}

void SimulatedStrip::reply()
{
    const QByteArray whole = "LV0127," + QByteArray::fromHex(id().section(':', 1).toLatin1()) + "\r\n";
    const int lastMs = m_answer == Late ? kLateMs : m_answer == Cut ? 3 + 20 * whole.size() : 3;
    m_answeredNs = VirtualTime::nowNs() + (lastMs + kPauseMs) * qint64(1000000);
    switch (m_answer) {
    case Prompt:
        return say(whole, 3);
    case Late:
        return say(whole, kLateMs);
    case Cut: // with pauses within what ends an answer
        for (int i = 0; i < whole.size(); ++i)
            say(whole.mid(i, 1), 3 + 20 * i);
        return;
    case Garbage:
        return say(QByteArray::fromHex("ff00fe4c56"), 3);
    case Never:
        return;
    case Parting:
        m_answer = Prompt;
        say(whole, 3);
        QTimer::singleShot(3 + m_partMs, Qt::PreciseTimer, m_line, [this] {
            unplug(0);
            QThread::msleep(kBusyMs);
        });
        return;
    }
}

QList<SerialPortRecord> SimulatedStrip::ports()
{
    QList<SerialPortRecord> all;
    for (const SimulatedStrip* each : s_strips) {
        if (each->isPlugged())
            all.append({each->m_port, each->m_port, QStringLiteral("CH340"), each->m_port});
    }
    return all;
}

SimulatedPorts::SimulatedPorts()
{
    s_ports = this;
}

SimulatedPorts::~SimulatedPorts()
{
    s_ports = nullptr;
}

void SimulatedPorts::tellArrival(const QString& portName)
{
    if (s_ports)
        emit s_ports->portArrived(portName);
}

std::unique_ptr<ISerialPortSource> CombinedSerialPortSource::createDefault()
{
    return std::make_unique<SimulatedPorts>();
}

PortHolder holderOf(const QString&, const PortHolder&)
{
    return {};
}

PortHolder certainHolderOf(const QString&, const PortHolder&)
{
    return {};
}

QString groupInNeed(const QString&)
{
    return {};
}
