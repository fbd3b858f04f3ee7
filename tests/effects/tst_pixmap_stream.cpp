#include "LogCapture.h"
#include "effects/graphics/PixmapSequence.h"
#include "effects/graphics/PixmapStream.h"
#include "effects/graphics/SFrmPixmapStream.h"
#include "effects/graphics/readColorPicture.h"
#include "support/config/ConfigurationManager.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QtEndian>
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
    return bigEndian(static_cast<quint32>(data.size())) + type + data + bigEndian(~crc);
}

enum Kind { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

/// The rows are given as they stand in the file, each with a 0 for "no filter" before it.
Bytes png(int width, int height, int depth, Kind kind, const Bytes& rows, const Bytes& before = {},
          const Bytes& behind = {}, bool interlaced = false)
{
    const Bytes header = bigEndian(quint32(width)) + bigEndian(quint32(height)) + char(depth) + char(kind) +
                         Bytes(2, '\0') + char(interlaced);
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + before +
           chunk("IDAT", qCompress(Bytes::fromHex(rows)).mid(4)) + behind + chunk("IEND", {});
}

/// One pixel.
Bytes dot(int red, int green, int blue)
{
    return png(1, 1, 8, Rgb, (Bytes(1, '\0') + char(red) + char(green) + char(blue)).toHex());
}

const Bytes kSmall = png(2, 1, 8, Rgb, "00 010203 040506");

/// A record that says nothing but how the picture lies, in either order of bytes.
Bytes exif(int orientation)
{
    const Bytes low = QByteArray::number(orientation).rightJustified(2, '0');
    return chunk("eXIf", orientation % 2 == 0
                             ? Bytes::fromHex("4d4d002a 00000008 0001 0112 0003 00000001 00" + low + "0000")
                             : Bytes::fromHex("49492a00 08000000 0100 1201 0300 01000000 " + low + "000000"));
}

Bytes pixels(const cv::Mat& picture)
{
    if (picture.empty() || picture.type() != CV_8UC3)
        return {};
    const cv::Mat whole = picture.clone();
    return Bytes(reinterpret_cast<const char*>(whole.data), static_cast<int>(whole.total() * 3));
}

/// The most memory that the process ever had room for.
qint64 peakKilobytes()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const Bytes text = status.readAll();
    return text.mid(text.indexOf("VmPeak:") + 7).trimmed().split(' ').first().toLongLong();
}

class TestStream : public PixmapStream
{
public:
    explicit TestStream(const QString& model, uint32_t nbLeds)
        : PixmapStream({}, nullptr)
    {
        ControlOptions options;
        options.model = model;
        options.nbLeds = nbLeds;
        load(options);
        connect(this, &IEffectWorker::updateColors, this, [this](const QVector<LV_RGB>& it) { shown = it; });
    }
    using PixmapStream::currentFrame;
    QVector<LV_RGB> shown;
};

/// Shows what a test gives it.
class GivenStream : public TestStream
{
public:
    using PixmapStream::update;
    using TestStream::TestStream;
    cv::Mat given;

protected:
    cv::Mat currentFrame(double) override { return given; }
};

} // namespace

class PixmapStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        config()->reset();
        QDir(source()).removeRecursively();
    }

    void picturesHaveTheColoursOfTheirFiles_data()
    {
        QTest::addColumn<Bytes>("file");
        QTest::addColumn<Bytes>("bgr");
        const Bytes palette = chunk("PLTE", Bytes::fromHex("010203 c80a14 0000ff 00ff00"));
        const Bytes seeThrough = chunk("tRNS", Bytes::fromHex("0080"));
        const Bytes dim = chunk("gAMA", bigEndian(100000));
        const auto add = [](const char* name, const Bytes& file, const Bytes& bgr) {
            QTest::newRow(name) << file << Bytes::fromHex(bgr);
        };
        add("grey, 1 bit", png(3, 1, 1, Grey, "00 a0"), "ffffff 000000 ffffff");
        add("grey, 2 bits", png(4, 1, 2, Grey, "00 1b"), "000000 555555 aaaaaa ffffff");
        add("grey, 4 bits", png(2, 1, 4, Grey, "00 1e"), "111111 eeeeee");
        add("grey, 8 bits, one shade see-through",
            png(2, 1, 8, Grey, "00 0780", chunk("tRNS", Bytes::fromHex("0080"))), "070707 808080");
        add("grey, 16 bits", png(3, 1, 16, Grey, "00 7fff 80ff 00ff"), "7f7f7f 808080 000000");
        add("grey and alpha, 8 bits", png(2, 1, 8, GreyAlpha, "00 c800 0a80"), "c8c8c8 0a0a0a");
        add("grey and alpha, 16 bits", png(2, 1, 16, GreyAlpha, "00 c8ff0000 0affffff"), "c8c8c8 0a0a0a");
        add("palette, 1 bit", png(2, 1, 1, Palette, "00 40", palette), "030201 140ac8");
        add("palette, 2 bits, see-through", png(4, 1, 2, Palette, "00 1b", palette + seeThrough),
            "030201 140ac8 ff0000 00ff00");
        add("palette, 4 bits", png(3, 1, 4, Palette, "00 2130", palette), "ff0000 140ac8 00ff00");
        add("palette, 8 bits, see-through", png(2, 1, 8, Palette, "00 0003", palette + seeThrough),
            "030201 00ff00");
        add("colour, 8 bits, one see-through",
            png(2, 1, 8, Rgb, "00 010203 c80a14", chunk("tRNS", Bytes::fromHex("00c8000a0014"))),
            "030201 140ac8");
        add("colour, 16 bits", png(2, 1, 16, Rgb, "00 ff807fff00ff 0180feff8000"), "007fff 80fe01");
        add("colour and alpha, 8 bits", png(3, 1, 8, Rgba, "00 c80a1400 c80a1401 0102ff80"),
            "140ac8 140ac8 ff0201");
        add("colour and alpha, 16 bits", png(2, 1, 16, Rgba, "00 c8ff0aff14ff0000 c8800a8014800001"),
            "140ac8 140ac8");
        add("another gamma", png(2, 1, 8, Rgb, "00 808080 102030", dim), "808080 302010");
        add("interlaced", png(2, 2, 8, Grey, "0001 0002 000304", {}, {}, true),
            "010101 020202 030303 040404");
        add("more behind its end", kSmall + "IDAT", "030201 060504");

        const Bytes grey = "00 0102 00 0304";
        const char* const turned[] = {"1234", "1234", "2143", "4321", "3412",
                                      "1324", "3142", "4231", "2413", "1234"};
        for (int i = 0; i < 10; ++i) {
            Bytes bgr;
            for (const char* digit = turned[i]; *digit != '\0'; ++digit)
                bgr += Bytes(3, char(*digit - '0'));
            QTest::addRow("orientation %d", i) << png(2, 2, 8, Grey, grey, {}, exif(i)) << bgr;
        }
    }
    void picturesHaveTheColoursOfTheirFiles()
    {
        QFETCH(Bytes, file);
        write("1.png", file);
        QString problem;
        const cv::Mat picture = readColorPicture(path("1.png"), &problem);
        QFETCH(Bytes, bgr);
        QCOMPARE(pixels(picture).toHex(), bgr.toHex());
    }

    void everyCutAndEveryChangedByteIsNoticed()
    {
        QString problem;
        QCOMPARE(pixels(read(kSmall, &problem)).toHex(), Bytes("030201060504"));
        for (int size = 0; size < kSmall.size(); ++size) {
            QVERIFY2(read(kSmall.left(size), &problem).empty(), qPrintable(QString::number(size)));
            QVERIFY(!problem.isEmpty());
        }
        for (int at = 0; at < kSmall.size(); ++at) {
            for (const int change : {0x20, 0x80, 0xff}) {
                Bytes changed = kSmall;
                changed[at] = char(changed[at] ^ change);
                QVERIFY2(read(changed, &problem).empty(), qPrintable(QString::number(at)));
            }
        }
    }

    void recordOfTheCameraMayBeCutAnywhere()
    {
        const Bytes record = exif(6).mid(8, 26);
        QString problem;
        for (int size = 0; size < record.size(); ++size) {
            const Bytes cut = record.left(size);
            const Bytes lost = record.left(size).replace(4, 4, "\x7f\xff\xff\xf0"); // points out of it
            QCOMPARE(read(png(2, 1, 8, Grey, "00 0102", chunk("eXIf", cut)), &problem).cols,
                     size < 20 ? 2 : 1);
            QCOMPARE(read(png(2, 1, 8, Grey, "00 0102", chunk("eXIf", lost)), &problem).cols, 2);
        }
    }

    void whatIsNoPictureIsRefusedAtOnce_data()
    {
        QTest::addColumn<Bytes>("file");
        QTest::addColumn<QString>("says");
        const QString damaged = "is damaged or cut off";
        const QString large = "is larger than";
        QTest::newRow("huge") << png(30000, 30000, 8, Rgb, "00") << large;
        QTest::newRow("the sum of its pixels is small in 32 bits")
            << png(1 << 16, 1 << 16, 8, Rgb, "00") << large;
        QTest::newRow("a row too many") << png(4096, 2161, 1, Grey, "00") << large;
        QTest::newRow("claims more than it holds") << png(4096, 2160, 16, Rgba, "00") << damaged;
        QTest::newRow("no width") << png(0, 1, 8, Rgb, "00") << damaged;
        QTest::newRow("many megabytes") << kSmall + Bytes(17 << 20, '\0') << large;
        QTest::newRow("an unknown kind") << png(1, 1, 8, Kind(5), "0000") << damaged;
        QTest::newRow("a palette that is missing") << png(1, 1, 8, Palette, "0000") << damaged;
        QTest::newRow("another format") << Bytes::fromHex("ffd8ffe000104a46494600") + kSmall << "is no PNG";
        QTest::newRow("nothing") << Bytes() << "is no PNG";
    }
    void whatIsNoPictureIsRefusedAtOnce()
    {
        QFETCH(Bytes, file);
        QFETCH(QString, says);
        write("1.png", file);
        file = Bytes();
        const qint64 before = peakKilobytes();
        QString problem;
        QVERIFY(readColorPicture(path("1.png"), &problem).empty());
        QVERIFY2(problem.startsWith(says), qPrintable(problem));
        QVERIFY(peakKilobytes() - before < 60 * 1024); // the least that one of them claims is 67 MB
    }

    void whatIsNoFileNeverHoldsUp()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("1.png"));
        QCOMPARE(::mkfifo(qPrintable(path("2.png")), 0600), 0);
        QVERIFY(QFile::link(path("3.png"), path("3.png")));
        QVERIFY(QFile::link("/dev/zero", path("4.png")));
        QString problem;
        for (const char* name : {"1.png", "2.png", "3.png", "4.png"}) {
            QVERIFY(readColorPicture(path(name), &problem).empty());
            QCOMPARE(problem, "is no file that can be read");
        }
        QVERIFY(readColorPicture(path("5.png"), &problem).empty());
        QVERIFY(problem.isEmpty()); // it only ends the round
    }

    void roundEndsAtTheFirstGap()
    {
        PixmapSequence sequence(m_folder->path(), QSize(1, 1));
        const auto blues = [&sequence](int reads) {
            QString walked;
            for (int i = 0; i < reads; ++i) {
                sequence.readNext();
                walked += sequence.frame().empty() ? "-" : QString::number(sequence.frame().data[0]);
            }
            return walked;
        };
        QCOMPARE(blues(2), "--");
        for (const int number : {1, 2, 4})
            write(QString("%1.png").arg(number), dot(0, 0, number));
        QCOMPARE(blues(7), "1221221");
        LogCapture log;
        write("3.png", dot(0, 0, 3).left(60));
        QCOMPARE(blues(10), "2212212212");
        QCOMPARE(log.count("3.png is damaged or cut off"), 1);
        write("3.png", dot(0, 0, 3)); // mended: it and what is behind it
        QCOMPARE(blues(5), "34412");
        const QString away = m_folder->path() + ".away";
        QVERIFY(QDir().rename(m_folder->path(), away));
        QCOMPARE(blues(3), "222");
        QVERIFY(QDir().rename(away, m_folder->path()));
        QCOMPARE(blues(3), "123");
        QVERIFY(QFile::remove(path("2.png")));
        QCOMPARE(blues(5), "44111"); // 4, its end, then one picture again and again
        write("1.png", "x");
        QCOMPARE(blues(4), "1111");
        QCOMPARE(log.count("is "), 2);
    }

    void picturesTakeTheSizeOfTheDevice()
    {
        write("1.png", png(2, 1, 8, Grey, "00 00ff"));
        PixmapSequence strip(m_folder->path(), QSize(4, 1));
        strip.readNext();
        QCOMPARE(pixels(strip.frame()).toHex(), Bytes("000000 404040 bfbfbf ffffff").replace(" ", ""));
        PixmapSequence nothing(m_folder->path(), QSize(0, 1));
        nothing.readNext();
        QVERIFY(nothing.frame().empty());
    }

    void matrixIsWalkedInSerpentines()
    {
        GivenStream stream("LV0N03", 253);
        QSignalSpy sent(&stream, &IEffectWorker::updateColors);
        stream.given = cv::Mat(11, 23, CV_8UC3);
        for (int y = 0; y < 11; ++y) {
            for (int x = 0; x < 23; ++x)
                stream.given.at<cv::Vec3b>(y, x) = {uchar(x), uchar(y), 7};
        }
        stream.update(0.08);
        QCOMPARE(stream.shown.size(), 253);
        for (int i = 0; i < 253; ++i) {
            const int row = i / 23; // from below
            const int along = i % 23;
            const int x = row % 2 == 0 ? along : 22 - along;
            QCOMPARE(stream.shown[i], (LV_RGB{7, uint8_t(10 - row), uint8_t(x)}));
        }
        stream.given = cv::Mat(1, 1, CV_8UC3, cv::Scalar(3, 2, 1));
        stream.update(0.08);
        QCOMPARE(stream.shown.count({1, 2, 3}), 253);
        sent.clear();
        for (const auto& other : {cv::Mat(), cv::Mat(11, 23, CV_8UC4), cv::Mat(11, 23, CV_8UC1)}) {
            stream.given = other;
            stream.update(0.08);
        }
        for (const auto& [model, leds] : {std::pair("LV0N03", 100), std::pair("LV0127", 0)}) {
            GivenStream unfit(model, uint32_t(leds));
            const QSignalSpy nothing(&unfit, &IEffectWorker::updateColors);
            unfit.given = cv::Mat(1, 1, CV_8UC3, cv::Scalar(1, 2, 3));
            unfit.update(0.08);
            QCOMPARE(nothing.size(), 0);
        }
        QCOMPARE(sent.size(), 0);
    }

    void intervalIsUsedOrReplaced()
    {
        const QList<QPair<QJsonValue, int>> cases{{80, 80},    {8000, 8000}, {79, 80},          {8001, 80},
                                                  {"200", 80}, {200.5, 80},  {QJsonValue(), 80}};
        for (const auto& [stored, used] : cases) {
            config()->setAppConfig("pixmapStreamReadInterval", stored);
            const TestStream stream("LV0127", 1);
            QCOMPARE(config()->appConfig("pixmapStreamReadInterval"), QJsonValue(used));
            QCOMPARE(stream.findChildren<QTimer*>().last()->interval(), used);
        }
    }

    void stripPlaysTheUsersFolder()
    {
        TestStream stream("LV0127", 2);
        QVERIFY(QDir().mkpath(source()));
        write(source() + "/2.png", dot(0, 200, 0));
        write(source() + "/1.png", dot(200, 0, 0));
        QTRY_COMPARE(stream.shown, (QVector<LV_RGB>{{200, 0, 0}, {200, 0, 0}}));
        QTRY_COMPARE(stream.shown, (QVector<LV_RGB>{{0, 200, 0}, {0, 200, 0}}));
        QTRY_COMPARE(stream.shown.first().red, 200);
        QVERIFY(stream.effectProperty("").isNull() && stream.effectProperty("currentAnime").isNull());
    }

    void readOutlivesItsWorkerAndNoneWaitsBehindIt()
    {
        QVERIFY(QDir().mkpath(source()));
        write(source() + "/1.png", dot(1, 2, 3));
        QThreadPool& pool = *QThreadPool::globalInstance();
        const int threads = pool.maxThreadCount();
        pool.setMaxThreadCount(1);
        QSemaphore disk;
        pool.start([&disk] { disk.acquire(); });
        auto stream = std::make_unique<TestStream>("LV0127", 1);
        QTest::qWait(300); // several times the interval
        disk.release();
        QTRY_COMPARE(stream->shown.size(), 1);
        pool.start([&disk] { disk.acquire(); });
        QTest::qWait(200); // a read waits by now
        stream.reset();
        disk.release();
        QVERIFY(pool.waitForDone(20000));
        pool.setMaxThreadCount(threads);
    }

    void widgetSpeaksOfTheChoiceAlone()
    {
        LogCapture log;
        SFrmPixmapStream options(nullptr);
        auto* box = options.findChild<QComboBox*>();
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonValue()); // of the worker there is
        QVERIFY(!box->isEnabled() && box->count() == 0 && !box->placeholderText().isEmpty());
        QCOMPARE(options.effectProperty("currentAnime"), QJsonValue(""));
        options.setEffectProperty(
            "", QJsonObject{{"currentAnime", "b"}, {"animations", QJsonArray{"a", "", 5, "b", "c"}}});
        QCOMPARE(box->count(), 3);
        QCOMPARE(box->currentText(), "b");
        options.setEffectProperty("currentAnime", "gone");
        QVERIFY(log.contains("Not found animation name gone"));
        for (const char* key : {"", "animations", "anything", "lookProperties"})
            QCOMPARE(options.effectProperty(key).toObject(), (QJsonObject{{"currentAnime", "b"}}));
        QCOMPARE(changes.size(), 0);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(changes.size(), 1);
        QVERIFY(changes.first().first() == "currentAnime" && changes.first().last().toJsonValue() == "c");
        box->setCurrentIndex(-1);
        QVERIFY(log.contains("Invalied anime index") && changes.size() == 1);
        options.setEffectProperty("animations", QJsonArray());
        QVERIFY(!box->isEnabled());
    }

private:
    static ConfigurationManager* config() { return ConfigurationManager::instance(); }
    static QString source() { return config()->configPath() + "/pixel_source"; }
    QString path(const QString& name) const { return QDir(m_folder->path()).filePath(name); }
    void write(const QString& name, const Bytes& bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    cv::Mat read(const Bytes& file, QString* problem) const
    {
        write("one.png", file);
        return readColorPicture(path("one.png"), problem);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(PixmapStreamTest)
#include "tst_pixmap_stream.moc"
