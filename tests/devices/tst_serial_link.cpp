#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/LedFrame.h"
#include "controllers/LineBudget.h"
#include "support/config/ConfigurationManager.h"

#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <fcntl.h>
#include <future>
#include <memory>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kRealLine = 11520; // bytes a second

/// A picture that carries a number.
QVector<LV_RGB> picture(int number, int leds)
{
    return QVector<LV_RGB>(leds,
                           LV_RGB{static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number), 255});
}

int numberOf(const StripFrame& frame)
{
    return frame.colors.isEmpty() ? -1 : frame.colors.at(0).red << 8 | frame.colors.at(0).green;
}

bool isBlack(const StripFrame& frame, int leds)
{
    return frame.colors == QVector<LV_RGB>(leds);
}

/// A controller on the port at that location, with full brightness.
struct Strip
{
    Strip(const QString& location, int leds)
    {
        auto* port = new LVSerialPort;
        opened = port->init({QStringLiteral("ttySIM"), location, QString()});
        serial = port;
        ControlOptions options;
        options.id = options.model = QStringLiteral("LV0127");
        options.portName = QStringLiteral("ttySIM");
        options.nbLeds = static_cast<uint32_t>(leds);
        options.brightness = 1.0F;
        controller = std::make_unique<LVController>(options, port, nullptr);
        controller->rebuildHeader();
    }

    bool opened = false;
    QPointer<LVSerialPort> serial;
    std::unique_ptr<LVController> controller;
};

StripSimulator::Options simulated(const QTemporaryDir& folder, int bytesPerSecond = 0)
{
    StripSimulator::Options options;
    options.portsFile = folder.filePath(QStringLiteral("ports.json"));
    options.bytesPerSecond = bytesPerSecond;
    return options;
}

const QString kReleased = QStringLiteral("The port is released, the black buffer is writeen:  ");

} // namespace

class SerialLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void framesHaveHeaderAndPadding_data()
    {
        QTest::addColumn<quint32>("nbLeds");
        QTest::addColumn<int>("colors");
        QTest::addColumn<QByteArray>("header");
        QTest::addColumn<int>("size");
        QTest::newRow("short picture") << 20U << 10 << QByteArray("416461000014") << 6 + 60;
        QTest::newRow("long picture") << 20U << 30 << QByteArray("416461000014") << 6 + 90;
        QTest::newRow("low byte zero") << 256U << 0 << QByteArray("416461000100") << 6 + 768;
        QTest::newRow("more than the header holds") << 65538U << 1 << QByteArray("416461000002") << 6 + 6;
    }
    void framesHaveHeaderAndPadding()
    {
        QFETCH(quint32, nbLeds);
        QFETCH(int, colors);
        QFETCH(int, size);
        const QByteArray frame = LedFrame::build(LedFrame::header(nbLeds), picture(0x0102, colors));
        QTEST(frame.left(6).toHex(), "header");
        QCOMPARE(frame.size(), size);
        QCOMPARE(frame.mid(6, colors * 3).toHex(), QByteArray("0102ff").repeated(colors));
        QCOMPARE(frame.mid(6 + colors * 3).count('\0'), size - 6 - colors * 3);
    }

    void theLineNeverOwesMoreThanAFrameAndAHalf()
    {
        constexpr int kBytes = 368;
        constexpr qint64 kFrameUs = 1000000LL * kBytes / kRealLine;
        LineBudget line;
        int sent = 0;
        qint64 mostOwedUs = 0;
        for (qint64 nowUs = 0; nowUs < 6000000; nowUs += 1000000 / 62) {
            if (line.delayUs(nowUs, kBytes) == 0) {
                line.sent(nowUs, kBytes);
                ++sent;
            }
            mostOwedUs = qMax(mostOwedUs, line.backlogUs(nowUs));
        }
        QVERIFY2(mostOwedUs <= kFrameUs * 3 / 2 * 106 / 100, qPrintable(QString::number(mostOwedUs)));
        QVERIFY2(sent >= 155 && sent <= 188, qPrintable(QString::number(sent))); // 188 would fill the line
        QCOMPARE(line.delayUs(20000000, kBytes), 0); // an idle line takes a frame at once
    }

    void aBusyLineGetsTheNewestPictureOnly()
    {
        QTemporaryDir folder;
        StripSimulator simulator(simulated(folder, kRealLine));
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 120);
        QVERIFY(strip.opened);
        constexpr int kOffered = 120;
        int lateAtMost = 0;
        for (int i = 1; i <= kOffered; ++i) {
            const auto before = simulator.counters().frames;
            strip.controller->update(picture(i, 120));
            QTest::qWait(16);
            if (simulator.counters().frames > before)
                lateAtMost = qMax(lateAtMost, i - numberOf(simulator.lastFrame()));
        }
        QTRY_COMPARE(numberOf(simulator.lastFrame()), kOffered);
        const auto written = simulator.counters().frames;
        QCOMPARE(written + static_cast<qint64>(strip.serial->droppedFrames()), kOffered);
        QVERIFY2(strip.serial->droppedFrames() > kOffered / 4, "the line cannot have carried them all");
        QVERIFY2(lateAtMost <= 30, qPrintable(QString::number(lateAtMost))); // without pacing it grows to 60
        QCOMPARE(simulator.counters().garbageBytes, 0);
    }

    void anIdleLineTakesEveryFrameUnchanged()
    {
        QTemporaryDir folder;
        StripSimulator simulator(simulated(folder));
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 4);
        for (int i = 1; i <= 20; ++i) {
            strip.controller->update(picture(i, 4));
            QTRY_COMPARE(numberOf(simulator.lastFrame()), i);
        }
        QCOMPARE(strip.serial->droppedFrames(), 0U);
        QCOMPARE(simulator.lastFrame().colors, picture(20, 4));
    }

    void aDeviceWithoutLedsGetsNothing()
    {
        QTemporaryDir folder;
        LogCapture log;
        StripSimulator simulator(simulated(folder));
        QVERIFY(simulator.plugIn());
        {
            Strip strip(simulator.location(), 0);
            strip.controller->update(picture(1, 5));
        }
        QCOMPARE(log.count(kReleased + QStringLiteral("false , nbLEDS: 0")), 1);
        QCOMPARE(simulator.counters().bytes, 0);
    }

    void blackIsTheLastThingOnTheWire()
    {
        QTemporaryDir folder;
        LogCapture log;
        StripSimulator simulator(simulated(folder, kRealLine));
        QVERIFY(simulator.plugIn());
        {
            Strip strip(simulator.location(), 120);
            for (int i = 1; i <= 500; ++i)
                strip.controller->update(picture(i, 120));
        }
        QCOMPARE(log.count(kReleased + QStringLiteral("true , nbLEDS: 120")), 1);
        QTRY_VERIFY(isBlack(simulator.lastFrame(), 120));
        QVERIFY(simulator.counters().frames < 10);
        QCOMPARE(simulator.counters().garbageBytes, 0);
    }

    void severalDevicesGoDarkBeforeTheFirstIsWaitedFor()
    {
        QTemporaryDir folder;
        std::vector<std::unique_ptr<StripSimulator>> simulators;
        std::vector<Strip> strips;
        for (int i = 0; i < 5; ++i) {
            auto options = simulated(folder, kRealLine);
            options.portName = QStringLiteral("ttySIM%1").arg(i);
            simulators.push_back(std::make_unique<StripSimulator>(options));
            QVERIFY(simulators.back()->plugIn());
            strips.emplace_back(simulators.back()->location(), 100);
            strips.back().controller->update(picture(i, 100));
        }
        for (const Strip& strip : strips)
            strip.controller->beginRelease();
        for (const auto& simulator : simulators)
            QTRY_VERIFY(isBlack(simulator->lastFrame(), 100));
        strips.at(0).controller->update(picture(9, 100)); // comes too late
        strips.clear();
        QVERIFY(isBlack(simulators.at(0)->lastFrame(), 100));
    }

    void aHangUpIsToldOnce_data()
    {
        QTest::addColumn<bool>("inTheMiddleOfAFrame");
        QTest::newRow("idle") << false;
        QTest::newRow("writing") << true;
    }
    void aHangUpIsToldOnce()
    {
        QFETCH(bool, inTheMiddleOfAFrame);
        QTemporaryDir folder;
        StripSimulator simulator(simulated(folder));
        if (inTheMiddleOfAFrame)
            simulator.setHangUpAfterBytes(366 + 100);
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 120);
        QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
        QSignalSpy errors(strip.serial, &LVSerialPort::errorOccurred);
        strip.controller->update(picture(1, 120));
        QTRY_COMPARE(simulator.counters().frames, 1);
        if (!inTheMiddleOfAFrame)
            simulator.unplug();
        for (int i = 0; i < 20; ++i) { // the effect does not know yet
            strip.controller->update(picture(i, 120));
            QTest::qWait(10);
        }
        QTRY_COMPARE(status.count(), 1);
        QCOMPARE(status.at(0).at(0).toUInt(), 2U);
        QCOMPARE(strip.controller->options().status, 2U);
        QCOMPARE(errors.count(), 1);
    }

    void aHangUpDuringReleaseDoesNotHoldTheExit()
    {
        QTemporaryDir folder;
        LogCapture log;
        StripSimulator simulator(simulated(folder));
        simulator.setHangUpAfterBytes(100);
        QVERIFY(simulator.plugIn());
        {
            Strip strip(simulator.location(), 120);
        }
        QCOMPARE(log.count(kReleased + QStringLiteral("false , nbLEDS: 120")), 1);
    }

    void aDeviceThatNeverReadsDoesNotHoldTheExit()
    {
        LogCapture log;
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
        {
            Strip strip(QString::fromLocal8Bit(ptsname(master)), 20000); // more than any buffer takes
            QVERIFY(strip.opened);
            strip.controller->update(picture(1, 20000));
        }
        close(master);
        QCOMPARE(log.count(kReleased + QStringLiteral("false , nbLEDS: 20000")), 1);
        QVERIFY(!log.contains(QStringLiteral("its port does not close")));
    }

    void onlyALeadingNulIsAPress()
    {
        QTemporaryDir folder;
        LogCapture log;
        StripSimulator simulator(simulated(folder));
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 1);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        QVERIFY(simulator.pressButton());
        QTRY_COMPARE(pressed.count(), 1);
        QCOMPARE(pressed.at(0).at(0).toInt(), 0);
        QVERIFY(simulator.send(QByteArray("A\0", 2)));
        QTRY_COMPARE(log.count(QStringLiteral("Received a unknown data")), 1);
        QVERIFY(simulator.send(QByteArray("\0A", 2)));
        QTRY_COMPARE(pressed.count(), 2);
    }

    void aDeviceThatTalksWithoutEndIsReadSlowly()
    {
        LogCapture log;
        const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        QVERIFY(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
        Strip strip(QString::fromLocal8Bit(ptsname(master)), 1);
        QVERIFY(strip.opened);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
        QElapsedTimer clock;
        clock.start();
        std::atomic<bool> stop{false};
        const auto flood = std::async(std::launch::async, [&] {
            const char presses[64] = {};
            while (!stop) {
                if (write(master, presses, sizeof presses) < 0)
                    std::this_thread::yield();
            }
        });
        const auto end = qScopeGuard([&] { stop = true; }); // before the flood's own end waits for it
        QTRY_VERIFY(pressed.count() > 20);
        const auto most = 21 * (clock.elapsed() / 1000 + 1);
        QVERIFY2(pressed.count() <= most, qPrintable(QString::number(pressed.count())));
        QVERIFY(log.count(QStringLiteral("Received click signal")) <= most + 20);
        QCOMPARE(log.count(QStringLiteral("talks without end")), 1);
        stop = true;
        flood.wait();
        close(master);
        QTRY_COMPARE(status.count(), 1); // also behind a full buffer
    }

    void errorsBecomeStatusAndEqualOnesAreDropped()
    {
        const int none = -1;
        const int expected[] = {0, 3, 3, 3, none, none, none, 2, 2, 2, 3, 3, 3, 3, none};
        for (int error = 0; error < 15; ++error)
            QCOMPARE(int(LVSerialPort::statusOf(QSerialPort::SerialPortError(error)).value_or(none)),
                     expected[error]);

        QTemporaryDir folder;
        StripSimulator simulator(simulated(folder));
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 1);
        QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
        using Error = QSerialPort::SerialPortError;
        for (const Error error : {Error::WriteError, Error::ReadError, Error::FramingError,
                                  Error::TimeoutError, Error::NoError, Error::NoError})
            emit strip.serial->errorOccurred(error, QStringLiteral("text"));
        QTRY_COMPARE(status.count(), 3);
        QCOMPARE(status.at(0), (QVariantList{2U, QStringLiteral("text")}));
        QCOMPARE(status.at(1).at(0).toUInt(), 3U);
        QCOMPARE(status.at(2).at(0).toUInt(), 0U);
    }

    void anErrorDoesNotOvertakeTheHandOver()
    {
        QTemporaryDir folder;
        StripSimulator simulator(simulated(folder));
        QVERIFY(simulator.plugIn());
        Strip strip(simulator.location(), 1);
        emit strip.serial->errorOccurred(QSerialPort::ReadError, QString());
        std::unique_ptr<QSignalSpy> owner; // connects in an event of its own, as a device manager does
        QMetaObject::invokeMethod(
            this,
            [&] {
                owner =
                    std::make_unique<QSignalSpy>(strip.controller.get(), &AbsRGBController::statusChanged);
            },
            Qt::QueuedConnection);
        QTRY_VERIFY(owner && owner->count() == 1);
    }

    void aPortThatCannotBeOpenedIsReported()
    {
        LogCapture log;
        LVSerialPort port;
        QVERIFY(
            !port.init({QStringLiteral("ttyX"), QStringLiteral("/dev/there-is-no-such-port"), QString()}));
        QCOMPARE(log.count(QStringLiteral("[SerialPort]: Failed to open the serial port ttyX\r\n\terror: 1")),
                 1);
    }
};

QTEST_GUILESS_MAIN(SerialLinkTest)
#include "tst_serial_link.moc"
