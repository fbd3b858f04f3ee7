#include "LogCapture.h"
#include "ProgramUnderTest.h"
#include "effects/graphics/PixmapSequence.h"
#include "effects/graphics/PixmapStream.h"
#include "effects/graphics/SFrmPixmapStream.h"
#include "effects/graphics/readColorPicture.h"
#include "support/config/ConfigurationManager.h"

#include <QComboBox>
#include <QtTest>
#include <sys/stat.h>

namespace {

using Bytes = QByteArray;

Bytes bigEndian(quint32 number)
{
    Bytes bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

Bytes chunk(const Bytes& type, const Bytes& data)
{
    quint32 crc = ~0U;
    for (const char each : type + data) {
        crc ^= static_cast<uchar>(each);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320U : 0);
    }
    return bigEndian(quint32(data.size())) + type + data + bigEndian(~crc);
}

constexpr int Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6;

/// The rows are given as they stand in the file, each with a 0 for "no filter" before it.
Bytes png(int width, int height, int depth, int kind, const Bytes& rows, const Bytes& before = {},
          bool interlaced = false)
{
    const Bytes header = bigEndian(quint32(width)) + bigEndian(quint32(height)) + char(depth) + char(kind) +
                         Bytes(2, '\0') + char(interlaced);
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + before +
           chunk("IDAT", qCompress(Bytes::fromHex(rows)).mid(4)) + chunk("IEND", {});
}

const auto dot = [](int grey) { return png(1, 1, 8, Grey, (Bytes(1, '\0') + char(grey)).toHex()); };
const Bytes kSmall = png(2, 1, 8, Rgb, "00 010203 040506");

/// Records that say nothing but how the picture lies, in either order of bytes.
const Bytes kLies6 = Bytes::fromHex("4d4d002a 00000008 0001 0112 0003 00000001 0006 0000");
const Bytes kLies3 = Bytes::fromHex("49492a00 08000000 0100 1201 0300 01000000 0300 0000");

Bytes hexOf(const cv::Mat& picture)
{
    const cv::Mat whole = picture.clone();
    return Bytes(reinterpret_cast<const char*>(whole.data), int(whole.total() * whole.elemSize())).toHex();
}

/// The most memory that the process ever had room for.
qint64 peakKilobytes()
{
    const Bytes text = ProgramUnderTest::readFile("/proc/self/status");
    return text.mid(text.indexOf("VmPeak:") + 7).trimmed().split(' ').first().toLongLong();
}

struct TestStream : PixmapStream
{
    TestStream(const char* model, uint32_t nbLeds)
        : PixmapStream({}, nullptr)
    {
        ControlOptions options;
        options.model = model;
        options.nbLeds = nbLeds;
        load(options);
        connect(this, &IEffectWorker::updateColors, this, [this](const QVector<LV_RGB>& colors) {
            for (const LV_RGB& color : colors)
                shown += char(color.green);
        });
    }
    void read() { QVERIFY(QMetaObject::invokeMethod(this, "onReadTimeout")); }
    using PixmapStream::update;
    Bytes shown;
};

} // namespace

class PixmapStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        config()->reset();
        QVERIFY(QDir(source()).removeRecursively() && QDir().mkpath(source()));
    }

    void picturesHaveTheColoursOfTheirFiles()
    {
        const Bytes palette = chunk("PLTE", Bytes::fromHex("010203 c80a14 0000ff 00ff00"));
        const QPair<Bytes, Bytes> files[] = {
            {png(3, 1, 1, Grey, "00 a0"), "ffffff 000000 ffffff"},
            {png(3, 1, 16, Grey, "00 7fff 80ff 00ff"), "7f7f7f 808080 000000"},
            {png(2, 1, 8, GreyAlpha, "00 c800 0a80"), "c8c8c8 0a0a0a"},
            {png(2, 1, 1, Palette, "00 00", chunk("PLTE", "abc")), "636261 636261"},
            {png(4, 1, 2, Palette, "00 1b", palette + chunk("tRNS", Bytes::fromHex("0080"))),
             "030201 140ac8 ff0000 00ff00"},
            {png(3, 1, 8, Rgba, "00 c80a1400 c80a1401 0102ff80"), "140ac8 140ac8 ff0201"},
            {png(2, 1, 16, Rgba, "00 c8ff0aff14ff0000 ff807fff00ff0001"), "140ac8 007fff"},
            {png(1, 1, 8, Grey, "00 80", chunk("gAMA", bigEndian(100000))), "808080"},
            {png(2, 2, 8, Grey, "0001 0002 000304", {}, true), "010101 020202 030303 040404"},
        };
        for (const auto& [file, bgr] : files)
            QCOMPARE(hexOf(read(file)), Bytes(bgr).replace(" ", ""));
        const auto lying = [this](const Bytes& record) { // the four pixels, without their channels
            const cv::Mat four = read(png(2, 2, 8, Grey, "00 0102 00 0304", chunk("eXIf", record)));
            return hexOf(four.reshape(1, 4).col(0));
        };
        QCOMPARE(lying(kLies6), "03010402");
        QCOMPARE(lying(Bytes(kLies6).replace('\6', '\5')), "01030204");
        QCOMPARE(lying(kLies3), "04030201");
    }

    void everyCutIsNoticed()
    {
        for (int size = 0; size < kSmall.size(); ++size)
            QVERIFY(read(kSmall.left(size)).empty() && !m_problem.isEmpty());
        for (int size = 0; size < kLies6.size(); ++size) { // which only says how it lies
            Bytes cut = kLies6.left(size);
            QCOMPARE(read(png(2, 1, 8, Grey, "00 0102", chunk("eXIf", cut))).cols, size < 20 ? 2 : 1);
            cut.replace(4, 4, "\x7f\xff\xff\xf0"); // points out of it
            QCOMPARE(read(png(2, 1, 8, Grey, "00 0102", chunk("eXIf", cut))).cols, 2);
        }
    }

    void whatIsNoPictureIsRefusedAtOnce()
    {
        const QList<QPair<Bytes, QString>> files{
            {png(30000, 30000, 8, Rgb, "00"), "is larger than"},
            {png(1 << 16, 1 << 16, 8, Rgb, "00"), "is larger than"},    // nothing in 32 bits
            {png(4096, 2160, 16, Rgba, "00"), "is damaged or cut off"}, // claims more than it holds
            {kSmall + Bytes(17 << 20, '\0'), "is larger than"},
            {Bytes::fromHex("ffd8ffe000104a46494600") + kSmall, "is no PNG"},
        };
        for (const auto& [file, says] : files) {
            const qint64 before = peakKilobytes();
            QVERIFY(read(file).empty());
            QVERIFY2(m_problem.startsWith(says), qPrintable(m_problem));
            QVERIFY(peakKilobytes() - before < 60 * 1024); // the least that one of them claims is 67 MB
        }
    }

    void whatIsNoFileNeverHoldsUp()
    {
        QVERIFY(QDir(source()).mkdir("1.png") && ::mkfifo(qPrintable(path("2.png")), 0600) == 0);
        QVERIFY(QFile::link(path("3.png"), path("3.png")) && QFile::link("/dev/zero", path("4.png")));
        for (const char* name : {"1.png", "2.png", "3.png", "4.png", "5.png"}) {
            QVERIFY(readColorPicture(path(name), &m_problem).empty());
            QCOMPARE(m_problem, *name == '5' ? "" : "is no file that can be read"); // it only ends the round
        }
    }

    void roundEndsAtTheFirstGap()
    {
        PixmapSequence sequence(source(), QSize(1, 1));
        const auto greys = [&sequence](int reads) {
            QString walked;
            for (; reads > 0; --reads) {
                sequence.readNext();
                walked += QChar(sequence.frame().empty() ? '-' : char('0' + sequence.frame().data[0]));
            }
            return walked;
        };
        QCOMPARE(greys(2), "--");
        for (const int number : {1, 2, 4})
            write(QString("%1.png").arg(number), dot(number));
        PixmapSequence(source(), QSize(0, 1)).readNext(); // a device without LEDs
        QCOMPARE(greys(7), "1221221");
        LogCapture log;
        write("3.png", dot(3).left(60));
        QCOMPARE(greys(10), "2212212212");
        QCOMPARE(log.count("3.png is damaged or cut off"), 1);
        write("3.png", dot(3)); // mended: it and what is behind it
        QCOMPARE(greys(5), "34412");
        QVERIFY(QDir().rename(source(), source() + ".away") && greys(3) == "222");
        QVERIFY(QDir().rename(source() + ".away", source()) && greys(3) == "123");
        QVERIFY(QFile::remove(path("2.png")));
        QCOMPARE(greys(5), "44111"); // 4, its end, then one picture again and again
        write("1.png", "x");
        QCOMPARE(greys(4), "1111");
        QCOMPARE(log.count("is "), 2);
    }

    void matrixIsWalkedInSerpentines()
    {
        Bytes rows;
        for (int i = 0; i < 253; ++i)
            rows += Bytes(i % 23 == 0 ? 1 : 0, '\0') + char(i);
        write("1.png", png(23, 11, 8, Grey, rows.toHex()));
        for (const uint32_t nbLeds : {253U, 100U}) { // 100: does not fit
            TestStream stream("LV0N03", nbLeds);
            stream.read();
            QVERIFY(QThreadPool::globalInstance()->waitForDone(20000));
            stream.update(0.08);
            QCOMPARE(stream.shown.size(), nbLeds == 253 ? 253 : 0);
            for (int i = 0, row = 0; i < stream.shown.size(); row = ++i / 23) // from below
                QCOMPARE(uchar(stream.shown[i]), (10 - row) * 23 + (row % 2 == 0 ? i % 23 : 22 - i % 23));
        }
    }

    void stripPlaysTheUsersFolder()
    {
        write("2.png", dot(200));
        write("1.png", png(2, 1, 8, Grey, "00 00ff"));
        config()->setAppConfig("pixmapStreamReadInterval", 79); // too fast, and replaced
        TestStream stream("LV0127", 4);
        QCOMPARE(config()->appConfig("pixmapStreamReadInterval"), QJsonValue(80));
        QCOMPARE(stream.findChildren<QTimer*>().last()->interval(), 80);
        QTRY_VERIFY(stream.shown.contains(Bytes::fromHex("0040bfff c8c8c8c8")));
        QTRY_VERIFY(stream.shown.contains(Bytes::fromHex("c8c8c8c8 0040bfff")));
    }

    void readOutlivesItsWorkerAndNoneWaitsBehindIt()
    {
        write("1.png", dot(1));
        write("2.png", dot(2));
        QThreadPool& pool = *QThreadPool::globalInstance();
        pool.setMaxThreadCount(1);
        QSemaphore disk;
        auto stream = std::make_unique<TestStream>("LV0127", 1);
        for (const bool isLast : {false, true}) { // then the worker goes first
            pool.start([&disk] { disk.acquire(); });
            for (int i = 0; i < 3; ++i)
                stream->read();
            if (isLast)
                stream.reset();
            disk.release();
            QVERIFY(pool.waitForDone(20000));
            QVERIFY(isLast || (stream->update(0.08), stream->shown == "\x01"));
        }
    }

    void widgetSpeaksOfTheChoiceAlone()
    {
        SFrmPixmapStream options(nullptr);
        auto* box = options.findChild<QComboBox*>();
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonValue()); // of the worker there is
        QVERIFY(!box->isEnabled() && options.effectProperty("currentAnime") == "");
        const QJsonArray animations{"a", "", 5, "b", "c"};
        options.setEffectProperty("", QJsonObject{{"currentAnime", "b"}, {"animations", animations}});
        options.setEffectProperty("currentAnime", "gone");
        QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"currentAnime", "b"}}));
        QVERIFY(changes.isEmpty());
        QTest::keyClick(box, Qt::Key_Down);
        QVERIFY(changes.value(0).value(0) == "currentAnime" && changes[0][1].toJsonValue() == "c");
    }

private:
    static ConfigurationManager* config() { return ConfigurationManager::instance(); }
    static QString source() { return config()->configPath() + "/pixel_source"; }
    static QString path(const QString& name) { return QDir(source()).filePath(name); }
    static void write(const QString& name, const Bytes& bytes)
    {
        ProgramUnderTest::writeFile(path(name), bytes);
    }
    cv::Mat read(const Bytes& file)
    {
        write("one.png", file);
        return readColorPicture(path("one.png"), &m_problem);
    }

    QString m_problem;
};

QTEST_MAIN(PixmapStreamTest)
#include "tst_pixmap_stream.moc"
