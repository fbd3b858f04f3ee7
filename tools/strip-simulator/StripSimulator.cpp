#include "StripSimulator.h"

#include "LinePacer.h"
#include "SerialPortsFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int kPaceMs = 3;    // between two looks at a line that is paced
constexpr int kReopenMs = 10; // between two looks for a host that opens the port again
constexpr int kReadBytes = 4096;
constexpr int kEndlessBytes = 100000; // which nobody waits for
const QByteArray kTail = QByteArrayLiteral("\r\n");
const QByteArray kGarbageReply = QByteArrayLiteral("\x7f\x11+READY\r\n");

} // namespace

StripSimulator::StripSimulator(const Options& options, QObject* parent)
    : QObject(parent)
    , m_options(options)
    , m_wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    qRegisterMetaType<StripFrame>();
    m_shown.resize(options.ledCount);
}

StripSimulator::~StripSimulator()
{
    unplug();
    ::close(m_wake);
}

StripSimulator::Options StripSimulator::options() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_options;
}

void StripSimulator::setReplyMode(ReplyMode mode)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_options.replyMode = mode;
}

void StripSimulator::setHangUpAfterBytes(qint64 bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_options.hangUpAfterBytes = bytes;
}

bool StripSimulator::plugIn()
{
    const std::lock_guard<std::mutex> plugging(m_plugging);
    if (isPlugged())
        return true;
    if (SerialPortsFile(m_options.portsFile).path().isEmpty())
        return false;
    if (m_thread.joinable())
        m_thread.join(); // the one that hung up
    const int master = openPty();
    if (master < 0)
        return false;

    Options options;
    QString location;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        options = m_options;
        location = m_location;
        m_master = master;
        m_parser = StripParser();
        m_replies.clear();
    }
    const bool listed =
        SerialPortsFile(options.portsFile).add(options.portName, location, options.description);
    eventfd_t ignored;
    ::eventfd_read(m_wake, &ignored);
    m_stopping = false;
    m_thread = std::thread([this, master, options] {
        serve(master, options.hangUpAfterBytes, LinePacer(options.bytesPerSecond));
    });
    QMetaObject::invokeMethod(
        this, [this, location] { emit plugged(location); }, Qt::QueuedConnection);
    return listed;
}

void StripSimulator::unplug()
{
    const std::lock_guard<std::mutex> plugging(m_plugging);
    if (!m_thread.joinable())
        return;
    m_stopping = true;
    ::eventfd_write(m_wake, 1);
    m_thread.join();
    closeLine();
}

bool StripSimulator::isPlugged() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_master >= 0;
}

QString StripSimulator::location() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_location;
}

bool StripSimulator::pressButton()
{
    return send(QByteArray(1, '\0'));
}

bool StripSimulator::send(const QByteArray& bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_master >= 0 &&
           ::write(m_master, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
}

QVector<StripFrame> StripSimulator::frames() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return QVector<StripFrame>(m_frames.begin(), m_frames.end());
}

StripFrame StripSimulator::lastFrame() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_frames.empty() ? StripFrame() : m_frames.back();
}

QVector<LV_RGB> StripSimulator::shownColors() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_shown;
}

bool StripSimulator::shows(LV_RGB color, int leds) const
{
    const QVector<LV_RGB> shown = shownColors();
    return !shown.isEmpty() && (leds == 0 || shown.size() == leds) && shown.count(color) == shown.size();
}

bool StripSimulator::isLit() const
{
    const QVector<LV_RGB> shown = shownColors();
    return shown.count(LV_RGB{}) < shown.size();
}

StripCounters StripSimulator::counters() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_counters;
}

void StripSimulator::clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_frames.clear();
    m_counters = StripCounters();
}

double StripSimulator::nowMs()
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Makes a pty in raw mode and a link to it. Nobody holds the host's side open, so that a host which closes
/// the port, or dies, is noticed.
int StripSimulator::openPty()
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    char path[128] = "";
    termios settings{};
    if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0 ||
        ::ptsname_r(master, path, sizeof path) != 0 || ::tcgetattr(master, &settings) != 0) {
        qWarning() << "[StripSimulator]: No pty:" << qt_error_string(errno);
        if (master >= 0)
            ::close(master);
        return -1;
    }
    ::cfmakeraw(&settings);
    ::tcsetattr(master, TCSANOW, &settings); // acts on the host's side

    // The system gives the number of a pty to the next one that asks. A host that still believes in the old
    // port must not open somebody else's, so every plugging in has a path of its own.
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QString list = QFileInfo(SerialPortsFile(m_options.portsFile).path()).absoluteFilePath();
    const QString link = QStringLiteral("%1.%2.%3").arg(list, m_options.portName).arg(++m_pluggings);
    QFile::remove(link); // of one that was killed
    if (!QFile::link(QString::fromLocal8Bit(path), link)) {
        qWarning().noquote() << "[StripSimulator]: Failed to make" << link << qt_error_string(errno);
        ::close(master);
        return -1;
    }
    m_location = link;
    return master;
}

/// The strip's thread: reads the line until it is unplugged or hangs up.
void StripSimulator::serve(int master, qint64 hangUpAfter, LinePacer pacer)
{
    QByteArray buffer;
    while (!m_stopping) {
        if (sendDueReplies()) {
            closeLine();
            return;
        }
        if (!waitForBytes(master, pacer))
            continue;
        qint64 most = pacer.isPaced() ? std::min(pacer.available(nowMs()), kReadBytes) : kReadBytes;
        if (hangUpAfter > 0)
            most = std::min(most, hangUpAfter - m_parser.totalBytes());
        if (most <= 0)
            continue;
        buffer.resize(static_cast<int>(most));
        const auto got = ::read(master, buffer.data(), static_cast<size_t>(most));
        if (pacer.isPaced() && got < most)
            pacer.idle();
        if (got <= 0)
            continue;
        if (pacer.isPaced())
            pacer.took(static_cast<int>(got));
        buffer.truncate(static_cast<int>(got));
        consume(buffer);
        if (hangUpAfter > 0 && m_parser.totalBytes() >= hangUpAfter) {
            closeLine();
            return;
        }
    }
}

/// True when something may be read now.
bool StripSimulator::waitForBytes(int master, LinePacer& pacer)
{
    if (pacer.isBusy()) {
        sleepMs(kPaceMs);
        return true;
    }
    pollfd fds[] = {{master, POLLIN, 0}, {m_wake, POLLIN, 0}};
    ::poll(fds, 2, msUntilReply());
    if ((fds[0].revents & POLLIN) != 0) {
        if (!pacer.isPaced())
            return true;
        pacer.begin(nowMs()); // the bytes take their time from here
    } else if (fds[0].revents != 0) {
        forgetHost();
        sleepMs(kReopenMs); // the hang-up is reported until somebody opens the port
    }
    return false;
}

void StripSimulator::consume(const QByteArray& bytes)
{
    const double now = nowMs();
    const std::lock_guard<std::mutex> lock(m_mutex);
    const qint64 garbageBefore = m_parser.garbageBytes();
    const StripParser::Events events = m_parser.feed(bytes, now);
    m_counters.bytes += bytes.size();
    m_counters.garbageBytes += m_parser.garbageBytes() - garbageBefore;
    for (int i = 0; i < events.probes; ++i)
        queueReply(now);
    for (const StripFrame& frame : events.frames)
        takeFrame(frame);
}

/// With m_mutex held.
void StripSimulator::takeFrame(const StripFrame& frame)
{
    if (m_counters.frames > 0 && !m_frames.empty())
        m_counters.longestGapMs =
            std::max(m_counters.longestGapMs, frame.lastByteMs - m_frames.back().lastByteMs);
    ++m_counters.frames;
    m_frames.push_back(frame);
    if (m_frames.size() > static_cast<size_t>(std::max(m_options.keptFrames, 1)))
        m_frames.pop_front();
    if (m_options.ledCount <= 0 && m_shown.size() < frame.colors.size())
        m_shown.resize(frame.colors.size());
    std::copy_n(frame.colors.begin(), std::min(frame.colors.size(), m_shown.size()), m_shown.begin());
    QMetaObject::invokeMethod(
        this, [this, frame] { emit frameReceived(frame); }, Qt::QueuedConnection);
}

/// With m_mutex held.
void StripSimulator::queueReply(double nowMs)
{
    ++m_counters.probes;
    QMetaObject::invokeMethod(this, &StripSimulator::probed, Qt::QueuedConnection);
    QByteArray reply = m_options.model;
    if (!m_options.serial.isEmpty())
        reply += ',' + m_options.serial;
    reply += kTail;
    const int half = reply.size() / 2;
    const double due = nowMs + m_options.replyDelayMs;
    switch (m_options.replyMode) {
    case ReplyMode::Normal:
        m_replies.push_back({due, reply, false});
        break;
    case ReplyMode::Silent:
        break;
    case ReplyMode::Garbage:
        m_replies.push_back({due, kGarbageReply, false});
        break;
    case ReplyMode::TwoChunks:
        queuePieces(reply, half, due);
        break;
    case ReplyMode::ByteByByte:
        queuePieces(reply, 1, due);
        break;
    case ReplyMode::Endless:
        queuePieces(reply + QByteArray(kEndlessBytes, 'x'), 1, due);
        break;
    case ReplyMode::HangUpInReply:
        m_replies.push_back({due, reply.left(half), true});
        break;
    }
}

/// With m_mutex held.
void StripSimulator::queuePieces(const QByteArray& reply, int pieceSize, double dueMs)
{
    for (int at = 0; at < reply.size(); at += pieceSize, dueMs += m_options.chunkGapMs)
        m_replies.push_back({dueMs, reply.mid(at, pieceSize), false});
}

/// True when the strip hangs up behind what it has sent.
bool StripSimulator::sendDueReplies()
{
    const double now = nowMs();
    for (;;) {
        Reply reply;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_replies.empty() || m_replies.front().dueMs > now)
                return false;
            reply = m_replies.front();
            m_replies.pop_front();
        }
        send(reply.bytes);
        if (reply.thenHangUp)
            return true;
    }
}

int StripSimulator::msUntilReply() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_replies.empty())
        return -1;
    return std::max(0, static_cast<int>(std::ceil(m_replies.front().dueMs - nowMs())));
}

/// Ends early when the strip is unplugged.
void StripSimulator::sleepMs(int ms) const
{
    pollfd fd{m_wake, POLLIN, 0};
    ::poll(&fd, 1, ms);
}

/// The host has closed the port: an unfinished frame will not go on, an unsent reply has no reader.
void StripSimulator::forgetHost()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const qint64 garbageBefore = m_parser.garbageBytes();
    m_parser.reset();
    m_counters.garbageBytes += m_parser.garbageBytes() - garbageBefore;
    m_replies.clear();
}

void StripSimulator::closeLine()
{
    int master = -1;
    QString location;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::swap(master, m_master);
        std::swap(location, m_location);
    }
    if (master < 0)
        return;
    SerialPortsFile(m_options.portsFile).remove(m_options.portName, location);
    QFile::remove(location);
    ::close(master); // last: from here on its number may be somebody else's
    QMetaObject::invokeMethod(this, &StripSimulator::unplugged, Qt::QueuedConnection);
}
