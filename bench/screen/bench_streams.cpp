// What reading 60 frames a second costs this process, all its threads together: the streams of a media
// server of its own beside a virtual X server, both shown by another process.
#include "PipeWireServer.h"
#include "PipeWireSource.h"
#include "ScreenPainter.h"
#include "VirtualDisplay.h"
#include "support/capture/DeskDuplManager.h"
#include "support/capture/PipeWireGrabber_linux.h"
#include "support/capture/ScreenCastSession_linux.h"
#include "support/capture/X11Grabber.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QImage>
#include <QThread>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>

namespace {
constexpr int kFramesPerSecond = 60;
constexpr double kLimitAboveX11 = 3; // percent of a core

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The other process; it is killed when it is no longer needed.
[[noreturn]] void showStream(int remote, QSize size)
{
    PipeWireSource::Kind kind;
    kind.size = size;
    PipeWireSource source(remote, kind);
    QImage picture(2, 1, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    source.show(picture);
    source.waitForNode(20000);
    std::printf("%u\n", source.node());
    std::fflush(stdout);
    source.setRate(kFramesPerSecond);
    for (;;)
        QThread::sleep(1);
}

[[noreturn]] void paintScreen(const QByteArray& display, QSize size)
{
    ScreenPainter painter(display);
    painter.fill(QRect(QPoint(), size), Qt::darkCyan);
    std::puts("0");
    std::fflush(stdout);
    for (int shade = 0;; shade = (shade + 1) % 256) {
        painter.fill(QRect(0, 0, 64, 64), QColor(shade, 0, 0));
        QThread::msleep(1000 / kFramesPerSecond);
    }
}

/// What the other process writes when it shows something; empty when it does not.
QByteArray startShow(QProcess& process, const QString& what, QSize size)
{
    process.start(QCoreApplication::applicationFilePath(),
                  {what, QString::number(size.width()), QString::number(size.height())});
    return process.waitForReadyRead() ? process.readLine().trimmed() : QByteArray();
}

/// Percent of a core; negative without frames.
double cpuOf(DeskDuplManager& manager, int periodMs)
{
    constexpr int kSeconds = 8;
    for (QDeadlineTimer patience(10000); manager.allCapturer().isEmpty() && !patience.hasExpired();) {
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
    const QString id = manager.defaultCapturer();
    const auto capture = manager.acquireCapturer(id);
    if (!capture)
        return -1;
    const auto pull = [&capture, periodMs](int ms) {
        for (int i = 0; i < ms / periodMs; ++i) {
            capture->grabFrame();
            QThread::msleep(ulong(periodMs));
        }
    };
    pull(1500);
    const quint64 frames = capture->frameCount();
    const double start = cpuSeconds();
    pull(kSeconds * 1000);
    const double used = cpuSeconds() - start;
    const bool isRunning = capture->frameCount() > frames + quint64(kSeconds * 1000 / periodMs / 2);
    manager.releaseCapturer(id);
    return isRunning ? used * 100 / kSeconds : -1;
}

bool benchSize(QSize size)
{
    VirtualDisplay display(size);
    PipeWireServer server;
    if (!display.start() || !server.start())
        return false;
    bool good = true;
    for (const int periodMs : {80, 33}) {
        MortalProcess painter, source;
        startShow(painter, display.name(), size);
        DeskDuplManager screen({{{}, [&] { return std::make_shared<X11Grabber>(display.name()); }}});
        const double x11 = cpuOf(screen, periodMs);
        painter.kill();
        painter.waitForFinished();

        const int remote = server.connection();
        ::fcntl(remote, F_SETFD, 0); // for the other process
        const uint32_t node = startShow(source, QString::number(remote), size).toUInt();
        ::close(remote);
        const auto feed = std::make_shared<ScreenCastFeed>();
        feed->offer(server.connection(), {{node, "a", "a", QRect(QPoint(), size), true}});
        DeskDuplManager stream({{{}, [&] { return std::make_shared<PipeWireGrabber>(feed, nullptr); }}});
        const double pipewire = cpuOf(stream, periodMs);
        source.kill();
        source.waitForFinished();

        const bool isGood = x11 >= 0 && pipewire >= 0 && pipewire <= x11 + kLimitAboveX11;
        std::printf("  a pull every %d ms: X11 %.2f %%, stream %.2f %% of a core (limit X11 + %g)%s\n",
                    periodMs, x11, pipewire, kLimitAboveX11, isGood ? "" : "  OVER");
        good &= isGood;
    }
    return good;
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4) {
        const QSize size(arguments[2].toInt(), arguments[3].toInt());
        if (arguments[1].startsWith(':'))
            paintScreen(arguments[1].toLatin1(), size);
        showStream(arguments[1].toInt(), size);
    }
    bool good = true;
    for (const QSize size : {QSize(1920, 1080), QSize(3840, 2160)}) {
        std::printf("%dx%d, %d frames a second\n", size.width(), size.height(), kFramesPerSecond);
        good &= benchSize(size);
    }
    return good ? 0 : 1;
}
