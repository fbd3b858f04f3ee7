#include "effects/screenSync/BorderTracker.h"
#include "effects/screenSync/ColorSmoother.h"
#include "effects/screenSync/FrameFilters.h"

#include <QtTest>
#include <cmath>
#include <functional>
#include <opencv2/core.hpp>
#include <random>

namespace {

using Mode = ColorSmoother::Mode;
using Byte = std::uint8_t;

/// Seconds between frames; 0 stands for ticks that come when they like.
constexpr double kPaces[]{0.0, 1 / 60.0, 0.034, 0.04, 0.08};

std::mt19937 dice(7);

double tick(double pace)
{
    return pace > 0.0 ? pace : std::uniform_real_distribution(0.016, 0.083)(dice);
}

int shown(ColorSmoother& smoother, int level, double seconds, int leds = 2)
{
    QVector<LV_RGB> colors(leds, {Byte(level), Byte(level), Byte(level)});
    smoother.step(colors, seconds);
    return colors.last().green;
}

const cv::Rect kAll(0, 0, 120, 67), kLetter(0, 9, 120, 49), kPillar(15, 0, 90, 67), kBoth(15, 8, 90, 51);

/// Light on two parts of what is nearly black.
cv::Mat lit(const cv::Rect& part, const cv::Rect& other = {}, int level = 90)
{
    cv::Mat frame(kAll.size(), CV_8UC4, cv::Scalar(12, 11, 12, 255));
    const int half = level / 2, third = level / 3;
    for (const cv::Rect& each : {part, other})
        frame(each).setTo(cv::Scalar(level, half, third, 255));
    return frame;
}

using Scene = std::function<cv::Mat(double)>;

/// For how many seconds of a scene, at most, what the tracker says is this, or is not.
double secondsOf(BorderTracker& tracker, double pace, const Scene& scene, const cv::Rect& is, bool really,
                 double atMost = 12.0)
{
    double now = 0.0;
    for (double step = 0.0; now < atMost && (tracker.step(scene(now), step) == is) == really; now += step)
        step = tick(pace);
    return now;
}

} // namespace

class TestPictureFilters : public QObject
{
    Q_OBJECT

private slots:
    void colorsFollowTheSameCurveAtEveryPaceAndNoNoise()
    {
        using Way = std::tuple<Mode, int, int>;
        for (const auto& [mode, from, to] : {Way(Mode::Calm, 10, 250), Way(Mode::Responsive, 100, 98)}) {
            for (const double pace : kPaces) {
                ColorSmoother smoother;
                smoother.setMode(mode);
                int last = shown(smoother, from, 0.0);
                double now = 0.0;
                while (now < 1.2) {
                    const double step = tick(pace);
                    const int level = shown(smoother, to, step);
                    const double expected = to + (from - to) * std::exp(-(now += step) / 0.150);
                    QVERIFY(std::abs(level - expected) <= 1.0 + 0.1 * std::abs(to - from));
                    QVERIFY(to > from ? last <= level && level <= to : last >= level && level >= to);
                    QCOMPARE(smoother.isSettled(), level == to);
                    last = level;
                }
                QCOMPARE(last, to);
                for (unsigned i = 0; i < 20000; ++i)
                    QCOMPARE(shown(smoother, to + int((i < 999 ? i : dice()) % 2), tick(pace)), to);
                for (int i = 0; i < 53; ++i) // two seconds
                    last = shown(smoother, to + 1, 0.04);
                QCOMPARE(last, to + 1); // no noise any more
            }
        }
    }

    void cutsAndBlackAndWhatBeginsAnewAreShownAtOnce()
    {
        for (const bool calm : {false, true}) {
            ColorSmoother smoother;
            smoother.setMode(calm ? Mode::Calm : Mode::Responsive);
            const auto then = [&](int level, double seconds) {
                smoother.snap();
                shown(smoother, 100, 0.04);
                shown(smoother, 101, 0.01); // on its way
                return shown(smoother, level, seconds);
            };
            QCOMPARE(then(200, 0.04), calm ? 121 : 200); // a cut
            QCOMPARE(then(120, 0.02), calm ? 102 : 116);
            QCOMPARE(then(0, 0.04), 0);
            QCOMPARE(then(120, 0.6), 120);                // a gap
            QCOMPARE(shown(smoother, 123, 60.0), 121);    // nothing moved meanwhile
            QCOMPARE(shown(smoother, 115, 0.04, 3), 115); // another strip
            smoother.setMode(Mode::Off);
            smoother.setMode(calm ? Mode::Calm : Mode::Responsive);
            QCOMPARE(shown(smoother, 120, 0.04, 3), 120);
        }
    }

    void grayDoesNotJump()
    {
        ColorSmoother smoother;
        smoother.setMode(Mode::Responsive);
        LV_RGB last{0, 0, 0};
        for (int i = 1; i < 1016; ++i) { // up and down again, each with a level of blue less and more
            const int gray = i < 509 ? i / 2 : 508 - i / 2;
            QVector<LV_RGB> colors(1, {Byte(gray), Byte(gray), Byte(std::abs(gray + i % 2 * 2 - 1))});
            smoother.step(colors, 0.033);
            const LV_RGB now =
                FrameFilters::adjustSaturation(colors[0], FrameFilters::saturationShare(colors[0], 16));
            for (const auto channel : {&LV_RGB::red, &LV_RGB::green, &LV_RGB::blue})
                QVERIFY(std::abs(now.*channel - last.*channel) <= 8);
            last = now;
        }
        const std::tuple<int, int, double> shares[]{{16, 2, 0.0}, {16, 9, 0.5}, {2, 2, 1.0}, {1, 1, 1.0}};
        for (const auto& [gate, chroma, share] : shares)
            QCOMPARE(FrameFilters::saturationShare({9, Byte(9 + chroma), 9}, gate), share);
    }

    void bordersStayThroughSubtitlesFadesFlashesAndDarkScenes()
    {
        const cv::Rect text(28, 60, 64, 4);
        for (const double pace : {0.0, 1 / 60.0, 1 / 12.0}) {
            for (const cv::Rect& film : {kLetter, kPillar, kBoth, kAll}) {
                const Scene whole = [](double) { return lit(kAll); };
                struct Act
                {
                    Scene scene;
                    bool isFilm = true;
                    double after = 0.0, seconds = 6.0; // borders are as there, and stay
                };
                const Act acts[]{{whole, false},
                                 {[&](double) { return lit(film, text); }, true, 2.0},
                                 {[&](double) { return lit(text); }},
                                 {[&](double now) { return lit(film, {}, std::abs(90 - int(30 * now))); }},
                                 {[&](double now) { return lit(fmod(now, 2.0) < 0.33 ? kAll : film); }},
                                 {[&](double now) {
                                     return lit({54 + int(20 * sin(now)), 28, 12, 10});
                                 }},
                                 {[&](double) { return lit(film - cv::Size(0, 20)); }},
                                 {whole, false, 0.4},
                                 {[&](double) { return lit(film); }, true, 0.3, 1.0},
                                 {whole, false, 0.4, 26.0},
                                 {[&](double) { return lit(film); }, true, 2.0}};
                BorderTracker tracker;
                for (const auto& [scene, isFilm, after, seconds] : acts) {
                    const cv::Rect& expected = isFilm ? film : kAll;
                    const double taken = secondsOf(tracker, pace, scene, expected, false);
                    QVERIFY(film == kAll ? taken == 0.0 : after - 0.01 <= taken && taken <= after + 0.2);
                    QVERIFY(secondsOf(tracker, pace, scene, expected, true, seconds) >= seconds);
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestPictureFilters)
#include "tst_picture_filters.moc"
