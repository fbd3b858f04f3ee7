#include "LogCapture.h"
#include "effects/graphics/PixmapSequence.h"
#include "effects/graphics/PixmapStream.h"
#include "effects/graphics/SFrmPixmapStream.h"
#include "effects/graphics/readColorPicture.h"
#include "support/config/ConfigurationManager.h"

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QSemaphore>
#include <QThreadPool>
#include <QtTest>
#include <sys/stat.h>

namespace {

using Bytes = QByteArray;

constexpr char kInterval[] = "pixmapStreamReadInterval";
constexpr auto kGrey = QImage::Format_Grayscale8;

/// The file of a picture, with a chunk more before its pixels.
Bytes png(int width, int height, QImage::Format format, const Bytes& pixels, const Bytes& chunk = {})
{
    const auto* bytes = reinterpret_cast<const uchar*>(pixels.data());
    QBuffer file;
    if (!QImage(bytes, width, height, pixels.size() / height, format).save(&file, "png"))
        qFatal("cannot write a test picture");
    return Bytes(file.data()).insert(33, chunk);
}

Bytes dot(int grey)
{
    return png(1, 1, kGrey, Bytes(1, char(grey)));
}

/// One that says with which record it lies.
Bytes lying(const Bytes& record)
{
    return png(2, 2, kGrey, "\1\2\3\4", Bytes(3, '\0') + char(record.size()) + "eXIf" + record + "sum?");
}

/// Records that say nothing but how the picture lies, in either order of bytes.
const Bytes kLies6 = Bytes::fromHex("4d4d002a 00000008 0001 0112 0003 00000001 0006 0000");
const Bytes kLies3 = Bytes::fromHex("49492a00 08000000 0100 1201 0300 01000000 0300 0000");
const Bytes kUpright = "010101020202030303040404";

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
        const auto hex = [](const char* text) { return Bytes::fromHex(text); };
        const QList<QPair<Bytes, Bytes>> files{
            {png(2, 1, QImage::Format_RGBA8888, hex("c80a1400 0102ff80")), "140ac8 ff0201"},
            {png(2, 1, QImage::Format_RGBA64, hex("ffc8ff0aff140000 80ffff7fff000100")), "140ac8 007fff"},
            {lying(kLies6), "030303 010101 040404 020202"},
            {lying(Bytes(kLies6).replace(19, 1, "\x08")), "020202 040404 010101 030303"},
            {lying(Bytes(kLies6).replace(19, 1, "\x09")), kUpright},
            {lying(kLies3), "040404 030303 020202 010101"},
        };
        for (const auto& [file, bgr] : files)
            QCOMPARE(read(file), Bytes(bgr).replace(" ", ""));
    }

    void everyCutIsNoticedAndWhatIsNoPictureRefused()
    {
        const Bytes file = dot(7);
        QList<QPair<Bytes, QString>> files{
            {Bytes(file).replace(16, 8, "\0\1\0\0\0\1\0\0", 8), "is larger than"}, // nothing in 32 bits
            {file + Bytes(17 << 20, '\0'), "is larger than"},
            {Bytes::fromHex("ffd8ffe000104a46494600") + file, "is no PNG"},
        };
        for (int size = 0; size < file.size(); ++size)
            files.append({file.left(size), "is "});
        for (const auto& [bytes, says] : qAsConst(files))
            QVERIFY2(read(bytes).isEmpty() && m_problem.startsWith(says), qPrintable(m_problem));
        for (int size = 0; size < kLies6.size(); ++size) { // which only says how it lies
            Bytes record = kLies6.left(size);
            QCOMPARE(read(lying(record)) == kUpright, size < 20);
            QCOMPARE(read(lying(record.replace(4, 4, "\x7f\xff\xff\xf0"))), kUpright); // points out of it
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
            for (int i = 0; i < reads; ++i) {
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
    }

    void matrixIsWalkedInSerpentines()
    {
        Bytes pixels;
        for (int i = 0; i < 253; ++i)
            pixels += char(i);
        write("1.png", png(23, 11, kGrey, pixels));
        config()->setAppConfig(kInterval, 8000);
        TestStream matrix("LV0N03", 253), unfit("LV0N03", 100);
        for (TestStream* each : {&matrix, &unfit}) {
            each->read();
            QVERIFY(QThreadPool::globalInstance()->waitForDone(20000));
            each->update(0.08);
        }
        for (int i = 0; i < 253; ++i) {
            const int row = i / 23; // from below
            QCOMPARE(uchar(matrix.shown[i]), uchar((10 - row) * 23 + (row % 2 == 0 ? i % 23 : 22 - i % 23)));
        }
        QCOMPARE(matrix.findChildren<QTimer*>().last()->interval(), 8000);
        QVERIFY(matrix.shown.size() == 253 && unfit.shown.isEmpty());
    }

    void stripPlaysTheUsersFolder()
    {
        write("2.png", dot(200));
        write("1.png", png(2, 1, kGrey, Bytes::fromHex("00ff")));
        config()->setAppConfig(kInterval, 79); // shorter than is possible
        TestStream stream("LV0127", 4);
        QCOMPARE(config()->appConfig(kInterval), QJsonValue(80));
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
        options.setEffectProperty(
            "", QJsonObject{{"currentAnime", "b"}, {"animations", QJsonArray{"a", "", 5, "b", "c"}}});
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
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// The pixels of a picture, none of a refused one.
    Bytes read(const Bytes& file)
    {
        write("one.png", file);
        const cv::Mat bgr = readColorPicture(path("one.png"), &m_problem);
        return Bytes(reinterpret_cast<const char*>(bgr.data), int(bgr.total() * bgr.elemSize())).toHex();
    }

    QString m_problem;
};

QTEST_MAIN(PixmapStreamTest)
#include "tst_pixmap_stream.moc"
