#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/LedFrame.h"
#include "controllers/SystemSerialPortSource.h"
#include "controllers/WindowsSerial.h"
#include "support/config/ConfigurationManager.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kRealLine = 11520; // bytes a second

/// A picture that carries a number.
QVector<LV_RGB> picture(int number, int leds)
{
    return QVector<LV_RGB>(leds, {static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number), 255});
}

/// A controller on the port at that location, with full brightness.
struct Strip
{
    Strip(const QString& location, int leds)
        : serial(new LVSerialPort)
        , opened(serial->init({"ttySIM", location, QString()}))
    {
        ControlOptions options;
        options.id = options.model = "LV0127";
        options.nbLeds = static_cast<uint32_t>(leds);
        options.brightness = 1.0F;
        controller = std::make_unique<LVController>(options, serial, nullptr);
        controller->rebuildHeader();
    }

    QPointer<LVSerialPort> serial;
    const bool opened;
    std::unique_ptr<LVController> controller;
};

/// A simulated device that is plugged in, and what was logged since.
struct Line
{
    explicit Line(int bytesPerSecond = 0, int hangUpAfterBytes = 0)
    {
        StripSimulator::Options options;
        options.portsFile = folder.filePath("ports.json");
        options.bytesPerSecond = bytesPerSecond;
        options.hangUpAfterBytes = hangUpAfterBytes;
        simulator = std::make_unique<StripSimulator>(options);
        if (!simulator->plugIn())
            qFatal("no simulated device");
    }
    const QTemporaryDir folder;
    const LogCapture log;
    std::unique_ptr<StripSimulator> simulator;
};

/// A node of its own, even in the place of another.
void plugIn(const QString& node)
{
    QSaveFile file(node);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.commit());
}

const QString kReleased = "The port is released, the black buffer is writeen:  ";

} // namespace

class SerialLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void framesHaveHeaderAndPadding()
    {
        for (const auto& [nbLeds, colors, header, dark] : {std::tuple(20U, 10, "416461000014", 10),
                                                           {20U, 30, "416461000014", 0},
                                                           {65538U, 1, "416461000002", 1}})
            QCOMPARE(LedFrame::build(LedFrame::header(nbLeds), picture(0x0102, colors)).toHex(),
                     QByteArray(header) + QByteArray("0102ff").repeated(colors) +
                         QByteArray("000000").repeated(dark));
    }

    void theLineNeverOwesMoreThanAFrameAndAHalf()
    {
        constexpr int kBytes = 368;
        constexpr qint64 kFrameUs = 1000000LL * kBytes / kRealLine;
        FramePacer pacer;
        int offered = 0, sent = 0;
        for (qint64 nowUs = 0; nowUs < 6000000; nowUs += 1000000 / 62) {
            const QByteArray newest = QByteArray::number(++offered).leftJustified(kBytes, ' ');
            pacer.offer(newest);
            if (pacer.delayUs(nowUs) == 0) {
                QVERIFY(pacer.take(nowUs) == newest && !pacer.isWaiting());
                ++sent;
            }
            QVERIFY(pacer.backlogUs(nowUs) <= kFrameUs * 3 / 2 * 106 / 100);
        }
        QVERIFY2(sent >= 155 && sent <= 188, qPrintable(QString::number(sent))); // 188 would fill the line
        QCOMPARE(pacer.delayUs(20000000), 0); // an idle line takes a frame at once
    }

    void framesAtTheLinesPaceSoonStopWaitingForIt()
    {
        const QByteArray frame = LedFrame::build(LedFrame::header(300), {});
        const qint64 slotUs = LineBudget().costUs(frame.size());
        for (const qint64 extraUs : {slotUs / 10, slotUs / 2, slotUs * 9 / 10}) { // after the tenth frame
            FramePacer pacer;
            qint64 now = 0;
            const auto readyAfter = [&](qint64 atUs) {
                pacer.offer(frame);
                const qint64 earlyUs = pacer.earlyUs(atUs);
                pacer.take(atUs + pacer.delayUs(atUs));
                return atUs + earlyUs;
            };
            for (int tick = 0; tick < 20; ++tick) {
                qint64 next = qMax(now + slotUs, readyAfter(now));
                if (tick == 10)
                    next = qMax(next, readyAfter(now + extraUs));
                now = qMin(next, now + 2 * slotUs);
                QVERIFY(tick < 13 || pacer.backlogUs(now) <= slotUs / 20);
            }
        }
    }

    void aFrameThatIsReplacedKeepsItsReach()
    {
        const auto frame = [](quint32 stated, int colors) {
            return LedFrame::build(LedFrame::header(stated), picture(colors, colors));
        };
        FramePacer pacer;
        pacer.offer(frame(300, 300));
        pacer.offer(frame(250, 250));
        pacer.offer(frame(20, 30)); // more colours than stated
        QCOMPARE(pacer.take(0), frame(300, 30));
        pacer.offer(frame(20, 30));
        QCOMPARE(pacer.take(0), frame(20, 30));
        pacer.offer(frame(20, 20));
        pacer.offer(frame(256, 9)); // longer than before
        QCOMPARE(pacer.take(0), frame(256, 9));
    }

    void aBusyLineGetsTheNewestPictureAndBlackInTheEnd()
    {
        Line line(kRealLine);
        {
            const Strip strip(line.simulator->location(), 300);
            QSignalSpy busy(strip.controller.get(), &AbsRGBController::lineBusy);
            QCOMPARE(strip.controller->options().frameSlotUs, LineBudget().costUs(906));
            strip.controller->setNbLeds(120);
            QCOMPARE(strip.controller->options().frameSlotUs, LineBudget().costUs(366));
            for (int i = 1; i <= 250; ++i)
                strip.controller->update(picture(i, 120));
            QTRY_VERIFY(!busy.isEmpty() && busy.first().at(0).toInt() > 33);
            QTRY_COMPARE(line.simulator->lastFrame().colors, picture(250, 120));
            for (int i = 1; i <= 250; ++i)
                strip.controller->update(picture(i, 120));
        }
        QCOMPARE(line.log.count(kReleased + "true , nbLEDS: 120"), 1);
        QTRY_COMPARE(line.simulator->lastFrame().colors, QVector<LV_RGB>(120));
        QVERIFY(line.simulator->counters().frames < 20 && line.simulator->counters().garbageBytes == 0);
    }

    void aHangUpIsToldOnce()
    {
        for (const bool inTheMiddleOfAFrame : {false, true}) {
            Line line(0, inTheMiddleOfAFrame ? 366 + 100 : 0);
            const Strip strip(line.simulator->location(), 120);
            QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
            QSignalSpy errors(strip.serial, &LVSerialPort::errorOccurred);
            strip.controller->update(picture(1, 120));
            QTRY_COMPARE(line.simulator->counters().frames, 1);
            if (!inTheMiddleOfAFrame)
                line.simulator->unplug();
            for (int i = 0; i < 20; ++i) { // the effect does not know yet
                strip.controller->update(picture(i, 120));
                QTest::qWait(10);
            }
            QTRY_COMPARE(status.count(), 1);
            QVERIFY(status.at(0).at(0).toUInt() == 2U && errors.count() == 1);
        }
    }

    void neitherAHangUpNorADeviceThatNeverReadsHoldsTheExit()
    {
        const Line line(0, 100); // hangs up during the release, which takes a quarter of a second at best
        {
            const Strip strip(line.simulator->location(), 1000);
        }
        QCOMPARE(line.log.count(kReleased + "false , nbLEDS: 1000"), 1);
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
        {
            const Strip strip(QString::fromLocal8Bit(ptsname(master)), 20000); // more than any buffer takes
            QVERIFY(strip.opened);
            strip.controller->update(picture(1, 20000));
        }
        close(master);
        QCOMPARE(line.log.count(kReleased + "false , nbLEDS: 20000"), 1);
        QVERIFY(!line.log.contains("its port does not close"));
    }

    void chatterIsReadSlowlyAndIsNoPress()
    {
        Line line;
        const Strip strip(line.simulator->location(), 1);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
        QElapsedTimer clock;
        clock.start();
        for (int more = 0; more < 100; more += line.log.contains("talks without end") ? 1 : 0) {
            QVERIFY(line.simulator->send(QByteArray("\xff\0\0", 3)));
            QTest::qWait(1);
        }
        QVERIFY(line.log.count("Received some data") <= 21 * (clock.elapsed() / TalkGuard::kWindowMs + 1));
        const auto readLate = [&] { // more comes in the turn in which it is time to read again
            QThread::msleep(TalkGuard::kWindowMs * 11 / 10);
            emit strip.serial->line()->readyRead();
        };
        QMetaObject::invokeMethod(strip.serial, readLate, Qt::BlockingQueuedConnection);
        QVERIFY(line.simulator->send("B"));
        QTRY_VERIFY(line.log.contains("B\""));
        QCoreApplication::processEvents();
        QCOMPARE(pressed.count(), 0);
        QVERIFY(line.simulator->pressButton());
        QTRY_COMPARE(pressed.count(), 1); // heard again

        for (int chunk = 0; chunk < 40; ++chunk) {
            line.simulator->send(QByteArray(500, '\xff'));
            QTest::qWait(1);
        }
        line.simulator->unplug();
        QTRY_COMPARE(status.count(), 1); // also behind a full buffer
        QCOMPARE(line.log.count("talks without end"), 1);
    }

    void whatCameBeforeTheLineWasOpenIsNotHeard()
    {
        Line line;
        SerialLine opened;
        QVERIFY(line.simulator->send("old"));
        QVERIFY(opened.open(line.simulator->location()));
        QVERIFY(line.simulator->send("new"));
        QByteArray heard;
        QTRY_VERIFY((heard += opened.readAll()).endsWith("new"));
        QCOMPARE(heard, QByteArray("new"));
    }

    void everyChunkThatBeginsWithNulIsAPress()
    {
        Line line;
        const Strip strip(line.simulator->location(), 1);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        const auto chunksRead = [&] { return line.log.count("Received some data"); };
        for (const QByteArray& chunk : {QByteArray(1, '\0'), QByteArray("A\0", 2), QByteArray("\0A", 2)}) {
            const int presses = pressed.count() + (chunk.at(0) == '\0'), before = chunksRead();
            QVERIFY(line.simulator->send(chunk));
            QTRY_VERIFY(chunksRead() == before + 1 && pressed.count() == presses);
        }
        for (const int pauseMs : {0, 1, 5, 30}) { // those that are read in one piece count as one
            const int presses = pressed.count();
            QVERIFY(line.simulator->pressButton());
            QTest::qWait(pauseMs);
            QVERIFY(line.simulator->pressButton());
            QTRY_VERIFY(pressed.count() > presses);
        }
        QTRY_COMPARE(chunksRead() - pressed.count(), 1); // the one that was none
    }

    void theSystemIsAskedForItsPortsOnlyWhenTheyChange()
    {
        const QTemporaryDir devices;
        int asked = 0;
        const QList<SerialPortRecord> records{{"ttyUSB0", "/dev/ttyUSB0", "a"},
                                              {"ttyUSB1", "/dev/ttyUSB1", "b"}};
        SystemSerialPortSource source(devices.path(), [&] {
            ++asked;
            return records;
        });
        const auto found = [&source] {
            return std::pair(source.find("ttyUSB0").isValid(), source.find("ttyUSB1").isValid());
        };
        plugIn(devices.filePath("ttyUSB0"));
        QVERIFY(found() == std::pair(true, false)); // the other is going, or not ours to open
        plugIn(devices.filePath("tty9"));           // a console
        QVERIFY(source.availablePorts().size() == 1 && asked == 1);
        plugIn(devices.filePath("ttyUSB1"));
        QVERIFY(found() == std::pair(true, true));
        QVERIFY(QFile::remove(devices.filePath("ttyUSB0")));
        QVERIFY(found() == std::pair(false, true) && asked == 3);
    }

    void newPortsArriveWhateverReportsThem()
    {
        for (const bool isWatched : {true, false}) { // false: by polling, the folder is not there yet
            const QTemporaryDir folder;
            const QString devices = folder.filePath("dev/");
            if (isWatched && QDir().mkdir(devices))
                plugIn(devices + "ttyUSB0");
            SystemSerialPortSource source(
                devices, []() -> QList<SerialPortRecord> { qFatal("nothing may be opened for it"); });
            QStringList arrived;
            connect(&source, &ISerialPortSource::portArrived, this,
                    [&](const QString& name) { arrived.append(name); });
            QDir().mkdir(devices);
            for (const char* name : {"tty5", "ttyUSB1", "ttyS4"})
                plugIn(devices + name);
            QTRY_COMPARE_WITH_TIMEOUT(arrived.join(' '), "ttyS4 ttyUSB1", 20000);
            if (isWatched)
                plugIn(devices + "ttyUSB0"); // out and in again between two looks
            plugIn(devices + "rfcomm0");
            const QString later = isWatched ? "rfcomm0 ttyUSB0" : "rfcomm0";
            QTRY_COMPARE_WITH_TIMEOUT(arrived.mid(2).join(' '), later, 20000);
        }
    }

    void windowsTellsPortsAndErrorsAsOtherSystemsDo()
    {
        namespace Windows = WindowsSerial;
        QVERIFY(isStripAdapter(Windows::usbIds("USB\\VID_1A86&PID_7523\\5&2C4F1A7&0&3")));
        QVERIFY(isStripAdapter(Windows::usbIds("usb\\vid_1a86&pid_7522&mi_00\\6&1&0&0000")));
        QCOMPARE(Windows::usbIds("FTDIBUS\\VID_0403+PID_6001+A5028\\0000").product, quint16(0x6001));
        for (const char* other :
             {"", "ACPI\\PNP0501\\1", "USB\\VID_1A86&PID_75", "USB\\VID_1A86&PID_75231\\5"})
            QCOMPARE(Windows::usbIds(other).vendor, quint16(0));
        const QString name = "USB-SERIAL CH340 (Rev. 2) (COM12)";
        QCOMPARE(Windows::portName(name), QString("COM12"));
        QCOMPARE(Windows::description(name), QString("USB-SERIAL CH340 (Rev. 2)"));
        QCOMPARE(Windows::portName("Printer (LPT1)"), QString());
        QCOMPARE(Windows::location("COM12"), QString("\\\\.\\COM12"));

        QCOMPARE(Windows::openError(2), SerialLine::DeviceNotFoundError);
        QCOMPARE(Windows::openError(5), SerialLine::PermissionError);
        QCOMPARE(Windows::openError(31), SerialLine::OpenError);
        for (const unsigned long gone : {5UL, 22UL, 31UL, 109UL, 995UL, 1167UL, 1617UL})
            QCOMPARE(Windows::lineError(gone, SerialLine::ReadError), SerialLine::ResourceError);
        QCOMPARE(Windows::lineError(8, SerialLine::WriteError), SerialLine::WriteError);
        for (unsigned long code = 1; code < 2000; ++code) {
            QCOMPARE(LVSerialPort::statusOf(Windows::openError(code)).value_or(0), 3U);
            QCOMPARE(LVSerialPort::statusOf(Windows::lineError(code, SerialLine::ReadError)).value_or(0), 2U);
        }
    }

    void aDriversOwnSettingsDoNotStopTheLine()
    {
        struct
        {
            unsigned BaudRate = 9600, ByteSize = 7, Parity = 2, StopBits = 2, fBinary = 0, fParity = 1;
            unsigned fOutxCtsFlow = 1, fOutxDsrFlow = 1, fDsrSensitivity = 1, fOutX = 1, fInX = 1;
            unsigned fErrorChar = 1, fNull = 1, fAbortOnError = 1, fDtrControl = 2, fRtsControl = 3;
        } dcb;
        WindowsSerial::applySettings(dcb);
        QCOMPARE(dcb.BaudRate, 115200U);
        QCOMPARE(dcb.ByteSize * 100 + dcb.Parity * 10 + dcb.StopBits, 800U);
        QCOMPARE(dcb.fOutxCtsFlow + dcb.fOutxDsrFlow + dcb.fDsrSensitivity + dcb.fOutX + dcb.fInX, 0U);
        QCOMPARE(dcb.fParity + dcb.fErrorChar + dcb.fNull + dcb.fAbortOnError, 0U);
        QCOMPARE(dcb.fDtrControl + dcb.fRtsControl, 0U);
        dcb.fDtrControl = dcb.fRtsControl = 1; // up, as most drivers have them
        WindowsSerial::applySettings(dcb);
        QCOMPARE(dcb.fDtrControl + dcb.fRtsControl, 2U);
    }

    void anErrorDoesNotOvertakeTheHandOver()
    {
        const Line line;
        int told = 0;
        const Strip strip(line.simulator->location(), 1);
        emit strip.serial->errorOccurred(SerialLine::ReadError, QString());
        QTimer::singleShot(0, this, [&] { // in an event of its own, as a device manager does
            connect(strip.controller.get(), &AbsRGBController::statusChanged, this, [&] { ++told; });
        });
        QTRY_COMPARE(told, 1);
    }
};

QTEST_GUILESS_MAIN(SerialLinkTest)
#include "tst_serial_link.moc"
