#include "LogCapture.h"
#include "StripSimulator.h"
#include "controllers/BridgedSerialPortSource.h"
#include "controllers/ControllerDefaults.h"
#include "controllers/LVControllerEnumerator.h"
#include "controllers/PortSnapshot.h"
#include "controllers/ProbeReply.h"
#include "controllers/SystemSerialPortSource.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonObject>
#include <QSaveFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr DiscoveryTiming kQuick{5, 100, 20, 400};
const QString kId = QStringLiteral("LV0127:01020304");

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
        result.portsFile = folder.filePath(QStringLiteral("ports.json"));
        result.portName = QStringLiteral("ttySIM%1").arg(number);
        result.serial[0] = static_cast<char>(number + 1);
        return result;
    }
    void start()
    {
        auto source =
            std::make_unique<BridgedSerialPortSource>(folder.filePath(QStringLiteral("ports.json")));
        enumerator = std::make_unique<LVControllerEnumerator>(std::move(source), m_timing);
        QObject::connect(enumerator.get(), &IDeviceEnumerator::deviceEnabled, enumerator.get(),
                         [this](const AbsRGBControllerPtr& controller) {
                             ++count;
                             if (keep)
                                 found.append(controller);
                         });
    }
    QString idAt(int i) const { return found.size() > i ? found.at(i)->options().id : QString(); }
    bool isPending(const QString& port = QStringLiteral("ttySIM0")) const
    {
        return enumerator->pendingDevices().contains(port);
    }

    QTemporaryDir folder;
    std::unique_ptr<LVControllerEnumerator> enumerator;
    QList<AbsRGBControllerPtr> found;
    int count = 0;
    bool keep = true; ///< false: a device manager that refuses every controller

private:
    DiscoveryTiming m_timing;
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
            QTest::newRow(name) << text + QByteArray::fromHex(hexBehind) << QString::fromLatin1(id)
                                << QString::fromLatin1(model) << QString::fromLatin1(serial);
        };
        row("plain", "010203040d0a", "LV0127,", "LV0127:01020304", "LV0127", "01020304");
        row("lower case", "abcd0d0a", "lv0n03,", "LV0N03:ABCD", "LV0N03", "ABCD");
        row("comma in the serial", "2c2c010d0a", "LV0127,", "LV0127:2C2C01", "LV0127", "2C2C01");
        row("NUL and high bytes", "00ff80000d0a", "LV0127,", "LV0127:00FF8000", "LV0127", "00FF8000");
        row("no serial", "0d0a", "LV0127", "LV0127", "LV0127", "");
        row("short", "0d0a", "lv1", "LV1", "LV1", "");
        row("comma, no serial behind", "0d0a", "LV0127,", "LV0127:", "LV0127", "");
        row("nothing but the mark", "", "LV", "", "", "");
        row("other device", "0d0a", "AT+OK", "", "", "");
        row("silence", "", "", "", "", "");
    }
    void repliesAreTakenApart()
    {
        QFETCH(QByteArray, raw);
        const ProbeReply reply = ProbeReply::parse(raw);
        QTEST(reply.id, "id");
        QTEST(reply.model, "model");
        QTEST(reply.serial, "serial");
        QCOMPARE(reply.isValid(), !reply.id.isEmpty());
    }

    void anEndlessReplyIsCut()
    {
        QVERIFY(ProbeReply::parse("LV" + QByteArray(1 << 20, '\xff')).id.size() < 200);
        QVERIFY(ProbeReply::parse("LV0127," + QByteArray(1 << 20, '\0')).id.size() < 300);
    }

    void aModelsDefaultsComeFromTheFile()
    {
        QTemporaryDir folder;
        QImage picture(2, 2, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString path = folder.filePath(QStringLiteral("icon.png"));
        QVERIFY(picture.save(path));
        const QString file = folder.filePath(QStringLiteral("defaults.json"));
        write(file, R"({"LV0N03": {"icon": ")" + path.toUtf8() +
                        R"(", "nbLeds": 253, "ledPerUnit": 3, "adjustableLength": true,
                           "brightness": 0.25, "unavailable_modes": ["a"]}, "LV0666": {"nbLeds": -1}})");
        ControlOptions options;
        options.model = QStringLiteral("LV0N03");
        ControllerDefaults::apply(options, file);
        QCOMPARE(options.nbLeds, 253U);
        QCOMPARE(options.ledPerUnit, 3);
        QCOMPARE(options.brightness, 0.25F);
        QVERIFY(options.adjustableLength && !options.icon.isNull() && options.unavailable_modes.size() == 1);

        options = {};
        options.model = QStringLiteral("LV0666");
        ControllerDefaults::apply(options, file);
        QCOMPARE(options.nbLeds, 0U);
        QCOMPARE(options.brightness, 0.8F);

        LogCapture log;
        write(file, "{broken");
        ControllerDefaults::apply(options, file);
        QCOMPARE(options.ledPerUnit, 1);
        QCOMPARE(log.count(QStringLiteral("Failed to parse json document from LVController.json")), 1);
    }

    void theChipIsKnownByItsIdentity()
    {
        const QString generic = QStringLiteral("USB Serial");
        QCOMPARE(SystemSerialPortSource::describe(generic, {0x1A86, 0x7523}),
                 QStringLiteral("USB Serial (CH340)"));
        QCOMPARE(SystemSerialPortSource::describe(generic, {0x0403, 0x6001}), generic);
        const QString said = QStringLiteral("USB-SERIAL CH340");
        QCOMPARE(SystemSerialPortSource::describe(said, {0x1A86, 0x7523}), said);
    }

    void aQuickReplugIsAnArrival()
    {
        PortSnapshot snapshot;
        snapshot.reset({QStringLiteral("a"), QStringLiteral("b")});
        const QStringList present{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
        QCOMPARE(snapshot.update(present, {}), QStringList(QStringLiteral("c")));
        QCOMPARE(snapshot.update(present, {QStringLiteral("b"), QStringLiteral("x")}),
                 QStringList(QStringLiteral("b")));
        QVERIFY(snapshot.update(present, {}).isEmpty());
    }

    void theListOfBridgedPortsIsFollowed()
    {
        LogCapture log;
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("ports.json"));
        BridgedSerialPortSource source(file); // not there yet
        QSignalSpy arrived(&source, &ISerialPortSource::portArrived);
        const auto arrivals = [&] {
            QStringList names;
            for (const auto& arguments : qAsConst(arrived))
                names.append(arguments.at(0).toString());
            return names.join(QLatin1Char(' '));
        };
        write(file, '[' + entry("a", "/x") + ']');
        QTRY_COMPARE(arrivals(), QStringLiteral("a"));
        write(file, '[' + entry("a", "/x") + ',' + entry("b", "/y") + ",7,{\"name\":\"no location\"}]");
        QTRY_COMPARE(arrivals(), QStringLiteral("a b"));
        QCOMPARE(source.availablePorts().size(), 2);
        write(file, '[' + entry("a", "/x2") + ',' + entry("b", "/y") + ']'); // moved
        QTRY_COMPARE(arrivals(), QStringLiteral("a b a"));

        const QString warning = QStringLiteral("Ignored broken list of serial ports");
        for (const char* broken : {"[{", "{\"a\": 1}"}) {
            write(file, broken);
            QTRY_COMPARE(log.count(warning), *broken == '[' ? 1 : 2);
            QCOMPARE(source.find(QStringLiteral("a")).systemLocation, QStringLiteral("/x2"));
        }
        QVERIFY(QFile::remove(file));
        QTRY_VERIFY(source.availablePorts().isEmpty());
        write(file, '[' + entry("b", "/y") + ']'); // comes back
        QTRY_COMPARE(arrivals(), QStringLiteral("a b a b"));
        QCOMPARE(log.count(warning), 2);
    }

    void bothSourcesAreJoined()
    {
        QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("ports.json"));
        write(file, '[' + entry("ttyBridge", "/x") + ']');
        qputenv("LUMIVAR_SERIAL_PORTS", QFile::encodeName(file));
        const auto source = CombinedSerialPortSource::createDefault();
        qunsetenv("LUMIVAR_SERIAL_PORTS");
        QCOMPARE(source->find(QStringLiteral("ttyBridge")).systemLocation, QStringLiteral("/x"));
        QCOMPARE(source->availablePorts().size(), SystemSerialPortSource().availablePorts().size() + 1);
        QSignalSpy arrived(source.get(), &ISerialPortSource::portArrived);
        write(file, '[' + entry("ttyOther", "/x") + ']');
        QTRY_COMPARE(arrived.count(), 1);
    }

    void devicesThatAreThereAtStartAreFound()
    {
        Discovery discovery;
        std::vector<std::unique_ptr<StripSimulator>> simulators;
        for (int i = 0; i < 10; ++i) {
            auto options = discovery.options(i);
            if (i == 4)
                options.description = QStringLiteral("modem");
            simulators.push_back(std::make_unique<StripSimulator>(options));
            QVERIFY(simulators.back()->plugIn());
        }
        discovery.start();
        QTRY_COMPARE(discovery.found.size(), 9);
        QSet<QString> ids;
        for (const auto& controller : qAsConst(discovery.found))
            ids.insert(controller->options().id);
        QCOMPARE(ids.size(), 9);
        QVERIFY(!ids.contains(QStringLiteral("LV0127:05020304")));
        QCOMPARE(simulators.at(4)->counters().bytes, 0); // never opened
        QVERIFY(discovery.enumerator->pendingDevices().isEmpty());
    }

    void aDeviceThatArrivesGetsItsStoredSettings()
    {
        auto* config = ConfigurationManager::instance();
        config->setAppConfig(QStringLiteral("runtime.gama"), 2.0);
        config->controllerJsonObj(kId) = {{QStringLiteral("nbLeds"), 30},
                                          {QStringLiteral("kindName"), QStringLiteral("desk")}};
        Discovery discovery;
        discovery.start();
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.idAt(0), kId);
        const ControlOptions options = discovery.found.at(0)->options();
        QCOMPARE(options.portName, QStringLiteral("ttySIM0"));
        QCOMPARE(options.kindName, QStringLiteral("desk"));
        QCOMPARE(options.nbLeds, 30U);
        QCOMPARE(options.brightness, 0.8F);
        QCOMPARE(options.gama, 2.0F);
        QCOMPARE(config->controllerJsonObj(kId).size(), 10);
        discovery.found.at(0)->update(QVector<LV_RGB>(30, LV_RGB{255, 255, 255}));
        QTRY_COMPARE(simulator.lastFrame().colors.size(), 30);
    }

    void aPortThatFailsIsTriedUntilItAnswers_data()
    {
        using Mode = StripSimulator::ReplyMode;
        QTest::addColumn<int>("mode");
        QTest::newRow("silent") << int(Mode::Silent);
        QTest::newRow("garbage") << int(Mode::Garbage);
        QTest::newRow("hangs up") << int(Mode::HangUpInReply);
    }
    void aPortThatFailsIsTriedUntilItAnswers()
    {
        QFETCH(int, mode);
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode(mode);
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        // Half of a reply may pass for a whole one; then the controller fails, and nobody keeps it.
        discovery.keep = false;
        discovery.start();
        QTRY_VERIFY(discovery.isPending());
        QTRY_VERIFY(simulator.counters().probes >= (simulator.isPlugged() ? 2 : 1)); // asked again
        discovery.keep = true;
        simulator.setReplyMode(StripSimulator::ReplyMode::Normal);
        QVERIFY(simulator.plugIn());
        QTRY_COMPARE(discovery.idAt(0), kId);
        QTRY_VERIFY(!discovery.isPending());
    }

    void aReplyIsJudgedByItsFirstChunk()
    {
        Discovery discovery;
        auto options = discovery.options();
        options.replyMode = StripSimulator::ReplyMode::TwoChunks;
        StripSimulator simulator(options);
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_COMPARE(discovery.idAt(0), QStringLiteral("LV01"));
    }

    void aPortThatArrivesTwiceIsAdoptedOnce()
    {
        Discovery discovery({5, 100, 20, 3000});
        auto options = discovery.options();
        options.replyDelayMs = 100; // the second probe comes in between
        StripSimulator simulator(options);
        discovery.start();
        QVERIFY(simulator.plugIn());
        emit discovery.enumerator->deviceArrival(QStringLiteral("ttySIM0"));
        emit discovery.enumerator->deviceArrival(QStringLiteral("ttySIM0"));
        QTRY_COMPARE(discovery.idAt(0), kId);
        // One more behind its adoption: it fails, and the scan drops it silently.
        const LogCapture log;
        emit discovery.enumerator->deviceArrival(QStringLiteral("ttySIM0"));
        QTRY_VERIFY(log.contains(QStringLiteral("Failed to open the serial port ttySIM0")));
        QTRY_VERIFY(!discovery.isPending());
        QCOMPARE(discovery.count, 1);
        QCOMPARE(simulator.counters().probes, 1);
    }

    void aReplugGivesANewController_data()
    {
        QTest::addColumn<bool>("oldOneIsStillThere");
        QTest::newRow("removed before") << false;
        QTest::newRow("old one is still there") << true;
    }
    void aReplugGivesANewController()
    {
        QFETCH(bool, oldOneIsStillThere);
        Discovery discovery;
        StripSimulator simulator(discovery.options());
        discovery.start();
        for (int i = 0; i < 4; ++i) {
            QVERIFY(simulator.plugIn());
            QTRY_COMPARE(discovery.count, i + 1);
            const AbsRGBControllerPtr old = discovery.found.takeLast();
            QSignalSpy failed(old.data(), &AbsRGBController::statusChanged);
            simulator.unplug();
            if (oldOneIsStillThere)
                QVERIFY(simulator.plugIn());
            QTRY_COMPARE(failed.count(), 1);
            if (oldOneIsStillThere)
                QTRY_COMPARE(discovery.count, i + 2);
            simulator.unplug();
            discovery.found.clear();
            discovery.count = i + 1;
        }
    }

    void aRefusedControllerIsOfferedAgain()
    {
        Discovery discovery;
        discovery.keep = false;
        StripSimulator simulator(discovery.options());
        QVERIFY(simulator.plugIn());
        discovery.start();
        QTRY_VERIFY(discovery.count >= 2);
        discovery.keep = true;
        QTRY_COMPARE(discovery.idAt(0), kId);
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
