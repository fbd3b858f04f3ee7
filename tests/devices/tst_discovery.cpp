#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/BridgedSerialPortSource.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/LVSerialPort.h"
#include "controllers/PortPlace.h"
#include "controllers/ProbeDialogue.h"
#include "controllers/ProbeReply.h"
#include "controllers/ReplyCollector.h"
#include "controllers/SystemSerialPortSource.h"
#include "support/config/ConfigurationManager.h"
#include "support/log/Loggers.h"

#include <QJsonObject>
#include <QSaveFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <log4cplus/appender.h>
#include <log4cplus/spi/loggingevent.h>

namespace {

constexpr DiscoveryTiming kQuick{5, 100, 20, 400};
const QString kId = "LV0127:01020304";

/// The program's side: the list of ports in a file, an enumerator on it, and what it found.
struct Discovery
{
    explicit Discovery(DiscoveryTiming timing = kQuick)
        : m_timing(timing)
    {
    }

    StripSimulator::Options options(int number = 0) const
    {
        StripSimulator::Options result;
        result.portsFile = folder.filePath("ports.json");
        result.portName = QString("ttySIM%1").arg(number);
        result.serial[0] = static_cast<char>(number + 1);
        return result;
    }
    void start()
    {
        auto source = std::make_unique<BridgedSerialPortSource>(folder.filePath("ports.json"));
        enumerator = std::make_unique<LVControllerEnumerator>(std::move(source), m_timing);
        QObject::connect(enumerator.get(), &IDeviceEnumerator::deviceEnabled, enumerator.get(),
                         [this](const AbsRGBControllerPtr& controller) {
                             ++count;
                             if (keep)
                                 found.append(controller);
                         });
    }
    QString idAt(int i) const { return found.size() > i ? found.at(i)->options().id : QString(); }
    bool isPending() const { return enumerator->pendingDevices().contains("ttySIM0"); }

    QTemporaryDir folder;
    std::unique_ptr<LVControllerEnumerator> enumerator;
    QList<AbsRGBControllerPtr> found;
    int count = 0;
    bool keep = true; ///< false: a device manager that refuses every controller

private:
    DiscoveryTiming m_timing;
};

/// Keeps what is told of discovery while it lives.
class DeviceLog
{
public:
    DeviceLog() { deviceLogger().addAppender(m_appender); }
    ~DeviceLog() { deviceLogger().removeAppender(m_appender); }
    DeviceLog(const DeviceLog&) = delete;
    DeviceLog& operator=(const DeviceLog&) = delete;
    int count(const QString& text) const { return lines->filter(text).size(); }

private:
    struct Appender : log4cplus::Appender
    {
        explicit Appender(QStringList* linesTold)
            : target(linesTold)
        {
        }
        ~Appender() override { destructorImpl(); }
        void close() override {}
        void append(const log4cplus::spi::InternalLoggingEvent& event) override
        {
            target->append(QString::fromStdString(event.getMessage()));
        }
        QStringList* target;
    };
    std::unique_ptr<QStringList> lines = std::make_unique<QStringList>();
    log4cplus::SharedAppenderPtr m_appender{new Appender(lines.get())};
};

void write(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    QVERIFY(file.commit());
}

QByteArray entry(const char* name, const char* location)
{
    return QByteArray(R"({"name":")") + name + R"(","location":")" + location + R"(","description":"CH340"})";
}

/// What the collector makes of pieces that come `gapMs` apart, in a program that looks every ten
/// milliseconds, `phase` of them before the first piece.
QByteArray collected(const QList<QByteArray>& pieces, int gapMs, int phase)
{
    ReplyCollector collector;
    int next = 0;
    for (int ms = 0; !collector.isOver() && ms < 10000; ++ms) {
        for (; next < pieces.size() && next * gapMs <= ms; ++next)
            collector.add(pieces.at(next));
        if ((ms + phase) % 10 == 0)
            collector.tick();
    }
    return collector.isOver() ? collector.reply() : QByteArray("never over");
}

QList<QByteArray> bytesOf(const QByteArray& bytes)
{
    QList<QByteArray> single;
    for (char byte : bytes)
        single.append(QByteArray(1, byte));
    return single;
}

} // namespace

class DiscoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void repliesAreTakenApart_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("serial");
        const auto row = [](const char* name, const char* hexBehind, const QByteArray& text, const char* id,
                            const char* model, const char* serial) {
            QTest::newRow(name) << text + QByteArray::fromHex(hexBehind) << id << model << serial;
        };
        row("plain", "010203040d0a", "LV0127,", "LV0127:01020304", "LV0127", "01020304");
        row("lower case", "abcd0d0a", "lv0n03,", "LV0N03:ABCD", "LV0N03", "ABCD");
        row("comma in the serial", "2c2c010d0a", "LV0127,", "LV0127:2C2C01", "LV0127", "2C2C01");
        row("NUL and high bytes", "00ff80000d0a", "LV0127,", "LV0127:00FF8000", "LV0127", "00FF8000");
        row("no serial", "0d0a", "LV0127", "LV0127", "LV0127", "");
        row("comma, no serial behind", "0d0a", "LV0127,", "LV0127:", "LV0127", "");
        row("any two bytes as the tail", "01020000", "LV0127,", "LV0127:0102", "LV0127", "0102");
        row("the usual tail in the serial", "0d0a010d0a", "LV0127,", "LV0127:0D0A01", "LV0127", "0D0A01");
        row("noise behind it", "01020d0a00ff41", "LV0127,", "LV0127:0102", "LV0127", "0102");
        row("twice", "01020d0a4c56303132372c01020d0a", "LV0127,", "LV0127:0102", "LV0127", "0102");
        row("three times", "0d0a4c56303132370d0a4c56303132370d0a", "LV0127", "LV0127", "LV0127", "");
        row("nothing but the mark", "", "LV", "", "", "");
        row("other device", "0d0a", "AT+OK", "", "", "");
        row("noise in front of it", "01020d0a", "x\nLV0127,", "", "", "");
    }
    void repliesAreTakenApart()
    {
        QFETCH(QByteArray, raw);
        const ProbeReply reply = ProbeReply::parse(raw);
        QTEST(reply.id, "id");
        QTEST(reply.model, "model");
        QTEST(reply.serial, "serial");
        QCOMPARE(reply.isValid(), !reply.id.isEmpty());
        QVERIFY(!ProbeReply::parse(raw + QByteArray(1 << 20, '\xff')).isValid()); // endless
    }

    void anAnswerIsWholeHoweverItIsCut_data() { repliesAreTakenApart_data(); }
    void anAnswerIsWholeHoweverItIsCut()
    {
        QFETCH(QByteArray, raw);
        QFETCH(QString, id);
        for (int phase = 0; phase < 10; ++phase) {
            for (int gapMs : {0, 1, 5, 15, 29}) {
                for (int cut = 0; cut <= raw.size(); ++cut) {
                    const QByteArray whole = collected({raw.left(cut), raw.mid(cut)}, gapMs, phase);
                    QCOMPARE(ProbeReply::parse(whole).id, id);
                    QVERIFY(id.isEmpty() || whole == raw);
                }
                QCOMPARE(ProbeReply::parse(collected(bytesOf(raw), gapMs, phase)).id, id);
            }
        }
        // Silence is what ends it: what comes later is not waited for.
        if (!id.isEmpty())
            QCOMPARE(collected({raw, "later"}, 45, 0), raw);
    }

    void anAnswerThatDoesNotEndIsNone()
    {
        const QByteArray endless = "LV0127," + QByteArray(1 << 16, '\x41');
        const QByteArray flood = collected({endless}, 0, 0);
        QVERIFY(flood.size() < 200 && !ProbeReply::parse(flood).isValid());
        for (int gapMs : {1, 10, 29}) // too long, or too slow to become too long
            QVERIFY(!ProbeReply::parse(collected(bytesOf(endless.left(2000)), gapMs, 0)).isValid());
    }

    void theListOfBridgedPortsIsFollowed()
    {
        LogCapture log;
        QTemporaryDir folder;
        const QString file = folder.filePath("ports.json");
        BridgedSerialPortSource source(file); // not there yet
        QSignalSpy arrived(&source, &ISerialPortSource::portArrived);
        const auto arrivals = [&] {
            QStringList names;
            for (const auto& arguments : qAsConst(arrived))
                names.append(arguments.at(0).toString());
            return names.join(' ');
        };
        write(file, '[' + entry("a", "/x") + ']');
        QTRY_COMPARE(arrivals(), "a");
        write(file, '[' + entry("a", "/x") + ',' + entry("b", "/y") + ",7,{\"name\":\"no location\"}]");
        QTRY_COMPARE(arrivals(), "a b");
        QCOMPARE(source.availablePorts().size(), 2);
        write(file, '[' + entry("a", "/x2") + ',' + entry("b", "/y") + ']'); // moved
        QTRY_COMPARE(arrivals(), "a b a");

        const QString warning = "Ignored broken list of serial ports";
        for (const char* broken : {"[{", "{\"a\": 1}"}) {
            write(file, broken);
            QTRY_COMPARE(log.count(warning), *broken == '[' ? 1 : 2);
            QCOMPARE(source.find("a").systemLocation, "/x2");
        }
        QVERIFY(QFile::remove(file));
        QTRY_VERIFY(source.availablePorts().isEmpty());
        write(file, '[' + entry("b", "/y") + ']'); // comes back
        QTRY_COMPARE(arrivals(), "a b a b");
        QCOMPARE(log.count(warning), 2);
    }

    void devicesThatAreThereAtStartAreFound()
    {
        Discovery discovery;
        StripSimulator first(discovery.options(0));
        StripSimulator second(discovery.options(1));
        auto options = discovery.options(2);
        options.description = "modem";
        StripSimulator modem(options);
        QVERIFY(first.plugIn() && second.plugIn() && modem.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.found.size(), 2);
        QVERIFY(discovery.idAt(0) != discovery.idAt(1));
        QCOMPARE(modem.counters().bytes, 0); // never opened
        QVERIFY(discovery.enumerator->pendingDevices().isEmpty());
    }

    void aDeviceThatArrivesGetsItsStoredSettings()
    {
        auto* config = ConfigurationManager::instance();
        config->setAppConfig("runtime.gama", 2.0);
        config->controllerJsonObj(kId) = {{"nbLeds", 30}, {"kindName", "desk"}};
        Discovery discovery;
        discovery.start();
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.idAt(0), kId);
        const ControlOptions options = discovery.found.at(0)->options();
        QCOMPARE(options.kindName, "desk");
        QCOMPARE(options.brightness, 0.8F);
        QCOMPARE(options.gama, 2.0F);
        discovery.found.at(0)->update(QVector<LV_RGB>(30, LV_RGB{255, 255, 255}));
        QTRY_COMPARE(simulator.lastFrame().colors.size(), 30);
    }

    void aUsbSocketIsTheSameWhateverTheBusIsNumbered()
    {
        QTemporaryDir sys;
        const QDir root(sys.path());
        const auto place = [&](const QString& name, const QString& device) {
            root.mkpath("devices/" + device);
            root.mkpath("class/tty/" + name);
            QFile::link(root.filePath("devices/" + device), root.filePath("class/tty/" + name + "/device"));
            return portPlace(name, sys.path());
        };
        const QString pci = "pci0000:00/0000:00:14.0/";
        QCOMPARE(place("ttyUSB0", pci + "usb1/1-2/1-2:1.0/ttyUSB0"), "0000-00-14.0-usb-2-1.0");
        QCOMPARE(place("ttyUSB1", pci + "usb3/3-2/3-2:1.0/ttyUSB1"), "0000-00-14.0-usb-2-1.0");
        QCOMPARE(place("ttyUSB2", pci + "usb1/1-2/1-2.4/1-2.4:1.0/ttyUSB2"), "0000-00-14.0-usb-2.4-1.0");
        QCOMPARE(place("ttyACM0", "platform/soc/3f98.usb/usb1/1-1/1-1:1.2"), "3f98.usb-usb-1-1.2");
        QCOMPARE(place("ttyS0", "platform/serial8250/tty"), "");
        QCOMPARE(portPlace("ttyGone", sys.path()), "");
    }

    void twinsWithoutSerialKeepTheirSettingsBySocket()
    {
        auto* config = ConfigurationManager::instance();
        const QJsonObject shared{{"nbLeds", 30}, {"kindName", "of old"}};
        config->controllerJsonObj("LV0127:") = shared; // by a version in which they had one place to share
        for (int run = 0; run < 2; ++run) {
            Discovery discovery;
            auto options = discovery.options(0);
            options.serial.clear();
            StripSimulator first(options);
            QVERIFY(first.plugIn());
            discovery.start();
            QTRY_COMPARE(discovery.idAt(0), "LV0127:port-ttySIM0");
            options.portName = "ttySIM1";
            StripSimulator second(options);
            QVERIFY(second.plugIn());
            QTRY_COMPARE(discovery.idAt(1), "LV0127:port-ttySIM1");
            QCOMPARE(discovery.found.at(0)->options().kindName, "of old"); // the first one takes it over
            QCOMPARE(discovery.found.at(0)->options().nbLeds, 30U);
            QCOMPARE(discovery.found.at(1)->options().kindName, run == 0 ? "LV0127" : "shelf");
            discovery.found.at(1)->setKindName("shelf");
        }
        QVERIFY(config->controllerJsonObj("LV0127:").isEmpty());
    }

    void aPortThatFailsIsTriedUntilItAnswers_data()
    {
        using Mode = StripSimulator::ReplyMode;
        QTest::addColumn<int>("mode");
        QTest::newRow("silent") << int(Mode::Silent);
        QTest::newRow("garbage") << int(Mode::Garbage);
        QTest::newRow("hangs up") << int(Mode::HangUpInReply);
        QTest::newRow("endless") << int(Mode::Endless);
        QTest::newRow("its controller is refused") << int(Mode::Normal);
    }
    void aPortThatFailsIsTriedUntilItAnswers()
    {
        QFETCH(int, mode);
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode(mode);
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        discovery.keep = false; // as a device manager does that has its predecessor still
        discovery.start();
        QTRY_VERIFY(discovery.isPending());
        QTRY_VERIFY(simulator.counters().probes >= (simulator.isPlugged() ? 2 : 1)); // asked again
        discovery.keep = true;
        simulator.setReplyMode(StripSimulator::ReplyMode::Normal);
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.idAt(0), kId);
        QTRY_VERIFY(!discovery.isPending());
    }

    void aPortThatArrivesTwiceIsAdoptedOnce()
    {
        Discovery discovery({5, 100, 20, 3000});
        auto options = discovery.options();
        options.replyDelayMs = 100; // the second probe comes in between
        StripSimulator simulator(options);
        discovery.start();
        const QSignalSpy refused(discovery.enumerator.get(), &IDeviceEnumerator::portRefused);
        QVERIFY(simulator.plugIn());
        emit discovery.enumerator->deviceArrival("ttySIM0");
        emit discovery.enumerator->deviceArrival("ttySIM0");
        QTRY_COMPARE(discovery.idAt(0), kId);
        // One more behind its adoption: it fails, and the scan drops it silently.
        const LogCapture log;
        emit discovery.enumerator->deviceArrival("ttySIM0");
        QTRY_VERIFY(log.contains("Failed to open the serial port ttySIM0"));
        QTRY_VERIFY(!discovery.isPending());
        QCOMPARE(discovery.count, 1);
        QCOMPARE(simulator.counters().probes, 1);
        QVERIFY(refused.isEmpty()); // nobody else has it
    }

    void aPortThatMayNotBeOpenedIsToldOfOnce()
    {
        const DeviceLog log;
        const LogCapture attempts;
        Discovery discovery;
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        QSerialPort other(simulator.location());
        QVERIFY(other.open(QIODevice::ReadWrite));
        discovery.start();
        const QSignalSpy refused(discovery.enumerator.get(), &IDeviceEnumerator::portRefused);
        const QSignalSpy freed(discovery.enumerator.get(), &IDeviceEnumerator::portFreed);
        QTRY_VERIFY(attempts.count("Failed to open the serial port ttySIM0") >= 3);
        QCOMPARE(refused.count(), 1);
        QCOMPARE(refused.at(0).at(0).toString(), "ttySIM0");
        QCOMPARE(log.count("The serial port ttySIM0 cannot be opened: "), 1);

        simulator.unplug();
        QTRY_COMPARE(freed.count(), 1);
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.idAt(0), kId);
        QCOMPARE(refused.count(), 1);
    }

    void aRefusedPortThatBecomesAnotherIsToldOfNoLonger()
    {
        Discovery discovery({5, 60000, 20, 400}); // no scan comes between
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        QSerialPort other(simulator.location());
        QVERIFY(other.open(QIODevice::ReadWrite));
        discovery.start();
        const QSignalSpy refused(discovery.enumerator.get(), &IDeviceEnumerator::portRefused);
        const QSignalSpy freed(discovery.enumerator.get(), &IDeviceEnumerator::portFreed);
        QTRY_COMPARE(refused.count(), 1);
        simulator.unplug();
        auto options = discovery.options();
        options.description = "modem";
        StripSimulator modem(options);
        QVERIFY(modem.plugIn());
        QTRY_COMPARE(freed.count(), 1);
    }

    void anAnswerInPiecesMakesTheRightDevice_data()
    {
        using Mode = StripSimulator::ReplyMode;
        QTest::addColumn<int>("mode");
        QTest::newRow("two") << int(Mode::TwoChunks);
        QTest::newRow("every byte alone") << int(Mode::ByteByByte);
    }
    void anAnswerInPiecesMakesTheRightDevice()
    {
        QFETCH(int, mode);
        // Silence long enough for a sender that a busy machine holds up, and longer than the answer may take.
        Discovery discovery({5, 100, 20, 600, 1500});
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode(mode);
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.idAt(0), kId);
        QCOMPARE(simulator.counters().probes, 1);
    }

    void aDialogueEndsOnceWhateverComesInOneTurn_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("hangUp");
        QTest::newRow("answer, limit") << QByteArray("LV0127,1\r\n") << false;
        QTest::newRow("garbage, limit") << QByteArray("x") << false;
        QTest::newRow("answer, error, limit") << QByteArray("LV0127,1\r\n") << true;
        QTest::newRow("error, limit") << QByteArray() << true;
    }
    void aDialogueEndsOnceWhateverComesInOneTurn()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, hangUp);
        constexpr int kLimitMs = 30;
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        ProbeDialogue dialogue({"ttySIM0", simulator.location(), "CH340"}, nullptr);
        int ends = 0;
        int answers = 0;
        const auto end = [&] {
            ++ends;
            dialogue.dropPort();
        };
        connect(&dialogue, &ProbeDialogue::answered, this, [&] { ++answers; });
        connect(&dialogue, &ProbeDialogue::answered, this, end);
        connect(&dialogue, &ProbeDialogue::timedOut, this, end);
        connect(&dialogue, &ProbeDialogue::lost, this, end);
        QVERIFY(dialogue.start(kLimitMs, 1, 30));
        QVERIFY(simulator.send(answer));
        if (hangUp)
            simulator.unplug();
        QThread::msleep(kLimitMs + 1); // the program is busy, and hears of everything in one turn
        QTRY_COMPARE(ends, 1);
        for (int turn = 0; turn < 10; ++turn)
            QCoreApplication::processEvents();
        QCOMPARE(ends, 1);
        QCOMPARE(answers, answer.isEmpty() || hangUp ? 0 : 1); // it was there in time
    }

    void aPortThatFailsWhileTheAnswerEndsIsLost()
    {
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        // The answer counts as whole 30 to 40 ms after it came: the error comes in every moment around that.
        for (int ms = 24; ms < 48; ++ms) {
            StripSimulator simulator(options);
            QVERIFY(simulator.plugIn());
            ProbeDialogue dialogue({"ttySIM0", simulator.location(), "CH340"}, nullptr);
            int ends = 0;
            bool isAlive = true;
            connect(&dialogue, &ProbeDialogue::answered, this, [&] {
                ++ends;
                const std::unique_ptr<LVSerialPort> port(dialogue.takePort());
                isAlive = !port->isDead();
            });
            connect(&dialogue, &ProbeDialogue::lost, this, [&] { ++ends; });
            QVERIFY(dialogue.start(5000, 1, 30));
            QVERIFY(simulator.send("LV0127,1\r\n"));
            QTest::qWait(ms);
            simulator.unplug();
            QThread::msleep(11); // hears of the error and of the time in one turn
            QTRY_COMPARE(ends, 1);
            QVERIFY(isAlive); // or its device would stay for ever, with nobody to tell of the error
        }
    }

    void aSlowDeviceIsGivenALongWaitOnce()
    {
        const DeviceLog log;
        Discovery discovery({5, 50, 20, 200, 30, 100});
        auto options = discovery.options();
        options.replyDelayMs = 500;
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.idAt(0), kId);
        QVERIFY(simulator.counters().probes >= 3); // asked anew during the wait: the first may have been lost
        QCOMPARE(log.count("No answer to \"Moni-A\" within 200 ms from ttySIM0, it will be given 20000 ms"),
                 1);

        Discovery other({5, 20, 20, 50, 30, 3});
        options = other.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        StripSimulator silent(options);
        QVERIFY(silent.plugIn());
        other.start();
        QTRY_VERIFY(log.count("device response timeout") >= 5);
        QCOMPARE(log.count("within 50 ms"), 1); // told while it is news
        QCOMPARE(log.count("within 150 ms"), 1);
    }

    void aReplugGivesANewControllerBesideTheOldOne()
    {
        Discovery discovery;
        StripSimulator simulator(discovery.options());
        discovery.start();
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.count, 1);
        for (int i = 2; i <= 5; ++i) {
            const AbsRGBControllerPtr old = discovery.found.takeLast();
            QSignalSpy failed(old.data(), &AbsRGBController::statusChanged);
            simulator.unplug();
            QVERIFY(simulator.plugIn());
            QTRY_COMPARE(failed.count(), 1);
            QTRY_COMPARE(discovery.count, i);
        }
    }

    void aPendingPortThatIsGoneWaitsSilently()
    {
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        StripSimulator simulator(options);
        StripSimulator other(discovery.options(1));
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_VERIFY(discovery.isPending());
        QVERIFY(other.plugIn()); // before the other's location becomes free
        simulator.unplug();
        QTRY_COMPARE(discovery.found.size(), 1);
        QVERIFY(discovery.isPending());
        simulator.setReplyMode(StripSimulator::ReplyMode::Normal);
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.found.size(), 2);
        QTRY_VERIFY(!discovery.isPending());
    }
};

QTEST_GUILESS_MAIN(DiscoveryTest)
#include "tst_discovery.moc"
