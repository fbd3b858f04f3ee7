#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/BridgedSerialPortSource.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/LVSerialPort.h"
#include "controllers/PortPlace.h"
#include "controllers/ProbeDialogue.h"
#include "controllers/ProbeReply.h"
#include "controllers/ReplyCollector.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonObject>
#include <QSaveFile>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

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

/// A dialogue that counts its ends.
struct CountedDialogue : ProbeDialogue
{
    explicit CountedDialogue(const StripSimulator& simulator)
        : ProbeDialogue({"ttySIM0", simulator.location(), "CH340"}, nullptr)
    {
        connect(this, &ProbeDialogue::answered, [this] {
            ++ends;
            ++answers;
            const std::unique_ptr<LVSerialPort> port(takePort());
            isAlive = !port->isDead();
        });
        const auto end = [this] {
            ++ends;
            dropPort();
        };
        connect(this, &ProbeDialogue::timedOut, end);
        connect(this, &ProbeDialogue::lost, end);
    }

    int ends = 0;
    int answers = 0;
    bool isAlive = true; ///< the port that was handed over with the answer
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

    void repliesAreTakenApartHoweverTheyAreCut_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<QString>("id");
        const auto row = [](const char* name, const char* hexBehind, const QByteArray& text, const char* id) {
            QTest::newRow(name) << text + QByteArray::fromHex(hexBehind) << id;
        };
        row("lower case, NUL and high bytes", "00ff80000d0a", "lv0n03,", "LV0N03:00FF8000");
        row("comma in the serial", "2c2c010d0a", "LV0127,", "LV0127:2C2C01");
        row("no serial", "0d0a", "LV0127", "LV0127");
        row("comma, no serial behind", "0d0a", "LV0127,", "LV0127:");
        row("any two bytes as the tail", "01020000", "LV0127,", "LV0127:0102");
        row("the usual tail in the serial", "0d0a010d0a", "LV0127,", "LV0127:0D0A01");
        row("noise behind it", "01020d0a00ff41", "LV0127,", "LV0127:0102");
        row("twice", "01020d0a4c56303132372c01020d0a", "LV0127,", "LV0127:0102");
        row("three times", "0d0a4c56303132370d0a4c56303132370d0a", "LV0127", "LV0127");
        row("nothing but the mark", "", "LV", "");
        row("other device", "0d0a", "AT+OK", "");
        row("noise in front of it", "01020d0a", "x\nLV0127,", "");
    }
    void repliesAreTakenApartHoweverTheyAreCut()
    {
        QFETCH(QByteArray, raw);
        QFETCH(QString, id);
        const ProbeReply reply = ProbeReply::parse(raw);
        QCOMPARE(reply.id, id);
        QCOMPARE(reply.model, id.section(':', 0, 0));
        QCOMPARE(reply.serial, id.section(':', 1));
        QCOMPARE(reply.isValid(), !id.isEmpty());
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
        const LogCapture log;
        const QTemporaryDir folder;
        const QString file = folder.filePath("ports.json");
        BridgedSerialPortSource source(file); // not there yet
        QStringList arrived;
        connect(&source, &ISerialPortSource::portArrived, this,
                [&](const QString& name) { arrived.append(name); });
        write(file, '[' + entry("a", "/x") + ']');
        QTRY_COMPARE(arrived, QStringList{"a"});
        write(file, '[' + entry("a", "/x") + ',' + entry("b", "/y") + ",7,{\"name\":\"no location\"}]");
        QTRY_COMPARE(arrived.join(" "), "a b");
        QCOMPARE(source.availablePorts().size(), 2);
        write(file, '[' + entry("a", "/x2") + ',' + entry("b", "/y") + ']'); // moved
        QTRY_COMPARE(arrived.join(" "), "a b a");

        write(file, "[{"); // in the middle of being written
        QTRY_VERIFY(log.contains("Ignored broken list of serial ports"));
        QCOMPARE(source.find("a").systemLocation, "/x2");
        QVERIFY(QFile::remove(file));
        QTRY_VERIFY(source.availablePorts().isEmpty());
        write(file, '[' + entry("b", "/y") + ']'); // comes back
        QTRY_COMPARE(arrived.join(" "), "a b a b");
    }

    void devicesAreFoundWithTheirIdentityAndSettings()
    {
        auto* config = ConfigurationManager::instance();
        config->setAppConfig("runtime.gama", 2.0);
        config->controllerJsonObj(kId) = {{"nbLeds", 30}, {"kindName", "desk"}};
        // Silence long enough for a sender that a busy machine holds up, and longer than the answer may take.
        Discovery discovery({5, 100, 20, 600, 1500});
        auto options = discovery.options(1);
        options.replyMode = StripSimulator::ReplyMode::ByteByByte;
        StripSimulator there(options);
        options = discovery.options(2);
        options.description = "modem";
        StripSimulator modem(options);
        QVERIFY(there.plugIn() && modem.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.idAt(0), "LV0127:02020304");
        QCOMPARE(there.counters().probes, 1);
        StripSimulator arriving(discovery.options(0));
        QVERIFY(arriving.plugIn());
        QTRY_COMPARE(discovery.idAt(1), kId);
        QCOMPARE(modem.counters().bytes, 0); // never opened
        QVERIFY(discovery.enumerator->pendingDevices().isEmpty());
        QCOMPARE(discovery.found.at(1)->options().kindName, "desk");
        QCOMPARE(discovery.found.at(1)->options().gama, 2.0F);
        discovery.found.at(1)->update(QVector<LV_RGB>(30, LV_RGB{255, 255, 255}));
        QTRY_COMPARE(arriving.lastFrame().colors.size(), 30);
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

    void aPortThatFailsIsTriedUntilItAnswers()
    {
        using Mode = StripSimulator::ReplyMode;
        for (const Mode mode :
             {Mode::Silent, Mode::Garbage, Mode::HangUpInReply, Mode::Endless, Mode::Normal}) {
            Discovery discovery;
            auto options = discovery.options();
            options.replyMode = mode;
            StripSimulator simulator(options);
            QVERIFY(simulator.plugIn());
            discovery.keep = false; // as a device manager refuses one whose predecessor it has still
            discovery.start();
            QTRY_VERIFY(discovery.isPending());
            QTRY_VERIFY(simulator.counters().probes >= (simulator.isPlugged() ? 2 : 1)); // asked again
            discovery.keep = true;
            simulator.setReplyMode(StripSimulator::ReplyMode::Normal);
            QVERIFY(simulator.plugIn());
            QTRY_COMPARE(discovery.idAt(0), kId);
            QTRY_VERIFY(!discovery.isPending());
        }
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
        for (const bool becomesAnother : {true, false}) {
            const LogCapture attempts;
            Discovery discovery({5, becomesAnother ? 60000 : 100, 20, 400}); // a scan comes between, or none
            auto options = discovery.options();
            StripSimulator simulator(options);
            QVERIFY(simulator.plugIn());
            QSerialPort other(simulator.location());
            QVERIFY(other.open(QIODevice::ReadWrite));
            discovery.start();
            const QSignalSpy refused(discovery.enumerator.get(), &IDeviceEnumerator::portRefused);
            const QSignalSpy freed(discovery.enumerator.get(), &IDeviceEnumerator::portFreed);
            QTRY_VERIFY(attempts.count("Failed to open the serial port ttySIM0") >= (becomesAnother ? 1 : 3));
            QTRY_COMPARE(refused.count(), 1);
            simulator.unplug();
            if (becomesAnother) {
                options.description = "modem";
                StripSimulator modem(options);
                QVERIFY(modem.plugIn());
                QTRY_COMPARE(freed.count(), 1);
                continue;
            }
            QTRY_COMPARE(freed.count(), 1);
            QVERIFY(simulator.plugIn());
            QTRY_COMPARE(discovery.idAt(0), kId);
            QCOMPARE(refused.count(), 1);
        }
    }

    void aDialogueEndsOnceWhateverComesInOneTurn_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("hangUp");
        QTest::newRow("answer, limit") << QByteArray("LV0127,1\r\n") << false;
        QTest::newRow("answer, error, limit") << QByteArray("LV0127,1\r\n") << true;
        QTest::newRow("error, limit") << QByteArray() << true;
    }
    void aDialogueEndsOnceWhateverComesInOneTurn()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, hangUp);
        constexpr int kLimitMs = 30;
        const Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        CountedDialogue dialogue(simulator);
        QVERIFY(dialogue.start(kLimitMs, 1, 30));
        QVERIFY(simulator.send(answer));
        if (hangUp)
            simulator.unplug();
        QThread::msleep(kLimitMs + 1); // the program is busy, and hears of everything in one turn
        QTRY_COMPARE(dialogue.ends, 1);
        for (int turn = 0; turn < 10; ++turn)
            QCoreApplication::processEvents();
        QCOMPARE(dialogue.ends, 1);
        QCOMPARE(dialogue.answers, answer.isEmpty() || hangUp ? 0 : 1); // it was there in time
    }

    void aPortThatFailsWhileTheAnswerEndsIsLost()
    {
        const Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::Silent;
        // The answer counts as whole 30 to 40 ms after it came: the error comes in every moment around that.
        for (int ms = 24; ms < 48; ++ms) {
            StripSimulator simulator(options);
            QVERIFY(simulator.plugIn());
            CountedDialogue dialogue(simulator);
            QVERIFY(dialogue.start(5000, 1, 30));
            QVERIFY(simulator.send("LV0127,1\r\n"));
            QTest::qWait(ms);
            simulator.unplug();
            QThread::msleep(11); // hears of the error and of the time in one turn
            QTRY_COMPARE(dialogue.ends, 1);
            QVERIFY(dialogue.isAlive); // or its device would stay for ever, with nobody to tell of the error
        }
    }

    void aSlowDeviceIsGivenALongWait()
    {
        Discovery discovery({5, 50, 20, 200, 30, 100});
        auto options = discovery.options();
        options.replyDelayMs = 500;
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.idAt(0), kId);
        QVERIFY(simulator.counters().probes >= 3); // asked anew during the wait: the first may have been lost
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
};

QTEST_GUILESS_MAIN(DiscoveryTest)
#include "tst_discovery.moc"
