// Scaling against the exact area average, in double precision over all pixels.
#include "support/capture/FrameScaler.h"

#include <QtTest>
#include <functional>
#include <random>

namespace {
using PixelAt = std::function<QRgb(int x, int y)>;

struct Picture
{
    Picture(QSize pictureSize, const PixelAt& pixelAt)
        : size(pictureSize)
    {
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                pixels.push_back(pixelAt(x, y));         // in memory: blue, green, red, something
            pixels.insert(pixels.end(), 3, 0x55555555U); // rows need not follow each other
        }
    }
    SourcePixels view() const
    {
        return {reinterpret_cast<const uchar*>(pixels.data()), (size.width() + 3) * qint64(sizeof(QRgb)),
                size};
    }
    QRgb at(int x, int y) const { return pixels[size_t(y) * size_t(size.width() + 3) + size_t(x)]; }

    QSize size;
    std::vector<QRgb> pixels;
};

/// The largest share of an output pixel that an input pixel covers in one direction.
double overlap(int in, int inCount, int out, int outCount)
{
    const double ratio = double(inCount) / outCount;
    return std::max(0.0, std::min(in + 1.0, (out + 1) * ratio) - std::max(double(in), out * ratio)) / ratio;
}

double meanError(const Picture& picture, const cv::Mat& frame)
{
    double error = 0;
    for (int y = 0; y < frame.rows; ++y) {
        for (int x = 0; x < frame.cols; ++x) {
            double sum[3] = {};
            for (int inY = y * picture.size.height() / frame.rows;
                 inY < picture.size.height() && inY * frame.rows < (y + 1) * picture.size.height(); ++inY) {
                const double high = overlap(inY, picture.size.height(), y, frame.rows);
                for (int inX = x * picture.size.width() / frame.cols;
                     inX < picture.size.width() && inX * frame.cols < (x + 1) * picture.size.width(); ++inX) {
                    const double share = high * overlap(inX, picture.size.width(), x, frame.cols);
                    const QRgb pixel = picture.at(inX, inY);
                    sum[0] += share * qRed(pixel);
                    sum[1] += share * qGreen(pixel);
                    sum[2] += share * qBlue(pixel);
                }
            }
            const cv::Vec4b got = frame.at<cv::Vec4b>(y, x);
            for (int channel = 0; channel < 3; ++channel)
                error += std::abs(sum[channel] - got[channel]);
        }
    }
    return error / (3.0 * frame.cols * frame.rows);
}

QRgb noise(int, int)
{
    static std::minstd_rand random(3);
    return QRgb(random());
}

QRgb blackOrWhite(bool white)
{
    return white ? 0xFFFFFFU : 0U;
}
} // namespace

class TestFrameScaler : public QObject
{
    Q_OBJECT

private slots:
    void comesCloseToTheAreaAverage_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("output");
        QTest::addColumn<double>("limit");
        const QSize usual(120, 67);
        QTest::newRow("full HD") << QSize(1920, 1080) << usual << 0.7;
        QTest::newRow("4K") << QSize(3840, 2160) << usual << 1.0;
        QTest::newRow("5K wide") << QSize(5120, 1440) << QSize(120, 33) << 1.0;
        QTest::newRow("as high as 8K") << QSize(640, 4320) << usual << 1.0;
        QTest::newRow("one row of many") << QSize(640, 2160) << QSize(120, 1) << 4.0;
        QTest::newRow("portrait") << QSize(1080, 1920) << QSize(120, 213) << 1.0;
        QTest::newRow("odd") << QSize(1367, 769) << QSize(119, 61) << 0.7;
        QTest::newRow("small") << QSize(131, 71) << usual << 1.0;
        QTest::newRow("tiny") << QSize(3, 2) << QSize(2, 1) << 0.7;
        QTest::newRow("one row high") << QSize(777, 1) << QSize(120, 1) << 0.7;
        QTest::newRow("larger output") << QSize(7, 5) << QSize(120, 67) << 1.5;
        QTest::newRow("one pixel") << QSize(1, 1) << QSize(9, 9) << 0.7;
    }
    void comesCloseToTheAreaAverage()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, output);
        QFETCH(double, limit);
        std::vector<std::pair<const char*, PixelAt>> pictures{
            {"noise", noise},
            {"gradient",
             [size](int x, int y) { return qRgb(x * 255 / size.width(), y * 255 / size.height(), x ^ y); }},
        };
        for (int wide : {1, 2, 3, 5, 8}) {
            pictures.emplace_back("columns", [wide](int x, int) { return blackOrWhite(x / wide % 2); });
            pictures.emplace_back("rows", [wide](int, int y) { return blackOrWhite(y / wide % 2); });
        }
        for (const auto& [name, pixelAt] : pictures) {
            const Picture picture(size, pixelAt);
            const cv::Mat frame = scaleFrame(picture.view(), output);
            QCOMPARE(QSize(frame.cols, frame.rows), output);
            const double error = meanError(picture, frame);
            QVERIFY2(error < limit, qPrintable(QString("%1: %2").arg(name).arg(error)));
        }
        for (const QRgb color : {0xFFFFFFU, 0U, 0xC92107U}) { // one colour stays what it is
            const Picture flat(size, [color](int, int) { return color; });
            QVERIFY(meanError(flat, scaleFrame(flat.view(), output)) < 1e-9);
        }
    }

    void takesTheColoursFromWhereTheyStand()
    {
        const uchar pixel[4] = {0, 10, 20, 30};
        for (const QSize size : {QSize(1, 1), QSize(120, 67)}) {
            const cv::Mat frame = scaleFrame({pixel, 4, QSize(1, 1), 1, 2, 3}, size);
            QVERIFY(frame.at<cv::Vec4b>(size.height() - 1, 0) == cv::Vec4b(10, 20, 30, 255));
        }
        QVERIFY(scaleFrame({}, QSize(120, 67)).empty());
        QVERIFY(scaleFrame({pixel, 4, QSize(1, 1)}, QSize(0, 5)).empty());
    }
};

QTEST_APPLESS_MAIN(TestFrameScaler)
#include "tst_frame_scaler.moc"
