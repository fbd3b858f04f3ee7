// When the next grab is due, from made-up clocks.
#include "support/capture/GrabPlan.h"

#include <QtTest>

namespace {
constexpr qint64 kMs = 1000;
constexpr qint64 kLeadUs = 4 * kMs; // before anything is known of what a grab costs
} // namespace

class TestGrabPlan : public QObject
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
        QTest::newRow("three, two of them at once") << 80 << QList<int>{0, 20, 21} << 0;
    }
    void predictsEachPuller()
    {
        QFETCH(int, periodMs);
        QFETCH(QList<int>, phasesMs);
        QFETCH(int, jitterMs);
        GrabPlan plan;
        const qint64 accuracy = (2 * jitterMs + 2) * kMs;
        qint64 last = 0;
        for (int cycle = 0; cycle < 30; ++cycle) {
            for (const int phase : phasesMs) {
                const int jitter = (cycle * 7 + phase) % (2 * jitterMs + 1) - jitterMs;
                const qint64 now = (cycle * qint64(periodMs) + phase + jitter + 1000) * kMs;
                if (cycle > 6 && now - last >= 4 * kMs) { // closer ones share a frame
                    const qint64 due = plan.dueUs(last);
                    const QString missed = QString("cycle %1: %2 for %3").arg(cycle).arg(due).arg(now);
                    QVERIFY2(qAbs(due + kLeadUs - now) <= accuracy, qPrintable(missed));
                }
                plan.pull(last = now);
                if (plan.dueUs(now) == now) // who comes first has to wait
                    plan.done(now - kLeadUs / 2, now);
            }
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
        QVERIFY(qAbs(plan.dueUs(now) - (now + (80 - 11) * kMs)) < kMs);
        // One frame a pull: this one is served, the next is for the pull after it.
        plan.done(now + 69 * kMs, now + 78 * kMs);
        QVERIFY(plan.dueUs(now + 78 * kMs) > now + 140 * kMs);
    }

    void fallsAsleepAfterASecondWithoutPulls()
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
        QVERIFY(plan.dueUs(1000 * kMs) >= 0);
        QCOMPARE(plan.dueUs(1100 * kMs), qint64(-1));
    }
};

QTEST_APPLESS_MAIN(TestGrabPlan)
#include "tst_grab_plan.moc"
