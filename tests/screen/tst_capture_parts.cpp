// Scaling against the exact area average.
#include "support/capture/FrameScaler.h"

#include <QtTest>
#include <opencv2/imgproc.hpp>
#include <random>

namespace {
using PixelAt = std::function<QRgb(int x, int y)>; ///< in memory: blue, green, red, something

cv::Mat draw(QSize size, const PixelAt& pixelAt)
{
    const int stride = size.width() + 3; // rows need not follow each other
    cv::Mat picture = cv::Mat(size.height(), stride, CV_8UC4).colRange(0, size.width());
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            picture.ptr<QRgb>(y)[x] = pixelAt(x, y);
    }
    return picture;
}

cv::Mat scaled(const cv::Mat& picture, QSize size)
{
    return scaleFrame({picture.data, qint64(picture.step), QSize(picture.cols, picture.rows)}, size);
}

double meanError(const cv::Mat& picture, const cv::Mat& frame)
{
    cv::Mat average;
    cv::Mat got;
    cv::cvtColor(picture, average, cv::COLOR_BGRA2RGB);
    cv::cvtColor(frame, got, cv::COLOR_RGBA2RGB);
    if (picture.cols < frame.cols) // an average of areas needs more pixels than it gives
        cv::resize(average, average, {}, 40, 40, cv::INTER_NEAREST);
    average.convertTo(average, CV_32F);
    cv::resize(average, average, frame.size(), 0, 0, cv::INTER_AREA);
    got.convertTo(got, CV_32F);
    return cv::norm(average, got, cv::NORM_L1) / (3.0 * frame.cols * frame.rows);
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
        QTest::newRow("as high as 8K") << QSize(640, 4320) << usual << 1.0;
        QTest::newRow("one row of many") << QSize(640, 2160) << QSize(120, 1) << 4.0;
        QTest::newRow("odd") << QSize(1367, 769) << QSize(119, 61) << 0.7;
        QTest::newRow("larger output") << QSize(7, 5) << QSize(120, 67) << 1.5;
    }
    void comesCloseToTheAreaAverage()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, output);
        QFETCH(double, limit);
        std::vector<std::pair<const char*, PixelAt>> pictures{
            {"noise", [random = std::minstd_rand(3)](int, int) mutable { return QRgb(random()); }}};
        for (int wide : {1, 2, 3, 5, 8}) {
            pictures.emplace_back("columns", [wide](int x, int) { return x / wide % 2 * 0xFFFFFFU; });
            pictures.emplace_back("rows", [wide](int, int y) { return y / wide % 2 * 0xFFFFFFU; });
        }
        for (const auto& [name, pixelAt] : pictures) {
            const cv::Mat picture = draw(size, pixelAt);
            const cv::Mat frame = scaled(picture, output);
            QCOMPARE(QSize(frame.cols, frame.rows), output);
            const double error = meanError(picture, frame);
            QVERIFY2(error < limit, qPrintable(QString("%1: %2").arg(name).arg(error)));
        }
        // One colour stays what it is.
        const cv::Mat frame = scaled(draw(size, [](int, int) { return 0xFF2107U; }), output);
        QCOMPARE(cv::norm(frame, cv::Mat(frame.size(), CV_8UC4, cv::Scalar(255, 33, 7, 255)), cv::NORM_INF),
                 0.0);
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
