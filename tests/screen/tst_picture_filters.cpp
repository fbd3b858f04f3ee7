#include "effects/screenSync/ColorSmoother.h"

#include <QtTest>
#include <cmath>
#include <functional>
#include <random>

namespace {

using Mode = ColorSmoother::Mode;
using Frame = QVector<LV_RGB>;

Frame gray(int level)
{
    const auto byte = static_cast<std::uint8_t>(level);
    return Frame(2, {byte, byte, byte});
}

int shown(ColorSmoother& smoother, int level, double seconds)
{
    Frame colors = gray(level);
    smoother.step(colors, seconds);
    return colors.last().green;
}

/// Seconds between frames; 0 stands for ticks that come when they like.
constexpr double kPaces[]{0.02, 0.034, 0.04, 0.08, 0.0};

double tick(double pace, std::mt19937& random)
{
    return pace > 0.0 ? pace : std::uniform_real_distribution(0.016, 0.083)(random);
}

} // namespace

class TestPictureFilters : public QObject
{
    Q_OBJECT

private slots:
    void colorsFollowTheSameCurveAtEveryPace()
    {
        struct Way
        {
            Mode mode;
            int from, to;
        };
        const Way ways[]{{Mode::Calm, 10, 250},
                         {Mode::Calm, 250, 1},
                         {Mode::Calm, 100, 101},
                         {Mode::Responsive, 100, 102},
                         {Mode::Responsive, 100, 99}};
        for (const auto [mode, from, to] : ways) {
            std::mt19937 random(1);
            for (const double pace : kPaces) {
                ColorSmoother smoother;
                smoother.setMode(mode);
                QCOMPARE(shown(smoother, from, 0.0), from);
                int last = from;
                for (double now = 0.0, step = 0.0; now < 1.2; now += step) {
                    step = tick(pace, random);
                    const int level = shown(smoother, to, step);
                    const double expected = to + (from - to) * std::exp(-(now + step) / 0.150);
                    QVERIFY(std::abs(level - expected) <= 1.0 + 0.1 * std::abs(to - from));
                    QVERIFY(level == last || (level > last) == (to > from)); // never back
                    QVERIFY(to > from ? level <= to : level >= to);          // nor too far
                    QCOMPARE(smoother.isSettled(), level == to);
                    last = level;
                }
                QCOMPARE(last, to);
            }
        }
    }

    void largeDifferencesPassAtOnceAndSmallOnesSettle()
    {
        ColorSmoother smoother;
        smoother.setMode(Mode::Responsive);
        shown(smoother, 100, 0.0);
        QCOMPARE(shown(smoother, 120, 0.02), 116); // 4/5 of the way, with a time constant of 5 ms
        QCOMPARE(shown(smoother, 102, 0.02), 105);
        smoother.snap();
        shown(smoother, 100, 0.02);
        QCOMPARE(shown(smoother, 107, 0.0775), 104); // 77.5 ms: half the way
    }

    void noiseOfOneLevelChangesNothing()
    {
        std::mt19937 random(7);
        for (const Mode mode : {Mode::Responsive, Mode::Calm}) {
            for (const double pace : kPaces) {
                for (const bool alternates : {true, false}) {
                    ColorSmoother smoother;
                    smoother.setMode(mode);
                    for (const int before : {40, 60, 10}) { // comes from elsewhere
                        shown(smoother, before, 0.04);
                        shown(smoother, 20, 0.04);
                    }
                    for (int i = 0; i < 40; ++i)
                        shown(smoother, 20, 0.04);
                    for (int i = 0; i < 1000; ++i) {
                        const int noise = alternates ? i % 2 : static_cast<int>(random() % 2);
                        QCOMPARE(shown(smoother, 20 + noise, tick(pace, random)), 20);
                    }
                    for (double now = 0.0; now < 2.1; now += 0.04)
                        shown(smoother, 21, 0.04);
                    QCOMPARE(shown(smoother, 21, 0.04), 21); // no noise any more
                }
            }
        }
    }

    void cutsAndBlackAndWhatBeginsAnewAreShownAtOnce()
    {
        const auto after = [](Mode mode, const std::function<int(ColorSmoother&)>& what) {
            ColorSmoother smoother;
            smoother.setMode(mode);
            shown(smoother, 100, 0.04);
            shown(smoother, 110, 0.04);
            return what(smoother);
        };
        const auto step = [](int to, double seconds) {
            return [=](ColorSmoother& smoother) { return shown(smoother, to, seconds); };
        };
        for (const Mode mode : {Mode::Responsive, Mode::Calm}) {
            QCOMPARE(after(mode, step(200, 0.04)) == 200, mode == Mode::Responsive); // a cut
            QCOMPARE(after(mode, step(0, 0.04)), 0);
            QCOMPARE(after(mode, step(120, 0.6)), 120); // a gap
            const auto snapped = [&](ColorSmoother& smoother) {
                smoother.snap();
                return shown(smoother, 115, 0.04);
            };
            QCOMPARE(after(mode, snapped), 115);
            const auto inAnotherMode = [&](ColorSmoother& smoother) {
                for (const Mode other : {Mode::Off, mode})
                    smoother.setMode(other);
                return shown(smoother, 115, 0.04);
            };
            QCOMPARE(after(mode, inAnotherMode), 115);
            const auto ofMoreLeds = [](ColorSmoother& smoother) {
                Frame colors = gray(115) + gray(115);
                smoother.step(colors, 0.04);
                return colors == gray(115) + gray(115) ? 115 : 0;
            };
            QCOMPARE(after(mode, ofMoreLeds), 115);
            // Nothing moved in the pause: the change is as young as after a tick.
            const auto rested = [](ColorSmoother& smoother) {
                for (int i = 0; i < 40; ++i)
                    shown(smoother, 110, 0.04);
                return smoother.isSettled() ? shown(smoother, 113, 60.0) : 0;
            };
            QCOMPARE(after(mode, rested), 111);
            const auto changesColor = [](ColorSmoother& smoother) {
                Frame colors(2, {140, 110, 80}); // of the same lightness
                smoother.step(colors, 0.02);
                return int(colors[0].red);
            };
            QCOMPARE(after(mode, changesColor) == 140, mode == Mode::Responsive);
        }
        QCOMPARE(after(Mode::Off, step(111, 0.04)), 111);
    }
};

QTEST_APPLESS_MAIN(TestPictureFilters)
#include "tst_picture_filters.moc"
