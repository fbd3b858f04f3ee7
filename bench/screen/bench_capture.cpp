// Desktop capture on virtual displays of its own: what a frame costs the capture thread, what a pull costs
// the puller, and how fresh and how true the frames are.
#include "ScreenPainter.h"
#include "VirtualDisplay.h"
#include "support/capture/DeskCapture.h"
#include "support/capture/DeskDuplManager.h"
#include "support/capture/FrameScaler.h"
#include "support/capture/X11Grabber.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <opencv2/imgproc.hpp>
#include <random>
#include <thread>
#include <vector>

namespace {
using Values = std::vector<double>;

double threadCpuMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double at(Values& values, double part)
{
    const auto it = values.begin() + std::ptrdiff_t(double(values.size() - 1) * part);
    std::nth_element(values.begin(), it, values.end());
    return *it;
}

/// Prints a line; false when the value is over the limit.
bool report(const char* what, double value, const char* unit, double limit)
{
    const bool good = value <= limit;
    std::printf("  %-46s %8.3f %-3s (limit %g)%s\n", what, value, unit, limit, good ? "" : "  OVER");
    return good;
}

/// Windows, text and noise: something of everything that a desktop shows.
QImage desktopPicture(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    std::minstd_rand random(7);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            if (x < size.width() / 3) // lines of text
                row[x] = (y / 3) % 4 == 0 && random() % 3 ? qRgb(20, 20, 30) : qRgb(240, 240, 235);
            else if (x < size.width() * 2 / 3)
                row[x] = 0xFF000000U | uint(random());
            else
                row[x] = qRgb(x * 255 / size.width(), y * 255 / size.height(), 90);
        }
    }
    return image;
}

/// The exact mean of the area of each pixel: three channels.
cv::Mat exactAverage(const QImage& picture, cv::Size size)
{
    cv::Mat sums = cv::Mat::zeros(size, CV_32FC3);
    cv::Mat weights = cv::Mat::zeros(size, CV_32FC3);
    constexpr int kParts = 4; // a pixel is shared between areas in sixteenths
    for (int y = 0; y < picture.height() * kParts; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y / kParts));
        const int outY = int(qint64(y) * size.height / (qint64(picture.height()) * kParts));
        for (int x = 0; x < picture.width() * kParts; ++x) {
            const int outX = int(qint64(x) * size.width / (qint64(picture.width()) * kParts));
            const QRgb pixel = row[x / kParts];
            sums.at<cv::Vec3f>(outY, outX) += cv::Vec3f(qRed(pixel), qGreen(pixel), qBlue(pixel));
            weights.at<cv::Vec3f>(outY, outX) += cv::Vec3f(1, 1, 1);
        }
    }
    return sums / weights;
}

bool reportError(const QImage& picture, const cv::Mat& frame)
{
    cv::Mat exact = exactAverage(picture, frame.size());
    cv::Mat got;
    cv::cvtColor(frame, got, cv::COLOR_RGBA2RGB);
    got.convertTo(got, CV_32F);
    const auto error = [&] { return cv::norm(got, exact, cv::NORM_L1) / double(3 * got.total()); };
    bool good = report("mean error on text and noise", error(), "", 6);
    const cv::Size shipped(37, 37);
    cv::GaussianBlur(got, got, shipped, 0);
    cv::GaussianBlur(exact, exact, shipped, 0);
    good &= report("mean error after the shipped blur", error(), "", 1.5);
    return good;
}

bool benchGrab(const VirtualDisplay& display, const QImage& picture, double limitMs)
{
    X11Grabber grabber(display.name());
    if (!grabber.open())
        return false;
    const CaptureSource source = grabber.sources().value(0);
    const QSize output(120, 120 * source.geometry.height() / source.geometry.width());
    Values cpu;
    Values wall;
    cv::Mat frame;
    for (int i = 0; i < 300; ++i) {
        const double cpuStart = threadCpuMs();
        const qint64 start = DeskCapture::nowUs();
        if (grabber.grab(source, output, true, frame) != ScreenGrabber::Result::Frame)
            return false;
        cpu.push_back(threadCpuMs() - cpuStart);
        wall.push_back(double(DeskCapture::nowUs() - start) / 1e3);
    }
    bool good = report("grab and scale, thread time, median", at(cpu, 0.5), "ms", limitMs);
    std::printf("  %-46s %8.3f ms\n", "grab and scale, elapsed, median", at(wall, 0.5));
    good &= reportError(picture, frame);
    return good;
}

CaptureMode modeOn(const VirtualDisplay& display)
{
    return {QString(), [&display] { return std::make_shared<X11Grabber>(display.name()); }};
}

bool benchPull(const VirtualDisplay& display)
{
    DeskDuplManager manager({modeOn(display)});
    const auto capture = manager.acquireCapturer(manager.defaultCapturer());
    if (!capture)
        return false;
    Values pulls;
    for (int i = 0; i < 200; ++i) {
        QThread::msleep(16);
        const qint64 start = DeskCapture::nowUs();
        const cv::Mat frame = capture->grabFrame();
        pulls.push_back(double(DeskCapture::nowUs() - start));
    }
    std::printf("  %-46s %8llu of 200\n", "frames grabbed for as many pulls", capture->frameCount());
    return report("grabFrame(), median", at(pulls, 0.5), "us", 10);
}
/// Paints a new shade every few milliseconds; what a pull brings tells how old its picture is.
bool benchFreshness(const VirtualDisplay& display, QSize screen)
{
    constexpr int kShades = 250;
    std::array<std::atomic<qint64>, kShades> paintedUs{};
    std::atomic<bool> stop{false};
    std::thread painting([&] {
        ScreenPainter painter(display.name());
        for (int shade = 0; !stop; shade = (shade + 1) % kShades) {
            painter.fill(QRect(QPoint(), screen), QColor(shade, 0, 0));
            paintedUs[size_t(shade)] = DeskCapture::nowUs();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    Values ages;
    {
        DeskDuplManager manager({modeOn(display)});
        const auto capture = manager.acquireCapturer(manager.defaultCapturer());
        auto next = std::chrono::steady_clock::now();
        for (int i = 0; capture && i < 100; ++i) {
            std::this_thread::sleep_until(next += std::chrono::milliseconds(33));
            const cv::Mat frame = capture->grabFrame();
            const size_t shade =
                frame.empty() ? kShades : frame.at<cv::Vec4b>(frame.rows / 2, frame.cols / 2)[0];
            if (i >= 10 && shade < kShades)
                ages.push_back(double(DeskCapture::nowUs() - paintedUs[shade]) / 1e3);
        }
    }
    stop = true;
    painting.join();
    if (ages.empty())
        return false;
    std::printf("  %-46s %8.3f ms\n", "age of a pulled picture, 90 % below", at(ages, 0.9));
    return report("age of a pulled picture, median", at(ages, 0.5), "ms", 10);
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    bool good = true;
    for (const auto& [size, limitMs] :
         {std::pair(QSize(1920, 1080), 1.0), std::pair(QSize(3840, 2160), 2.5)}) {
        std::printf("%dx%d\n", size.width(), size.height());
        VirtualDisplay display(size);
        if (!display.start())
            return 1;
        const QImage picture = desktopPicture(size);
        ScreenPainter(display.name()).draw(QPoint(), picture);
        good &= benchGrab(display, picture, limitMs);
        good &= benchPull(display);
        good &= benchFreshness(display, size);
    }
    return good ? 0 : 1;
}
