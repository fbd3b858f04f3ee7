#include "LogCapture.h"
#include "controllers/LVController.h"
#include "controllers/PortHolder.h"
#include "controllers/ProbeDialogue.h"
#include "controllers/SystemSerialPortSource.h"

#include <QAbstractEventDispatcher>
#include <QtTest>

#include <windows.h>
// behind windows.h
#include <dbt.h>

namespace {
constexpr int kWaitMs = 30000; ///< beside other work
const QString kReleased = QStringLiteral("the black buffer is writeen:  ");
} // namespace

/// Serial lines through Windows alone. Who runs it brings the strips along, and looks at what they show.
class ComPortTest : public QObject
{
    Q_OBJECT

private:
    /// Found as the program does; null when there is no answer, or half of one.
    static std::unique_ptr<LVController> found(const QString& port, uint32_t leds)
    {
        ProbeDialogue dialogue(SystemSerialPortSource().find(port), nullptr);
        QSignalSpy answered(&dialogue, &ProbeDialogue::answered);
        if (!dialogue.start(kWaitMs, 1, 300) || !answered.wait(kWaitMs) ||
            answered[0][0].toByteArray() != "LV0127,\x01\x02\x03\x04\r\n")
            return nullptr;
        ControlOptions options;
        options.portName = port;
        options.nbLeds = leds;
        auto controller = std::make_unique<LVController>(options, dialogue.takePort(), nullptr);
        controller->rebuildHeader();
        return controller;
    }

private slots:
    void aStripIsFoundInPiecesFedHeardAndLeftBlack()
    {
        const LogCapture log;
        auto controller = found("COM11", 60);
        QVERIFY(controller);
        QSignalSpy status(controller.get(), &AbsRGBController::statusChanged);
        QSignalSpy pressed(controller.get(), &AbsRGBController::devActionActived);
        QSignalSpy busy(controller.get(), &AbsRGBController::lineBusy);
        const auto isHeard = [&] {
            for (int i = 0; i < 3; ++i)
                controller->update(QVector<LV_RGB>(60, {9, 99, 255}));
            return pressed.count() > 1 && !busy.isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isHeard(), kWaitMs);
        const auto isDriven = [] {
            return hasThread(GetCurrentProcessId(), LVController::threadName("COM11"));
        };
        QVERIFY(isDriven());
        controller.reset();
        QVERIFY(!isDriven() && status.isEmpty());
        QCOMPARE(log.count(kReleased + "true"), 1);
    }

    void neitherALineThatGoesInAFrameNorOneThatIsStuckHoldsTheExit()
    {
        for (const bool isStuck : {false, true}) {
            const LogCapture log;
            auto controller = found(isStuck ? "COM13" : "COM12", 3000);
            QVERIFY(controller);
            QSignalSpy status(controller.get(), &AbsRGBController::statusChanged);
            for (int i = 0; i < 3; ++i)
                controller->update(QVector<LV_RGB>(3000));
            if (!isStuck)
                QTRY_COMPARE_WITH_TIMEOUT(status.value(0).value(0).toUInt(), 2U, kWaitMs);
            controller->update(QVector<LV_RGB>(3000));
            controller.reset();
            QCOMPARE(status.count(), isStuck ? 0 : 1);
            QCOMPARE(log.count(kReleased + "false"), 1);
            QVERIFY(!log.contains("its port does not close"));
        }
        SerialLine missing;
        QVERIFY(!missing.open("\\\\.\\COM14") && missing.error() == SerialLine::DeviceNotFoundError);
    }

    void anArrivalIsToldOnceHoweverOftenItIsSent()
    {
        SerialArrival arrival({});
        QStringList arrived;
        connect(&arrival, &SerialArrival::arrived, this, [&](const QString& name) { arrived += name; });
        const auto send = [](WPARAM event, const QString& name) {
            alignas(DEV_BROADCAST_PORT_W) char bytes[sizeof(DEV_BROADCAST_PORT_W) + 32] = {};
            auto* port = reinterpret_cast<DEV_BROADCAST_PORT_W*>(bytes);
            port->dbcp_devicetype = DBT_DEVTYP_PORT;
            name.toWCharArray(port->dbcp_name);
            MSG message = {};
            message.message = WM_DEVICECHANGE;
            message.wParam = event;
            message.lParam = reinterpret_cast<LPARAM>(bytes);
            long result = 0;
            QAbstractEventDispatcher::instance()->filterNativeEvent("windows_generic_MSG", &message, &result);
        };
        for (int times = 0; times < 3; ++times)
            for (const char* name : {"COM5", "COM6"})
                send(DBT_DEVICEARRIVAL, name);
        send(DBT_DEVICEREMOVECOMPLETE, "COM7");
        QCOMPARE(arrived, QStringList({"COM5", "COM6"}));
        QTest::qWait(400); // the same port once more, in good time
        send(DBT_DEVICEARRIVAL, "COM5");
        QCOMPARE(arrived.size(), 3);
    }
};

QTEST_GUILESS_MAIN(ComPortTest)
#include "tst_com_port.moc"
