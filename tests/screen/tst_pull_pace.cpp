// When the next pull is expected, from made-up clocks.
#include "support/capture/PullPace.h"

#include <QtTest>

namespace {
constexpr qint64 kMs = 1000;
}

class TestPullPace : public QObject
{
    Q_OBJECT

private slots:
    void predictsEachPuller_data()
    {
        QTest::addColumn<int>("periodMs");
        QTest::addColumn<QList<int>>("phasesMs");
        QTest::addColumn<int>("jitterMs");
        QTest::newRow("one unsteady puller") << 80 << QList<int>{0} << 3;
        QTest::newRow("a slow one") << 3000 << QList<int>{0} << 5;
        QTest::newRow("two pullers") << 80 << QList<int>{0, 30} << 1;
        QTest::newRow("three, two of them at once") << 80 << QList<int>{0, 20, 21} << 0;
    }
    void predictsEachPuller()
    {
        QFETCH(int, periodMs);
        QFETCH(QList<int>, phasesMs);
        QFETCH(int, jitterMs);
        PullPace pace;
        const qint64 accuracy = (jitterMs + 2) * kMs;
        for (int cycle = 0; cycle < 30; ++cycle) {
            for (const int phase : phasesMs) {
                const int jitter = (cycle * 7 + phase) % (2 * jitterMs + 1) - jitterMs;
                const qint64 now = (cycle * qint64(periodMs) + phase + jitter + 1000) * kMs;
                if (cycle > 6 && now - pace.lastUs() >= 4 * kMs) { // closer ones share a frame
                    const qint64 expected = pace.nextAfter(pace.lastUs() + pace.apartUs());
                    const QString missed = QString("cycle %1: %2 for %3").arg(cycle).arg(expected).arg(now);
                    QVERIFY2(qAbs(expected - now) <= accuracy + jitterMs * kMs, qPrintable(missed));
                }
                pace.record(now);
            }
        }
    }

    void followsAChangeOfPace()
    {
        PullPace pace;
        qint64 now = 0;
        for (int i = 0; i < 20; ++i)
            pace.record(now += 80 * kMs);
        for (int i = 0; i < 12; ++i)
            pace.record(now += 33 * kMs);
        QVERIFY(qAbs(pace.nextAfter(now + 6 * kMs) - (now + 33 * kMs)) < 2 * kMs);
    }

    void fallsAsleepAfterASecondWithoutPulls()
    {
        PullPace pace;
        QVERIFY(pace.isAsleep(0));
        QCOMPARE(pace.nextAfter(0), qint64(-1));
        pace.record(5 * kMs);
        QCOMPARE(pace.nextAfter(6 * kMs), qint64(-1)); // one pull is no rhythm
        pace.record(85 * kMs);
        QVERIFY(!pace.isAsleep(1000 * kMs));
        QVERIFY(pace.isAsleep(1100 * kMs));
    }
};

QTEST_APPLESS_MAIN(TestPullPace)
#include "tst_pull_pace.moc"
