#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/LedFrame.h"
#include "controllers/SystemSerialPortSource.h"
#include "support/config/ConfigurationManager.h"

#include <QSaveFile>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

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

/// A controller on the port at that location, with full brightness.
struct Strip
{
    Strip(const QString& location, int leds)
    {
        auto* port = new LVSerialPort;
        opened = port->init({"ttySIM", location, QString()});
        serial = port;
        ControlOptions options;
        options.id = options.model = "LV0127";
        options.portName = "ttySIM";
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
    options.portsFile = folder.filePath("ports.json");
    options.bytesPerSecond = bytesPerSecond;
    return options;
}

/// A simulated device that is plugged in, and what was logged since.
struct Line
{
    explicit Line(int bytesPerSecond = 0, int hangUpAfterBytes = 0)
        : simulator(simulated(folder, bytesPerSecond))
    {
        simulator.setHangUpAfterBytes(hangUpAfterBytes);
        if (!simulator.plugIn())
            qFatal("no simulated device");
    }

    const QTemporaryDir folder;
    const LogCapture log;
    StripSimulator simulator;
};

const QString kReleased = "The port is released, the black buffer is writeen:  ";

} // namespace

class SerialLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void framesHaveHeaderAndPadding()
    {
        struct Row
        {
            quint32 nbLeds;
            int colors;
            const char* header;
            int leds; // in the frame
        };
        for (const Row& row : {Row{20, 10, "416461000014", 20}, Row{20, 30, "416461000014", 30},
                               Row{256, 0, "416461000100", 256}, Row{65538, 1, "416461000002", 2}}) {
            const QByteArray frame =
                LedFrame::build(LedFrame::header(row.nbLeds), picture(0x0102, row.colors));
            QCOMPARE(frame.toHex(), QByteArray(row.header) + QByteArray("0102ff").repeated(row.colors) +
                                        QByteArray("000000").repeated(row.leds - row.colors));
        }
    }

    void theLineNeverOwesMoreThanAFrameAndAHalf()
    {
        constexpr int kBytes = 368;
        constexpr qint64 kFrameUs = 1000000LL * kBytes / kRealLine;
        FramePacer pacer;
        int offered = 0;
        int sent = 0;
        for (qint64 nowUs = 0; nowUs < 6000000; nowUs += 1000000 / 62) {
            const QByteArray newest = QByteArray::number(++offered).leftJustified(kBytes, ' ');
            pacer.offer(newest);
            if (pacer.delayUs(nowUs) == 0) {
                QCOMPARE(pacer.take(nowUs), newest);
                QVERIFY(!pacer.isWaiting());
                ++sent;
            }
            QVERIFY(pacer.backlogUs(nowUs) <= kFrameUs * 3 / 2 * 106 / 100);
        }
        QVERIFY2(sent >= 155 && sent <= 188, qPrintable(QString::number(sent))); // 188 would fill the line
        QCOMPARE(pacer.delayUs(20000000), 0); // an idle line takes a frame at once
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
            const Strip strip(line.simulator.location(), 120);
            for (int i = 1; i <= 250; ++i)
                strip.controller->update(picture(i, 120));
            QTRY_COMPARE(numberOf(line.simulator.lastFrame()), 250);
            QCOMPARE(line.simulator.counters().frames + static_cast<qint64>(strip.serial->droppedFrames()),
                     250);
            for (int i = 1; i <= 250; ++i)
                strip.controller->update(picture(i, 120));
        }
        QCOMPARE(line.log.count(kReleased + "true , nbLEDS: 120"), 1);
        QTRY_COMPARE(line.simulator.lastFrame().colors, QVector<LV_RGB>(120));
        QVERIFY(line.simulator.counters().frames < 20);
        QCOMPARE(line.simulator.counters().garbageBytes, 0);
    }

    void aHangUpIsToldOnce()
    {
        for (const bool inTheMiddleOfAFrame : {false, true}) {
            Line line(0, inTheMiddleOfAFrame ? 366 + 100 : 0);
            const Strip strip(line.simulator.location(), 120);
            QSignalSpy status(strip.controller.get(), &AbsRGBController::statusChanged);
            QSignalSpy errors(strip.serial, &LVSerialPort::errorOccurred);
            strip.controller->update(picture(1, 120));
            QTRY_COMPARE(line.simulator.counters().frames, 1);
            if (!inTheMiddleOfAFrame)
                line.simulator.unplug();
            for (int i = 0; i < 20; ++i) { // the effect does not know yet
                strip.controller->update(picture(i, 120));
                QTest::qWait(10);
            }
            QTRY_COMPARE(status.count(), 1);
            QCOMPARE(status.at(0).at(0).toUInt(), 2U);
            QCOMPARE(errors.count(), 1);
        }
    }

    void aHangUpDuringReleaseDoesNotHoldTheExit()
    {
        const Line line(0, 100);
        {
            const Strip strip(line.simulator.location(), 120);
        }
        QCOMPARE(line.log.count(kReleased + "false , nbLEDS: 120"), 1);
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
        QCOMPARE(log.count(kReleased + "false , nbLEDS: 20000"), 1);
        QVERIFY(!log.contains("its port does not close"));
    }

    void whoTalksTooMuchIsReadTwentyTimesASecond()
    {
        TalkGuard guard;
        for (qint64 windowMs = 5; windowMs < 5000; windowMs += TalkGuard::kWindowMs) {
            for (int chunk = 0; chunk < TalkGuard::kChunksPerWindow; ++chunk)
                QCOMPARE(guard.delayMs(windowMs + chunk), 0);
            for (const int laterMs : {20, 500, 999}) // asked again when the next window begins
                QCOMPARE(guard.delayMs(windowMs + laterMs), TalkGuard::kWindowMs - laterMs);
        }
    }

    void chatterIsNoPress()
    {
        Line line;
        const Strip strip(line.simulator.location(), 1);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        while (!line.log.contains("talks without end")) {
            QVERIFY(line.simulator.send(QByteArray("\xff\0\0", 3)));
            QTest::qWait(1);
        }
        const auto readLate = [&] { // more comes in the turn in which it is time to read again
            QThread::msleep(TalkGuard::kWindowMs * 11 / 10);
            emit strip.serial->port()->readyRead();
        };
        QMetaObject::invokeMethod(strip.serial, readLate, Qt::BlockingQueuedConnection);
        QVERIFY(line.simulator.send("B"));
        QTRY_VERIFY(line.log.contains("B\""));
        QCoreApplication::processEvents();
        QCOMPARE(pressed.count(), 0);
        QVERIFY(line.simulator.pressButton());
        QTRY_COMPARE(pressed.count(), 1); // heard again
    }

    void everyChunkThatBeginsWithNulIsAPress()
    {
        Line line;
        const Strip strip(line.simulator.location(), 1);
        QSignalSpy pressed(strip.controller.get(), &AbsRGBController::devActionActived);
        const auto chunksRead = [&] { return line.log.count("Received some data"); };
        const QByteArray press(1, '\0');
        int presses = 0;
        int chunks = 0;
        for (const QByteArray& chunk : {press, press + 'A', QByteArray("A"), 'A' + press}) {
            QVERIFY(line.simulator.send(chunk));
            ++chunks;
            QTRY_COMPARE(chunksRead(), chunks);
            presses += chunk.at(0) == '\0' ? 1 : 0;
            QTRY_COMPARE(pressed.count(), presses);
        }
        for (const int pauseMs : {0, 1, 5, 30}) { // those that are read in one piece count as one
            const int before = pressed.count();
            QVERIFY(line.simulator.pressButton());
            QTest::qWait(pauseMs);
            QVERIFY(line.simulator.pressButton());
            QTRY_VERIFY(pressed.count() > before);
        }
        QTRY_COMPARE(pressed.count() - presses, chunksRead() - chunks);
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
        QCOMPARE(log.count("talks without end"), 1);
        stop = true;
        flood.wait();
        close(master);
        QTRY_COMPARE(status.count(), 1); // also behind a full buffer
    }

    void theSystemIsAskedForItsPortsOnlyWhenTheyChange()
    {
        const QTemporaryDir devices;
        const auto plugIn = [&](const char* name) {
            QFile node(devices.filePath(name));
            QVERIFY(node.open(QIODevice::WriteOnly));
        };
        int asked = 0;
        SystemSerialPortSource source(devices.path(), [&] {
            ++asked;
            return QList<SerialPortRecord>{{"ttyUSB0", "/dev/ttyUSB0", "a"},
                                           {"ttyUSB1", "/dev/ttyUSB1", "b"}};
        });
        const auto names = [&] {
            QStringList list;
            for (const SerialPortRecord& port : source.availablePorts())
                list += port.name;
            return list.join(' ');
        };
        plugIn("ttyUSB0");
        QCOMPARE(names(), "ttyUSB0"); // the other is going, or not ours to open
        plugIn("tty9");               // a console
        QVERIFY(!source.find("ttyUSB1").isValid());
        QCOMPARE(asked, 1);
        plugIn("ttyUSB1");
        QCOMPARE(names(), "ttyUSB0 ttyUSB1");
        QVERIFY(QFile::remove(devices.filePath("ttyUSB0")));
        QCOMPARE(names(), "ttyUSB1");
        QCOMPARE(asked, 3);
    }

    void newPortsArriveWhateverReportsThem()
    {
        for (const bool isWatched : {true, false}) { // false: by polling, the folder is not there yet
            const QTemporaryDir folder;
            const QString devices = folder.filePath("dev");
            const auto plugIn = [&](const QString& name) { // a node of its own, even in the place of another
                QSaveFile node(devices + '/' + name);
                QVERIFY(node.open(QIODevice::WriteOnly) && node.commit());
            };
            if (isWatched) {
                QVERIFY(QDir().mkdir(devices));
                plugIn("ttyUSB0");
            }
            SystemSerialPortSource source(
                devices, []() -> QList<SerialPortRecord> { qFatal("nothing may be opened for it"); });
            QStringList arrived;
            connect(&source, &ISerialPortSource::portArrived, this,
                    [&](const QString& name) { arrived.append(name); });
            QDir().mkdir(devices);
            plugIn("tty5");
            plugIn("ttyUSB1");
            plugIn("ttyS4");
            QTRY_COMPARE_WITH_TIMEOUT(arrived, (QStringList{"ttyS4", "ttyUSB1"}), 20000);
            if (isWatched)
                plugIn("ttyUSB0"); // out and in again between two looks
            QVERIFY(QFile::remove(devices + "/ttyUSB1"));
            plugIn("rfcomm0");
            QTRY_COMPARE_WITH_TIMEOUT(
                arrived.mid(2), (isWatched ? QStringList{"rfcomm0", "ttyUSB0"} : QStringList{"rfcomm0"}),
                20000);
        }
    }

    void errorsTellWhetherTheDeviceWorks()
    {
        QVERIFY(LVSerialPort::statusOf(QSerialPort::ResourceError) == 2U);
        QVERIFY(LVSerialPort::statusOf(QSerialPort::PermissionError) == 3U);
        QVERIFY(!LVSerialPort::statusOf(QSerialPort::ParityError)); // says nothing about the device
    }

    void anErrorDoesNotOvertakeTheHandOver()
    {
        const Line line;
        const Strip strip(line.simulator.location(), 1);
        emit strip.serial->errorOccurred(QSerialPort::ReadError, QString());
        std::unique_ptr<QSignalSpy> owner; // connects in an event of its own, as a device manager does
        const auto connectOwner = [&] {
            owner = std::make_unique<QSignalSpy>(strip.controller.get(), &AbsRGBController::statusChanged);
        };
        QMetaObject::invokeMethod(this, connectOwner, Qt::QueuedConnection);
        QTRY_VERIFY(owner && owner->count() == 1);
    }
};

QTEST_GUILESS_MAIN(SerialLinkTest)
#include "tst_serial_link.moc"
