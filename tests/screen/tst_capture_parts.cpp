// The parts of the capture that need no screen: scaling against the exact area average, and when the next
// grab is due by made-up clocks.
#include "support/capture/FrameScaler.h"
#include "support/capture/GrabPlan.h"
#include "support/capture/HdrPixels.h"

#include <QtTest>
#include <opencv2/imgproc.hpp>
#include <random>
#include <utility>

namespace {
constexpr qint64 kMs = 1000;
constexpr qint64 kLeadUs = 5 * kMs / 2;            // before anything is known of what a grab costs
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

class TestCaptureParts : public QObject
{
    Q_OBJECT

private slots:
    void comesCloseToTheAreaAverage()
    {
        std::vector<std::pair<const char*, PixelAt>> pictures{
            {"noise", [random = std::minstd_rand(3)](int, int) mutable { return QRgb(random()); }}};
        for (int wide : {1, 2, 3, 5, 8}) {
            pictures.emplace_back("columns", [wide](int x, int) { return x / wide % 2 * 0xFFFFFFU; });
            pictures.emplace_back("rows", [wide](int, int y) { return y / wide % 2 * 0xFFFFFFU; });
        }
        const QSize usual(120, 67);
        // Where all rows are read, and where some are: then rows are guessed from their neighbours.
        const std::tuple<QSize, QSize, double, double> sizes[] = {
            {{1600, 900}, usual, 0.7, 0.9}, {{1367, 769}, {119, 61}, 0.7, 0.7}, {{7, 5}, usual, 1.5, 1.5},
            {{1920, 1080}, usual, 4.5, 20}, {{640, 4320}, usual, 9.5, 30},
        };
        for (const auto& [size, output, noiseLimit, rowsLimit] : sizes) {
            for (const auto& [name, pixelAt] : pictures) {
                const cv::Mat picture = draw(size, pixelAt);
                const cv::Mat frame = scaled(picture, output);
                QCOMPARE(QSize(frame.cols, frame.rows), output);
                const double error = meanError(picture, frame);
                const double limit = *name == 'c' ? 0.7 : *name == 'r' ? rowsLimit : noiseLimit;
                QVERIFY2(error < limit,
                         qPrintable(QString("%1 of %2: %3").arg(name).arg(size.height()).arg(error)));
            }
            // One colour stays what it is.
            const cv::Mat frame = scaled(draw(size, [](int, int) { return 0xFF2107U; }), output);
            const cv::Mat whole(frame.size(), CV_8UC4, cv::Scalar(255, 33, 7, 255));
            QCOMPARE(cv::norm(frame, whole, cv::NORM_INF), 0.0);
        }
    }

    void aThinLineThatMovesDoesNotMakeTheLightFlicker()
    {
        const cv::Size blur(37, 37); // what is shipped
        for (const auto& [size, across] :
             {std::pair(QSize(240, 1080), false), std::pair(QSize(240, 2160), false),
              std::pair(QSize(1920, 1080), true)}) {
            cv::Mat before[2];
            for (int at = 400; at < 440; ++at) {
                cv::Mat picture = cv::Mat::zeros(size.height(), size.width(), CV_8UC4);
                (across ? picture.col(at) : picture.row(at)).setTo(cv::Scalar::all(255));
                cv::Mat now[2] = {scaled(picture, QSize(120, 67)), {}};
                picture.convertTo(picture, CV_32F);
                cv::resize(picture, now[1], now[0].size(), 0, 0, cv::INTER_AREA);
                double change[2] = {};
                for (int i = 0; i < 2; ++i) {
                    now[i].convertTo(now[i], CV_32F);
                    cv::GaussianBlur(now[i], now[i], blur, 0);
                    cv::extractChannel(now[i], now[i], 0);
                    change[i] = before[i].empty() ? 0 : cv::norm(now[i], before[i], cv::NORM_INF);
                    before[i] = now[i];
                }
                QVERIFY2(change[0] < change[1] + 2.5, qPrintable(QString("%1: %2").arg(at).arg(change[0])));
            }
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

    void aTurnedScreenComesUpright()
    {
        cv::Mat upright(40, 60, CV_8UC4, cv::Scalar(1, 2, 3, 0));
        upright(cv::Rect(0, 0, 30, 20)).setTo(cv::Scalar(7, 8, 9, 0));
        for (int turns = 0; turns < 4; ++turns) {
            cv::Mat panel = upright.clone();
            for (int i = 0; i < turns; ++i)
                cv::rotate(panel, panel, cv::ROTATE_90_COUNTERCLOCKWISE);
            SourcePixels pixels{panel.data, qint64(panel.step), QSize(panel.cols, panel.rows)};
            pixels.quarterTurns = turns;
            QCOMPARE(pixels.uprightSize(), QSize(60, 40));
            const cv::Mat frame = scaleFrame(pixels, QSize(6, 4));
            QVERIFY(frame.at<cv::Vec4b>(0, 0) == cv::Vec4b(9, 8, 7, 255));
            for (const cv::Point at : {cv::Point(5, 0), cv::Point(0, 3), cv::Point(5, 3)})
                QVERIFY(frame.at<cv::Vec4b>(at) == cv::Vec4b(3, 2, 1, 255));
        }
    }

    void brightDesktopsKeepTheirColours()
    {
        constexpr float kInf = std::numeric_limits<float>::infinity(), kNone = NAN;
        const std::pair<cv::Vec3f, cv::Vec4b> rows[] = {
            {{0, 0, 0}, {0, 0, 0, 255}},
            {{1, 1, 1}, {255, 255, 255, 255}},
            {{0.2159F, 0.0513F, 0.001F}, {128, 64, 3, 255}},
            {{20, 2, 0}, {255, 89, 0, 255}}, // brighter than white
            {{4, 4, 4}, {255, 255, 255, 255}},
            {{-0.1F, 1, 1.5F}, {0, 213, 255, 255}}, // outside of what screens show
            {{kInf, kNone, 0}, {255, 0, 0, 255}},
        };
        HdrToBytes toBytes;
        for (const double white : {1.0, 2.5}) {
            toBytes.setWhite(white);
            toBytes.setWhite(0); // the system does not know it
            for (const auto& [light, color] : rows) {
                cv::Mat picture(70, 133, CV_16FC4); // read in part
                for (int i = 0; i < int(picture.total() * 4); ++i)
                    picture.ptr<cv::float16_t>()[i] =
                        cv::float16_t(i % 4 < 3 ? light[i % 4] * float(white) : 1);
                const HdrPixels pixels{picture.ptr<quint16>(), qint64(picture.step), QSize(133, 70)};
                for (const QSize size : {QSize(2, 2), QSize(133, 70)}) {
                    const cv::Mat bytes = toBytes.convert(pixels, size);
                    const cv::Mat frame = scaleFrame(
                        {bytes.data, qint64(bytes.step), QSize(bytes.cols, bytes.rows), 0, 1, 2}, size);
                    QVERIFY2(
                        cv::norm(frame, cv::Mat(frame.size(), CV_8UC4, cv::Scalar(color)), cv::NORM_INF) <= 1,
                        qPrintable(QString("%1 %2").arg(light[0]).arg(frame.at<cv::Vec4b>(1, 1)[1])));
                }
            }
        }
        for (int x = 0; x < 8; ++x) { // a thin line shows wherever it is
            cv::Mat picture = cv::Mat::zeros(64, 64, CV_16FC4);
            picture.col(x).setTo(cv::Scalar::all(2.5));
            const cv::Mat bytes =
                toBytes.convert({picture.ptr<quint16>(), qint64(picture.step), QSize(64, 64)}, QSize(2, 2));
            QCOMPARE(cv::countNonZero(bytes.reshape(1) == 255), bytes.rows * bytes.cols + bytes.rows / 4 * 3);
        }
        QVERIFY(toBytes.convert({}, QSize(2, 2)).empty());
    }

    void eachPullerGetsAFreshFrameAtItsOwnPace()
    {
        for (const QList<int>& periodsMs : {QList<int>{33}, {34, 83}, {34, 34, 80}, {20, 200}}) {
            GrabPlan plan;
            qint64 grabbedUs = 0, beforeUs = 0;
            int grabs = 0, pulls = 0;
            QVector<qint64> nextUs(periodsMs.size(), 1000 * kMs);
            for (qint64 now = 1000 * kMs; now < 4000 * kMs; now += kMs / 4) {
                if (const qint64 due = plan.dueUs(now); due >= 0 && due <= now) {
                    plan.done(due, now + 2 * kMs);
                    beforeUs = std::exchange(grabbedUs, now + 2 * kMs);
                    ++grabs;
                }
                for (int i = 0; i < periodsMs.size(); ++i) {
                    if (now < nextUs[i] + (now / kMs * 7 + i) % 5 * kMs / 2) // of a busy machine
                        continue;
                    const qint64 age = now - (grabbedUs <= now ? grabbedUs : beforeUs);
                    QVERIFY2(now < 1300 * kMs || age <= 8 * kMs, qPrintable(QString::number(age)));
                    nextUs[i] += periodsMs[i] * kMs;
                    plan.pull(now, &nextUs[i], nextUs[i], periodsMs[i] * kMs);
                    ++pulls;
                }
            }
            QVERIFY2(grabs <= pulls + 1, qPrintable(QString("%1 for %2").arg(grabs).arg(pulls)));
        }
    }

    void grabsEarlierWhereGrabsTakeLong()
    {
        GrabPlan plan;
        qint64 now = 0;
        for (int i = 0; i < 30; ++i) {
            plan.pull(now += 80 * kMs);
            const qint64 due = plan.dueUs(now);
            plan.done(due, due + 9 * kMs);
        }
        plan.pull(now += 80 * kMs);
        QVERIFY(qAbs(plan.dueUs(now) - (now + (80 - 9) * kMs)) < kMs);
        // One frame a pull: this one is served, the next is for the pull after it.
        plan.done(now + 69 * kMs, now + 78 * kMs);
        QVERIFY(plan.dueUs(now + 78 * kMs) > now + 140 * kMs);
    }

    void grabsNothingForWhoPullsNoMore()
    {
        GrabPlan plan;
        plan.hurry(0);
        QCOMPARE(plan.dueUs(0), qint64(-1)); // nobody pulls
        plan.pull(5 * kMs);
        QCOMPARE(plan.dueUs(6 * kMs), 6 * kMs);
        plan.done(6 * kMs, 7 * kMs);
        QCOMPARE(plan.dueUs(7 * kMs), qint64(-1)); // one pull is no rhythm
        plan.hurry(8 * kMs);
        QCOMPARE(plan.dueUs(8 * kMs), 8 * kMs);
        plan.done(8 * kMs, 9 * kMs);
        plan.pull(85 * kMs);
        for (int grabs = 0; plan.dueUs(85 * kMs) >= 0; ++grabs) {
            QVERIFY(grabs < 2);
            plan.done(plan.dueUs(85 * kMs), plan.dueUs(85 * kMs) + kMs);
        }
    }

    void whoRestsHasTheSourceLookedAt()
    {
        GrabPlan plan;
        const int first = 0, second = 0;
        qint64 now = 36 * kMs;
        plan.pull(now, &first, now + 1000 * kMs, 1000 * kMs);
        plan.rest(now, &first, 34 * kMs);
        plan.done(now, now);
        QCOMPARE(plan.takeDueUs(now, false), now + 34 * kMs);
        QVERIFY(qAbs(plan.takeDueUs(now, true) - (now + 1000 * kMs - kLeadUs)) < kMs);
        plan.pull(now, &second, now + 80 * kMs, 80 * kMs); // and goes: that ends no rest
        plan.done(now, now);
        QVERIFY(qAbs(plan.dueUs(now) - (now + 80 * kMs - kLeadUs)) < kMs);
        // A change: who rests is there again at its pace, and does not have to wake anybody for that.
        now += 500 * kMs;
        QVERIFY(plan.takeAwaited(now) && !plan.takeAwaited(now) && !plan.isAwaited(now));
        plan.done(now, now);
        QVERIFY(qAbs(plan.takeDueUs(now, false) - (now + 34 * kMs)) <= kLeadUs);
        plan.pull(now + kMs, &first, now + 34 * kMs, 34 * kMs);
        QVERIFY(!plan.takeWake(now + kMs));
        plan.rest(now, &first, 34 * kMs);
        QVERIFY(plan.isAwaited(now + 2000 * kMs) && !plan.isAwaited(now + 3000 * kMs)); // it has gone
    }
};

QTEST_APPLESS_MAIN(TestCaptureParts)
#include "tst_capture_parts.moc"
