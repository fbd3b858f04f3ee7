#include "FaultRun.h"
#include "StoredStrip.h"

#include <QtTest>

namespace {
constexpr int kWaitMs = 15000;
constexpr int kAll = 1000000;
constexpr int kSmallBytes = 64;
} // namespace

/// A handful of what scripts/faults.sh tries, all at the same time.
class FaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void programRunsOnOrEndsWithAMessageAndAllIsInOrder()
    {
        FaultRun line, memory, stores, threads;
        stores.fail(FaultRead, 1, kAll);
        threads.fail(FaultThread, 1, kAll);
        for (FaultRun* run : {&line, &memory, &stores, &threads}) {
            auto strips = run->program().readConfig("controllers.json");
            strips["LV0127:01020304"] = storedStrip("id.effect.colorful.ColorMap_3", 60); // which moves
            run->program().writeConfig("controllers.json", strips);
            run->start(kSmallBytes);
        }
        for (FaultRun* run : {&line, &memory, &stores})
            QTRY_VERIFY_WITH_TIMEOUT(run->strip().isLit(), kWaitMs);
        line.failNow(FaultLineWrite);
        memory.failNow(FaultMemory, kAll);
        QTRY_VERIFY_WITH_TIMEOUT(line.program().logText().contains("Device has failed: "), kWaitMs);
        for (FaultRun* run : {&line, &memory, &stores, &threads}) {
            run->end();
            QCOMPARE(run->judge(), QStringList());
        }
        QVERIFY(line.ending().isEmpty() && stores.ending().isEmpty());
        QVERIFY(stores.failed(FaultRead) > 3 && stores.program().logText().contains("it is left as it is"));
        QVERIFY2(memory.ending().contains("Out of memory"), qPrintable(memory.ending()));
        QVERIFY(threads.program().standardError().contains("has no thread to spare"));
    }
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "tst_faults.moc"
