// How soon the window of the whole program is there, and where the time goes.
// Usage: scenario_window [starts, default 7]
#include "ProgramUnderTest.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QThread>
#include <QVector>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <xcb/xcb.h>

namespace {

constexpr int kLimitMs = 700;
constexpr int kPatienceMs = 10000;
constexpr int kMinWidth = 500; ///< narrower ones are no main window
constexpr quint32 kBlack = 0;

template <typename T>
using Reply = std::unique_ptr<T, decltype(&free)>;

/// Looks at the server from outside, as a user would.
class Onlooker
{
public:
    explicit Onlooker(const QByteArray& display)
        : m_connection(xcb_connect(display.constData(), nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
    }
    ~Onlooker() { xcb_disconnect(m_connection); }

    /// The big window if it is mapped, else 0.
    xcb_window_t window() const
    {
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr), &free);
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
            const xcb_window_t child = xcb_query_tree_children(tree.get())[i];
            const Reply<xcb_get_window_attributes_reply_t> attributes(
                xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, child),
                                                nullptr),
                &free);
            const Reply<xcb_get_geometry_reply_t> geometry(
                xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, child), nullptr), &free);
            if (attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                geometry->width > kMinWidth)
                return child;
        }
        return 0;
    }

    /// Whether the middle of the window shows anything but the black of the empty screen.
    bool isPainted(xcb_window_t window) const
    {
        const Reply<xcb_get_image_reply_t> image(
            xcb_get_image_reply(
                m_connection,
                xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 20, 100, 1, 1, ~0U), nullptr),
            &free);
        if (!image || xcb_get_image_data_length(image.get()) < 4)
            return false;
        quint32 pixel = 0;
        memcpy(&pixel, xcb_get_image_data(image.get()), sizeof pixel);
        return (pixel & 0xFFFFFF) != kBlack;
    }

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root;
};

/// Milliseconds from `start` to the log line with this text; -1 without it.
qint64 logTime(const QString& log, const QString& text, const QDateTime& start)
{
    for (const QString& line : log.split(u'\n')) {
        if (!line.contains(text))
            continue;
        // Such as "11/21/26 14:03:59 123.456": month, day, year, and milliseconds behind the seconds.
        QDateTime time = QDateTime::fromString(line.left(17), QStringLiteral("MM/dd/yy HH:mm:ss"))
                             .addYears(100); // the toolkit takes "26" for 1926
        time = time.addMSecs(static_cast<qint64>(line.mid(18).section(u' ', 0, 0).toDouble()));
        return start.msecsTo(time);
    }
    return -1;
}

struct Start
{
    qint64 log = -1;
    qint64 mapped = -1;
    qint64 painted = -1;
    qint64 strip = -1; ///< first frame at the strip
};

Start measure(const VirtualDisplay& display, const Onlooker& onlooker)
{
    ProgramUnderTest program(QCoreApplication::applicationDirPath());
    program.setDisplay(display.name());
    program.writeConfig(QStringLiteral("app.json"), {{"language", "en"}});
    program.writeConfig(QStringLiteral("controllers.json"),
                        {{"LV0127:01020304", QJsonObject{{"nbLeds", 120}}}});
    StripSimulator::Options options;
    options.portsFile = program.portsFile();
    StripSimulator strip(options);
    strip.plugIn();

    Start start;
    QElapsedTimer clock;
    clock.start();
    const QDateTime begin = QDateTime::currentDateTime();
    program.start();
    while (clock.elapsed() < kPatienceMs && (start.painted < 0 || start.strip < 0)) {
        const xcb_window_t window = start.painted < 0 ? onlooker.window() : 0;
        if (window != 0 && start.mapped < 0)
            start.mapped = clock.elapsed();
        if (window != 0 && onlooker.isPainted(window))
            start.painted = clock.elapsed();
        if (start.strip < 0 && strip.counters().frames > 0)
            start.strip = clock.elapsed();
        QThread::msleep(2);
    }
    start.log = logTime(program.logText(), QStringLiteral("Startup parameters"), begin);
    program.terminate();
    return start;
}

qint64 median(const QVector<Start>& starts, qint64 Start::*phase)
{
    QVector<qint64> values;
    for (const Start& start : starts)
        values << start.*phase;
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    VirtualDisplay display(QSize(1920, 1080));
    if (!display.start())
        return 2;
    const Onlooker onlooker(display.name());
    const int count = std::max(1, argc > 1 ? atoi(argv[1]) : 7);
    QVector<Start> starts;
    for (int i = 0; i < count; ++i)
        starts << measure(display, onlooker);

    const qint64 painted = median(starts, &Start::painted);
    const bool good = painted >= 0 && painted <= kLimitMs;
    std::printf("ms from the start, median of %d: settings and log open %lld, window mapped %lld, "
                "window painted %lld (limit %d), first frame at the strip %lld%s\n",
                count, median(starts, &Start::log), median(starts, &Start::mapped), painted, kLimitMs,
                median(starts, &Start::strip), good ? "" : "  TOO SLOW");
    return good ? 0 : 1;
}
