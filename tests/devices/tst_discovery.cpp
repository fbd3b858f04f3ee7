#include "LogCapture.h"
#include "MortalProcess.h"
#include "StripSimulator.h"
#include "controllers/BridgedSerialPortSource.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/PortPlace.h"
#include "controllers/ProbeReply.h"
#include "controllers/ReplyCollector.h"
#include "controllers/SerialLine.h"
#include "support/config/ConfigurationManager.h"

#include <QtTest>
#include <atomic>
#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

namespace {

constexpr DiscoveryTiming kQuick{5, 100, 20, 400};
const QString kId = "LV0127:01020304";

using Kind = PortFinding::Kind;

/// The bridged ports, and adapters on USB that are no port.
struct Source : BridgedSerialPortSource
{
    using BridgedSerialPortSource::BridgedSerialPortSource;
    QList<PortlessAdapter> portlessAdapters() override { return adapters; }
    QList<PortlessAdapter> adapters;
};

/// The program's side: the list of ports in a file, an enumerator on it, and what it found.
struct Discovery
{
    StripSimulator::Options options(int number = 0, int replyDelayMs = 0) const
    {
        StripSimulator::Options result;
        result.replyDelayMs = replyDelayMs;
        result.portsFile = folder.filePath("ports.json");
        result.portName = QString("ttySIM%1").arg(number);
        result.serial[0] = static_cast<char>(number + 1);
        return result;
    }
    void start(DiscoveryTiming timing = kQuick)
    {
        auto own = std::make_unique<Source>(folder.filePath("ports.json"));
        source = own.get();
        enumerator = std::make_unique<LVControllerEnumerator>(std::move(own), timing);
        QObject::connect(enumerator.get(), &IDeviceEnumerator::deviceEnabled, [this](const auto& controller) {
            ++count;
            if (keep)
                found.append(controller);
        });
        QObject::connect(enumerator.get(), &IDeviceEnumerator::findingsChanged, [this](const auto& all) {
            findings = all;
            told.append(all.isEmpty() ? Kind::Asked : all.first().kind);
        });
    }
    QString idAt(int i) const { return found.size() > i ? found[i]->options().id : QString(); }
    bool isPending() const { return enumerator->pendingDevices().contains("ttySIM0"); }

    QTemporaryDir folder;
    bool isFinding(Kind kind) const { return findings.size() == 1 && finding().kind == kind; }
    PortFinding finding() const { return findings.value(0); }

    Source* source = nullptr;
    std::unique_ptr<LVControllerEnumerator> enumerator;
    PortFindings findings;
    QVector<Kind> told; ///< of the first finding, or Asked where all is well
    QList<AbsRGBControllerPtr> found;
    int count = 0;
    bool keep = true; ///< false: a device manager that refuses every controller
};

/// Plugged in, and silent when it is asked.
struct SilentDevice : Discovery
{
    SilentDevice()
    {
        simulator.setReplyMode(StripSimulator::ReplyMode::Silent);
        if (!simulator.plugIn())
            qFatal("no simulated device");
    }
    StripSimulator simulator{options()};
};

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

std::atomic<bool> s_hasNoThreads{false};

} // namespace

/// In place of the C library's.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                              void* argument) noexcept
{
    if (s_hasNoThreads)
        return EAGAIN;
    return reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"))(thread, attributes,
                                                                                           run, argument);
}

class DiscoveryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void repliesAreTakenApartHoweverTheyAreCut()
    {
        const std::tuple<const char*, const char*, QString> rows[] = {
            {"lv0n03,", "00ff80000d0a", "LV0N03:00FF8000"},
            {"LV0127,", "2c2c010d0a", "LV0127:2C2C01"}, // commas in the serial
            {"LV0127", "0d0a", "LV0127"},
            {"LV0127,", "0d0a010d0a", "LV0127:0D0A01"},                   // the usual ones in the serial
            {"LV0127,", "01020d0a00ff41", "LV0127:0102"},                 // noise behind it
            {"LV0127,", "01020d0a4c56303132372c01020d0a", "LV0127:0102"}, // twice
            {"LV", "", ""},
            {"x\nLV0127,", "01020d0a", ""},
        };
        for (const auto& [text, hexBehind, id] : rows) {
            const QByteArray raw = text + QByteArray::fromHex(hexBehind);
            const ProbeReply reply = ProbeReply::parse(raw);
            QCOMPARE(reply.id, id);
            QVERIFY(reply.model == id.section(':', 0, 0) && reply.serial == id.section(':', 1));
            QCOMPARE(reply.isValid(), !id.isEmpty());
            QList<QByteArray> bytes;
            for (const char byte : raw)
                bytes.append(QByteArray(1, byte));
            for (int phase = 0; phase < 10; ++phase) {
                for (int gapMs : {0, 1, 5, 15, 29}) {
                    for (int cut = 0; cut <= raw.size(); ++cut) {
                        const QByteArray whole = collected({raw.left(cut), raw.mid(cut)}, gapMs, phase);
                        QCOMPARE(ProbeReply::parse(whole).id, id);
                        QVERIFY(id.isEmpty() || whole == raw);
                    }
                    QCOMPARE(ProbeReply::parse(collected(bytes, gapMs, phase)).id, id);
                }
                // An adapter or its hub that pauses for longer than an end takes makes no other device.
                const int usualEnd = raw.indexOf("\r\n", 8) + 2;
                for (int cut = 0; cut < usualEnd; ++cut) {
                    if (!raw.left(cut).endsWith("\r\n"))
                        QCOMPARE(ProbeReply::parse(collected({raw.left(cut), raw.mid(cut)}, 550, phase)).id,
                                 id);
                }
            }
        }
        // Silence is what ends it: what comes later is not waited for.
        QCOMPARE(collected({"LV0127,1\r\n", "later"}, 45, 0), QByteArray("LV0127,1\r\n"));
    }

    void devicesAreFoundWithTheirIdentityAndSettings()
    {
        ConfigurationManager::instance()->controllerJsonObj(kId) = {{"nbLeds", 30}, {"kindName", "desk"}};
        ConfigurationManager::instance()->setAppConfig("device.colorPipeline", "linear");
        // Silence long enough for a sender that a busy machine holds up, and longer than the answer may take.
        Discovery discovery;
        auto options = discovery.options(1);
        options.replyMode = StripSimulator::ReplyMode::ByteByByte;
        StripSimulator there(options);
        options = discovery.options(2);
        options.description = "modem";
        StripSimulator modem(options);
        QVERIFY(there.plugIn() && modem.plugIn());
        discovery.start({5, 100, 20, 600, 600});
        QTRY_COMPARE(discovery.idAt(0), "LV0127:02020304");
        QCOMPARE(there.counters().probes, 1);
        StripSimulator arriving(discovery.options(0));
        QVERIFY(arriving.plugIn());
        QTRY_COMPARE(discovery.idAt(1), kId);
        QCOMPARE(modem.counters().bytes, 0); // never opened
        QVERIFY(discovery.enumerator->pendingDevices().isEmpty());
        QCOMPARE(discovery.found.at(1)->options().kindName, "desk");
        QCOMPARE(discovery.found.at(0)->correction().pipeline, ColorCorrection::Pipeline::Linear);
        const QJsonObject kept = ConfigurationManager::instance()->controllerJsonObj("LV0127:02020304");
        QCOMPARE(kept.value("colorPipeline"), QJsonValue("linear")); // whatever new ones get later
        QCOMPARE(discovery.found.at(1)->correction().pipeline, ColorCorrection::Pipeline::Classic);
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
        const QString pci = "pci0000:00/0000:00:14.0/usb";
        QCOMPARE(place("ttyUSB0", pci + "1/1-2/1-2:1.0/ttyUSB0"), "0000-00-14.0-usb-2-1.0");
        QCOMPARE(place("ttyUSB1", pci + "3/3-2/3-2:1.0/ttyUSB1"), "0000-00-14.0-usb-2-1.0");
        QCOMPARE(place("ttyACM0", "platform/soc/3f98.usb/usb1/1-1/1-1:1.2"), "3f98.usb-usb-1-1.2");
        QVERIFY(place("ttyS0", "platform/serial8250/tty").isEmpty());
    }

    void twinsWithoutSerialKeepTheirSettingsBySocket()
    {
        auto* config = ConfigurationManager::instance();
        // Stored by a version in which they had one place to share.
        config->controllerJsonObj("LV0127:") = {{"nbLeds", 30}, {"kindName", "of old"}};
        for (const QString second : {"LV0127", "shelf"}) {
            Discovery discovery;
            auto options = discovery.options(0);
            options.serial.clear();
            StripSimulator one(options);
            QVERIFY(one.plugIn());
            discovery.start();
            QTRY_COMPARE(discovery.idAt(0), "LV0127:port-ttySIM0");
            options.portName = "ttySIM1";
            StripSimulator other(options);
            QVERIFY(other.plugIn());
            QTRY_COMPARE(discovery.idAt(1), "LV0127:port-ttySIM1");
            QCOMPARE(discovery.found.at(0)->options().kindName, "of old"); // the first one takes it over
            QCOMPARE(discovery.found.at(1)->options().kindName, second);
            discovery.found.at(1)->setKindName("shelf");
        }
        QVERIFY(config->controllerJsonObj("LV0127:").isEmpty());
    }

    void aPortThatFailsIsTriedUntilItAnswers()
    {
        using Mode = StripSimulator::ReplyMode;
        for (const Mode mode : {Mode::HangUpInReply, Mode::Endless, Mode::Normal}) {
            SilentDevice device;
            device.simulator.setReplyMode(mode);
            device.keep = false; // as a device manager refuses one whose predecessor it has still
            device.start();
            QTRY_VERIFY(device.isPending());
            QTRY_VERIFY(device.simulator.counters().probes >= (device.simulator.isPlugged() ? 2 : 1));
            device.keep = true;
            device.simulator.setReplyMode(Mode::Normal);
            QVERIFY(device.simulator.plugIn());
            QTRY_COMPARE(device.idAt(0), kId);
            QTRY_VERIFY(!device.isPending());
        }
    }

    void aPortThatNoThreadCanDriveIsLetGoAndTriedAgain()
    {
        Discovery discovery;
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        const LogCapture log;
        discovery.start();
        s_hasNoThreads = true;
        const auto isLacking = [&log] {
            return log.count("no thread to spare for QThread serial ttySIM0") >= 2;
        };
        const bool isTold = QTest::qWaitFor(isLacking, 10000); // and asked again
        s_hasNoThreads = false;
        QVERIFY(isTold && discovery.count == 0);
        QTRY_COMPARE(discovery.idAt(0), kId);
        QVERIFY(!discovery.isPending());
    }

    void everyPortThatIsNoDeviceHasItsReason()
    {
        using Mode = StripSimulator::ReplyMode;
        SilentDevice device;
        device.start();
        QTRY_VERIFY(device.isFinding(Kind::Asked));
        QTRY_VERIFY(device.isFinding(Kind::Silent));
        {
            MortalProcess other; // has it open beside us, and may take the answers
            other.setStandardInputFile(device.simulator.location());
            other.start("sleep", {"100"});
            QTRY_VERIFY(device.isFinding(Kind::Held));
            QCOMPARE(device.finding().holder, (PortHolder{"sleep", other.processId()}));
        }
        QTRY_VERIFY(device.isFinding(Kind::Silent));
        device.simulator.setReplyMode(Mode::Garbage);
        QTRY_VERIFY(device.isFinding(Kind::Unknown));
        QVERIFY(!device.finding().detail.isEmpty());
        device.simulator.setReplyMode(Mode::Silent);
        QTimer talk; // of another thing each time, as a receiver of positions does
        connect(&talk, &QTimer::timeout, this,
                [&] { device.simulator.send(QUuid::createUuid().toByteArray()); });
        talk.start(60);
        const int probes = device.simulator.counters().probes;
        QTRY_VERIFY(device.simulator.counters().probes > probes + 2);
        const auto isAgain = [](Kind before, Kind now) { return before == Kind::Unknown && now == before; };
        QVERIFY(std::adjacent_find(device.told.begin(), device.told.end(), isAgain) == device.told.end());
        talk.stop();
        device.simulator.setReplyMode(Mode::Normal);
        QTRY_VERIFY(device.findings.isEmpty());
        QCOMPARE(device.idAt(0), kId);
        QCOMPARE(device.told.count(Kind::Asked), 2); // at first, and with the device

        SilentDevice held;
        StripSimulator& taken = held.simulator;
        SerialLine first;
        QVERIFY(first.open(taken.location()));
        const LogCapture attempts;
        held.start();
        QTRY_VERIFY(attempts.count("Failed to open the serial port ttySIM0") >= 3);
        QTRY_VERIFY(held.isFinding(Kind::Held));
        taken.unplug();
        QTRY_VERIFY(held.findings.isEmpty());
        // Not with every attempt; on a busy machine who holds it may be found out late.
        QVERIFY(held.told.count(Kind::Held) < attempts.count("Failed to open the serial port ttySIM0"));

        Discovery unknown;
        auto options = unknown.options();
        options.model = "LV9999";
        StripSimulator strip(options);
        QVERIFY(strip.plugIn());
        unknown.start();
        QTRY_VERIFY(unknown.isFinding(Kind::UnknownModel));
        QCOMPARE(unknown.finding().detail, "LV9999");
        strip.unplug();
        QTRY_VERIFY(unknown.findings.isEmpty());
    }

    void whatIsSaidOfAPortIsHarmlessAndTrue()
    {
        const std::pair<QByteArray, QString> rows[] = {{"GRBL 1.1h ['$' for help]\r\n", "GRBL 1.1h ['"},
                                                       {QByteArray("\x1b[2J\0", 5), "1B 5B 32 4A 00"},
                                                       {"\r\n", "0D 0A"}};
        for (const auto& [raw, shown] : rows)
            QCOMPARE(PortFinding::ofUnknownAnswer({"x", "/nowhere", {}}, raw).detail, shown);

        QTemporaryFile node; // whose rights lack: the group that has them is named
        QVERIFY(node.open() && QFile::setPermissions(node.fileName(), {}));
        const SerialPortRecord port{"ttyUSB0", node.fileName(), "CH340"};
        const uid_t self = getuid();
        QVERIFY(self != 0 || setreuid(65534, uid_t(-1)) == 0); // rights are those of the real user
        const PortFinding finding = PortFinding::ofRefusal(port);
        QVERIFY(self != 0 || setreuid(self, uid_t(-1)) == 0);
        QCOMPARE(finding.kind, Kind::NotPermitted);
        QCOMPARE(finding.detail, self == 0 ? "dialout" : QFileInfo(node.fileName()).group());
        QVERIFY(QFile::setPermissions(node.fileName(), QFile::ReadOwner | QFile::WriteOwner));
        QCOMPARE(PortFinding::ofRefusal(port).kind, Kind::Held); // not the rights are in the way
    }

    void anAdapterWithoutAPortIsSeen()
    {
        QTemporaryDir sys;
        const QDir devices(sys.filePath("bus/usb/devices"));
        const auto plugIn = [&](const QString& name, const QByteArray& product, const QString& driver) {
            devices.mkpath(name + "/");
            devices.mkpath(name + ":1.0/");
            QDir(sys.path()).mkpath("drivers/" + driver);
            QFile::link(sys.filePath("drivers/" + driver), devices.filePath(name + ":1.0/driver"));
            const QList<QByteArray> files{"idVendor", "1a86\n", "idProduct", product,
                                          "busnum",   "1\n",    "devnum",    "12\n"};
            for (int i = 0; i < files.size(); i += 2) {
                QFile out(devices.filePath(name + '/' + files[i]));
                QVERIFY(out.open(QIODevice::WriteOnly) && out.write(files[i + 1]) > 0);
            }
        };
        QVERIFY(portlessAdapters(sys.path()).isEmpty());
        plugIn("1-1", "7523\n", "ch341");
        plugIn("1-2.3", "7522\n", "usbfs");
        plugIn("1-4", "55d4\n", "usbfs"); // another chip
        devices.mkpath("1-1:1.0/ttyUSB0");
        const QList<PortlessAdapter> left = portlessAdapters(sys.path());
        QCOMPARE(left.size(), 1);
        QVERIFY(left.first().socket == "1-2.3" && left.first().location == "/dev/bus/usb/001/012");
        Discovery discovery;
        discovery.start();
        discovery.source->adapters = left;
        QTRY_VERIFY(discovery.isFinding(Kind::TakenOff)); // as the files said
        discovery.source->adapters.first().isTaken = false;
        QTRY_VERIFY(discovery.isFinding(Kind::NoDriver));
        discovery.source->adapters.clear();
        QTRY_VERIFY(discovery.findings.isEmpty());
    }
};

QTEST_GUILESS_MAIN(DiscoveryTest)
#include "tst_discovery.moc"
