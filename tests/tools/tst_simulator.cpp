#include "SerialPortsFile.h"
#include "StripParser.h"
#include "StripSimulator.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

/// A frame whose LED i has the colour (i, seed, 255 - i).
QByteArray frameOf(int leds, uchar seed = 7)
{
    QByteArray bytes("Ada\0", 4);
    bytes += static_cast<char>(leds >> 8);
    bytes += static_cast<char>(leds & 0xff);
    for (int i = 0; i < leds; ++i) {
        bytes += static_cast<char>(i);
        bytes += static_cast<char>(seed);
        bytes += static_cast<char>(255 - i);
    }
    return bytes;
}

/// The host's side of the line, without any settings of its own.
class Host
{
public:
    explicit Host(const QString& location)
        : m_fd(::open(QFile::encodeName(location).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
    }
    ~Host() { close(); }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void close()
    {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = -1;
    }
    bool write(const QByteArray& bytes) const
    {
        return ::write(m_fd, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    }
    /// What comes in one chunk, empty after two seconds or on a hang-up.
    QByteArray read(int timeoutMs = 2000) const
    {
        pollfd fd{m_fd, POLLIN, 0};
        ::poll(&fd, 1, timeoutMs);
        char buffer[256];
        const auto got = ::read(m_fd, buffer, sizeof buffer);
        return got > 0 ? QByteArray(buffer, static_cast<int>(got)) : QByteArray();
    }
    bool hungUp() const
    {
        pollfd fd{m_fd, POLLIN, 0};
        return ::poll(&fd, 1, 0) == 1 && (fd.revents & POLLHUP) != 0;
    }

private:
    int m_fd;
};

QJsonArray portsIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

} // namespace

class tst_simulator : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_portsFile = m_dir->filePath("ports.json");
    }

    void framesAreFoundHoweverTheStreamIsCut_data()
    {
        QTest::addColumn<int>("chunk");
        for (const int chunk : {1, 2, 3, 5, 7, 64, 100000})
            QTest::addRow("%d bytes", chunk) << chunk;
    }
    void framesAreFoundHoweverTheStreamIsCut()
    {
        QFETCH(int, chunk);
        const QByteArray stream =
            "Moni-A" + frameOf(1) + frameOf(256, 1) + frameOf(0) + "AAdMoMoni-A" + frameOf(120, 2);

        StripParser parser;
        QVector<StripFrame> frames;
        int probes = 0;
        for (int i = 0; i < stream.size(); i += chunk) {
            const StripParser::Events events = parser.feed(stream.mid(i, chunk), i);
            frames += events.frames;
            probes += events.probes;
        }

        QCOMPARE(probes, 2);
        QCOMPARE(parser.garbageBytes(), 5);
        QCOMPARE(frames.size(), 4);
        QCOMPARE(frames[1].colors.size(), 256);
        QCOMPARE(frames[1].totalBytes, 6 + 9 + 6 + 3 * 256);
        QCOMPARE(frames[2].colors.size(), 0);
        QCOMPARE(frames[3].colors.size(), 120);
        QVERIFY(frames[3].colors[119] == (LV_RGB{119, 2, 136}));
        QCOMPARE(frames[3].totalBytes, stream.size());
    }

    void garbageIsSkippedAndCounted_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<int>("frames");
        QTest::addColumn<int>("garbage");
        QTest::newRow("colours behind the header's count")
            << frameOf(2) + QByteArray(30, 'A') + frameOf(1) << 2 << 30;
        QTest::newRow("a checksum where the zero belongs")
            << QByteArray("Ada\x55\0\x01rgb", 9) + frameOf(1) << 1 << 9;
        QTest::newRow("a mark that begins twice") << "AdAda" + frameOf(1) << 1 << 5;
        QTest::newRow("marks inside the colours") << QByteArray("Ada\0\0\x04Moni-AAda\0\0\x01", 18) << 1 << 0;
        QTest::newRow("nothing but noise") << QByteArray(500, '\xff') << 0 << 500;
    }
    void garbageIsSkippedAndCounted()
    {
        QFETCH(QByteArray, stream);
        StripParser parser;
        const StripParser::Events events = parser.feed(stream, 0);
        QTEST(events.frames.size(), "frames");
        QTEST(static_cast<int>(parser.garbageBytes()), "garbage");
        QCOMPARE(events.probes, 0);
    }

    void tenStripsShareOnePortsFile()
    {
        std::vector<std::unique_ptr<StripSimulator>> strips;
        for (int i = 0; i < 10; ++i) {
            auto one = options();
            one.portName = QString("ttySIM%1").arg(i);
            strips.push_back(std::make_unique<StripSimulator>(one));
        }
        std::vector<std::thread> writers;
        writers.reserve(strips.size());
        for (const auto& strip : strips) {
            writers.emplace_back([&strip] {
                for (int round = 0; round < 5; ++round) {
                    strip->unplug();
                    strip->plugIn();
                }
            });
        }
        std::atomic<bool> done{false};
        std::atomic<int> brokenReads{0};
        std::thread reader([&] {
            while (!done) {
                QFile file(m_portsFile);
                if (file.open(QIODevice::ReadOnly) && !QJsonDocument::fromJson(file.readAll()).isArray())
                    ++brokenReads;
            }
        });
        for (std::thread& writer : writers)
            writer.join();
        done = true;
        reader.join();

        QCOMPARE(brokenReads.load(), 0);
        QHash<QString, QString> locations;
        const QJsonArray ports = portsIn(m_portsFile);
        for (const auto& port : ports)
            locations.insert(port["name"].toString(), port["location"].toString());
        QCOMPARE(ports.size(), 10);
        for (const auto& strip : strips)
            QCOMPARE(locations.value(strip->options().portName), strip->location());

        strips.clear();
        QCOMPARE(portsIn(m_portsFile).size(), 0);
    }

    void theProbeIsAnswered_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("serial");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("takesMs");
        const auto row = [](const char* name, StripSimulator::ReplyMode mode, const QByteArray& serial,
                            const QByteArray& reply, int takesMs = 0) {
            QTest::newRow(name) << static_cast<int>(mode) << serial << reply << takesMs;
        };
        using Mode = StripSimulator::ReplyMode;
        // Bytes that a terminal would act upon show whether the line is raw.
        const QByteArray raw("\x03\x0d\x0a\x11\x00\x7f\xff,", 8);
        row("normal", Mode::Normal, raw, "LV0127," + raw + "\r\n");
        row("without a serial", Mode::Normal, "", "LV0127\r\n");
        row("silent", Mode::Silent, raw, "");
        row("garbage", Mode::Garbage, raw, "\x7f\x11+READY\r\n");
        row("two chunks", Mode::TwoChunks, raw, "LV0127," + raw + "\r\n", StripSimulator::kChunkGapMs);
        row("hang-up in the reply", Mode::HangUpInReply, raw, "");
    }
    void theProbeIsAnswered()
    {
        QFETCH(int, mode);
        QFETCH(QByteArray, serial);
        QFETCH(QByteArray, reply);
        QFETCH(int, takesMs);
        auto chosen = options();
        chosen.serial = serial;
        chosen.replyMode = static_cast<StripSimulator::ReplyMode>(mode);
        StripSimulator strip(chosen);
        QVERIFY(strip.plugIn());
        const Host host(listedLocation());
        const double startMs = StripSimulator::nowMs();
        QVERIFY(host.write("Moni-A"));
        QByteArray received;
        while (received.size() < reply.size()) {
            const QByteArray chunk = host.read();
            QVERIFY2(!chunk.isEmpty(), received.toHex().constData());
            received += chunk;
        }
        QCOMPARE(received, reply);
        QVERIFY(StripSimulator::nowMs() - startMs >= takesMs);
        if (chosen.replyMode == StripSimulator::ReplyMode::HangUpInReply)
            QTRY_VERIFY(host.hungUp() && portsIn(m_portsFile).isEmpty());
        else
            QVERIFY(host.read(100).isEmpty() && !host.hungUp());
        QTRY_COMPARE(strip.counters().probes, 1);
    }

    void framesAreConsumedWhileTheMainThreadIsBlocked()
    {
        auto paced = options();
        paced.bytesPerSecond = 11520;
        StripSimulator strip(paced);
        QVERIFY(strip.plugIn());
        const Host host(strip.location());
        const double startMs = StripSimulator::nowMs();
        for (int i = 0; i < 3; ++i)
            QVERIFY(host.write(frameOf(120, static_cast<uchar>(i))));
        // No event is processed here.
        QElapsedTimer patience;
        patience.start();
        while (strip.counters().frames < 3 && patience.elapsed() < 10000)
            QThread::msleep(1);

        QCOMPARE(strip.counters().frames, 3);
        QCOMPARE(strip.counters().garbageBytes, 0);
        QCOMPARE(strip.lastFrame().totalBytes, 3 * 366);
        QVERIFY(strip.lastFrame().lastByteMs - startMs >= 3 * 366 / 11.52 - 1);
        QVERIFY(strip.lastFrame().colors[5] == (LV_RGB{5, 2, 250}));
    }

    void anUnfinishedFrameDiesWithItsHost()
    {
        StripSimulator strip(options());
        QVERIFY(strip.plugIn());
        Host first(strip.location());
        QVERIFY(first.write(frameOf(120).left(100)));
        QTRY_COMPARE(strip.counters().bytes, 100);
        first.close();
        QTRY_COMPARE(strip.counters().garbageBytes, 100);

        const Host second(strip.location());
        QVERIFY(second.write("Moni-A"));
        QVERIFY(second.read().startsWith("LV0127,"));
        QVERIFY(second.write(frameOf(3)));
        QTRY_COMPARE(strip.counters().frames, 1);
    }

private:
    StripSimulator::Options options() const
    {
        StripSimulator::Options options;
        options.portsFile = m_portsFile;
        return options;
    }

    QString listedLocation() const
    {
        return portsIn(m_portsFile).first().toObject().value("location").toString();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_portsFile;
};

QTEST_GUILESS_MAIN(tst_simulator)
#include "tst_simulator.moc"
