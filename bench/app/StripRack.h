#pragma once

#include "SerialPortsFile.h"
#include "StripParser.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/epoll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>

/// Many strips on pseudo terminals that one thread serves, woken by what comes alone, so that fifty of them
/// cost little beside the program. What a strip gets is read at once, and counts as carried when a line of
/// 11520 bytes a second would have brought it; a backlog that grows shows a program that sends too much.
/// The strips live as long as the rack. Times are CLOCK_MONOTONIC in milliseconds.
class StripRack
{
public:
    static constexpr double kBytesPerMs = 11.52;

    /// What one strip has seen since the last begin().
    struct Seen
    {
        qint64 frames = 0;
        qint64 bytes = 0;
        qint64 garbageBytes = 0;
        double litMs = 0;            ///< when the first frame with light was complete; 0: none
        double shownMs = 0;          ///< when the first was most of whose LEDs show the wanted colour
        double longestBacklogMs = 0; ///< how far the line was behind what was sent
        double lastFrameMs = 0;
        double longestGapMs = 0;
    };

    StripRack(const QString& portsFile, int strips)
        : m_epoll(::epoll_create1(EPOLL_CLOEXEC))
    {
        for (int i = 0; i < strips; ++i)
            addStrip(portsFile, i);
        m_thread = std::thread([this] { serve(); });
    }
    ~StripRack()
    {
        m_stopping = true;
        m_thread.join();
        for (const Strip& strip : m_strips) {
            ::close(strip.master);
            ::close(strip.hostSide);
        }
        ::close(m_epoll);
    }
    Q_DISABLE_COPY(StripRack)

    /// As the program names them.
    static QString id(int strip) { return QString::asprintf("LV0127:%08X", unsigned(strip + 1)); }
    bool isWhole() const { return m_isWhole; }

    /// Forgets what was seen, and looks for the colour from now on.
    void begin(LV_RGB wanted = {})
    {
        const std::lock_guard lock(m_mutex);
        m_wanted = wanted;
        for (Strip& strip : m_strips)
            strip.seen = {};
    }
    std::vector<Seen> seen() const
    {
        const std::lock_guard lock(m_mutex);
        std::vector<Seen> all;
        for (const Strip& strip : m_strips)
            all.push_back(strip.seen);
        return all;
    }
    /// Waits until that holds for every strip; false when it takes longer.
    template <typename Is>
    bool waitForAll(int ms, Is is) const
    {
        for (QDeadlineTimer patience(ms); !patience.hasExpired(); QThread::msleep(5)) {
            const std::vector<Seen> all = seen();
            if (std::all_of(all.begin(), all.end(), is))
                return true;
        }
        return false;
    }

    static double nowMs()
    {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
    }

private:
    static constexpr int kNear = 25; ///< levels: what moves beside an LED colours it a little
    static constexpr int kLookMs = 100;

    struct Strip
    {
        int master = -1;
        int hostSide = -1; ///< kept open, so that no hang-up is reported while the program is not there
        QByteArray answer;
        StripParser parser;
        double silentAtMs = 0; ///< when the line has carried all that was sent
        Seen seen;
    };

    void addStrip(const QString& portsFile, int number)
    {
        Strip strip;
        strip.master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        char path[128] = "";
        termios settings{};
        const bool isMade = strip.master >= 0 && ::grantpt(strip.master) == 0 &&
                            ::unlockpt(strip.master) == 0 &&
                            ::ptsname_r(strip.master, path, sizeof path) == 0;
        strip.hostSide = isMade ? ::open(path, O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
        if (strip.hostSide >= 0 && ::tcgetattr(strip.hostSide, &settings) == 0) {
            ::cfmakeraw(&settings);
            ::tcsetattr(strip.hostSide, TCSANOW, &settings);
        }
        const QString name = QStringLiteral("ttyRACK%1").arg(number, 2, 10, QLatin1Char('0'));
        const QString link = portsFile + u'.' + name;
        m_isWhole = m_isWhole && strip.hostSide >= 0 && QFile::link(QString::fromLocal8Bit(path), link) &&
                    SerialPortsFile(portsFile).add(name, link, QStringLiteral("USB-SERIAL CH340"));
        strip.answer = QByteArray("LV0127,\0\0\0", 10) + char(number + 1) + "\r\n";
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.u32 = uint32_t(number);
        ::epoll_ctl(m_epoll, EPOLL_CTL_ADD, strip.master, &event);
        m_strips.push_back(std::move(strip));
    }

    void serve()
    {
        std::vector<epoll_event> events(m_strips.size());
        while (!m_stopping) {
            const int ready = ::epoll_wait(m_epoll, events.data(), int(events.size()), kLookMs);
            for (int i = 0; i < ready; ++i)
                read(m_strips[events[size_t(i)].data.u32]);
        }
    }

    void read(Strip& strip)
    {
        QByteArray bytes(4096, Qt::Uninitialized);
        const auto got = ::read(strip.master, bytes.data(), size_t(bytes.size()));
        if (got <= 0)
            return;
        bytes.truncate(int(got));
        const double now = nowMs();
        strip.silentAtMs = std::max(strip.silentAtMs, now) + double(got) / kBytesPerMs;
        const qint64 garbageBefore = strip.parser.garbageBytes();
        const StripParser::Events events = strip.parser.feed(bytes, now);
        for (int i = 0; i < events.probes; ++i)
            m_isWhole = ::write(strip.master, strip.answer.constData(), size_t(strip.answer.size())) > 0;
        const std::lock_guard lock(m_mutex);
        Seen& seen = strip.seen;
        seen.bytes += got;
        seen.garbageBytes += strip.parser.garbageBytes() - garbageBefore;
        seen.longestBacklogMs = std::max(seen.longestBacklogMs, strip.silentAtMs - now);
        for (const StripFrame& frame : events.frames) {
            const double ms =
                strip.silentAtMs - double(strip.parser.totalBytes() - frame.totalBytes) / kBytesPerMs;
            take(seen, frame.colors, ms);
        }
    }

    /// With m_mutex held.
    void take(Seen& seen, const QVector<LV_RGB>& colors, double ms) const
    {
        if (seen.frames++ > 0)
            seen.longestGapMs = std::max(seen.longestGapMs, ms - seen.lastFrameMs);
        seen.lastFrameMs = ms;
        const auto isNear = [](int a, int b) { return std::abs(a - b) <= kNear; };
        const auto near = std::count_if(colors.begin(), colors.end(), [&](LV_RGB each) {
            return isNear(each.red, m_wanted.red) && isNear(each.green, m_wanted.green) &&
                   isNear(each.blue, m_wanted.blue);
        });
        if (seen.shownMs == 0 && near > colors.size() / 2)
            seen.shownMs = ms;
        if (seen.litMs == 0 && colors.count(LV_RGB{}) < colors.size())
            seen.litMs = ms;
    }

    const int m_epoll;
    std::vector<Strip> m_strips;
    std::atomic<bool> m_isWhole{true};
    std::atomic<bool> m_stopping{false};
    mutable std::mutex m_mutex; ///< guards what was seen and wanted
    LV_RGB m_wanted;
    std::thread m_thread;
};
