#include "support/log/Loggers.h"
#include "support/log/LoopBrake.h"
#include "system/LogFolder.h"
#include "system/LogSystem.h"

#include <QtTest>
#include <log4cplus/initializer.h>

/// The log files as they stand after the log system has written them.
class tst_logging : public QObject
{
    Q_OBJECT

private:
    log4cplus::Initializer m_keepsLibraryAlive;
    std::unique_ptr<QTemporaryDir> m_dir;

    QString logs() const { return m_dir->filePath("logs"); }

    static QStringList lines(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly | QIODevice::Text)
                   ? QString::fromUtf8(file.readAll()).chopped(1).split('\n')
                   : QStringList();
    }

    static QStringList texts(const QString& path)
    {
        QStringList result;
        for (const QString& line : lines(path))
            result << line.section(" - ", 1).trimmed();
        return result;
    }

    static QString writeOldFile(const QString& path, int ageMinutes, qint64 bytes = 0)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.resize(bytes);
        file.setFileTime(QDateTime::currentDateTime().addSecs(-60LL * ageMinutes),
                         QFileDevice::FileModificationTime);
        return path;
    }

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void runsCollapseToTheirEnds()
    {
        // A statement a letter: upper and lower case are the same line of two files.
        const QString statements = "AAABBBCAAaAaBBB";
        const QStringList written{"A0", "A2", "B3", "B5", "C6", "A7", "A8", "a9", "A10", "a11", "B12"};
        LogSystem log(logs());
        for (int i = 0; i < statements.size(); ++i) {
            const QChar letter = statements[i];
            const char* file = letter.isUpper() ? "upper.cpp" : "lower.cpp";
            QMessageLogger(file, letter.toUpper().unicode(), "f").info("%c%d", letter.toLatin1(), i);
        }
        QCOMPARE(texts(log.filePath()), written);
    }

    void everyLineTellsLevelLoggerAndLine()
    {
        LogSystem log(logs());
        QMessageLogger("a.cpp", 12345, "f").warning("灯带 %d", 54321);
        QMessageLogger().debug("without a context");
        LOG4CPLUS_ERROR(deviceLogger(), toLogString("lost"));
        const QString written = lines(log.filePath()).join('|') +
                                lines(logs() + "/devices/" + QFileInfo(log.filePath()).fileName()).join('|');
        const QString head = R"(\d\d/\d\d/\d\d \d\d:\d\d:\d\d \d+\.\d+ \[\d+\] )";
        const QRegularExpression expected('^' + head + "WARN  app 12345 - 灯带 54321 \\|" + head +
                                          "DEBUG app 0 - without a context " + head +
                                          R"(ERROR device \d+ - lost $)");
        QVERIFY2(expected.match(written).hasMatch(), qPrintable(written));
    }

    void allLogsTogetherKeepTheirBoundWhileOneRunWrites()
    {
        const auto sum = [this] {
            qint64 bytes = 0;
            for (QDirIterator it(logs(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
                bytes += QFileInfo(it.next()).size();
            return bytes;
        };
        QStringList old; // ten of five million bytes each, the oldest last
        for (int i = 0; i < 10; ++i) {
            const QString name = (i % 2 ? "/devices/" : "/") + QString("2020_%1.log").arg(i);
            old << writeOldFile(logs() + name, 10 + i, 5'000'000);
        }
        LogSystem log(logs());
        QVERIFY(sum() <= kMaxLogBytes);
        QVERIFY(QFile::exists(old[8]) && !QFile::exists(old[9]));

        const QByteArray filler(50'000, 'x');
        for (int i = 0; i < 410; ++i) { // 20.5 million bytes in each log
            QMessageLogger("a.cpp", i, "f").info("%s", filler.constData());
            qInfo("[[loop]] %s", filler.constData());
            LOG4CPLUS_INFO(deviceLogger(), filler.constData());
            if (i % 50 == 0)
                QVERIFY2(sum() <= kMaxLogBytes, qPrintable(QString::number(sum())));
        }
        QVERIFY2(sum() <= kMaxLogBytes && sum() > 40'000'000, qPrintable(QString::number(sum())));
        QMessageLogger("a.cpp", 1000, "f").info("the last line");
        QVERIFY(texts(log.filePath()).last() == "the last line");
        QVERIFY(lines(log.filePath()).filter("[[loop]]").isEmpty());
    }

    void aFigureThatStaysTheSameGoesQuietUntilItIsNews()
    {
        LoopBrake brake;
        constexpr qint64 kDayMs = 24 * 60 * 60 * 1000;
        for (const double swing : {500.0, 1.0}) { // first one that never settles
            int lines = 0;
            for (qint64 now = 0; now < kDayMs; now += 3000)
                lines += brake.isDue(80.0 + swing * double(now % 7), "effect", now) ? 1 : 0;
            constexpr int kLineBytes = 2000; // a picture of 300 LEDs
            QVERIFY2(lines > 200 && lines * kLineBytes < 1600 * 1000, qPrintable(QString::number(lines)));
            brake = {};
        }
        for (const char* text : {"another effect", "effect"}) { // the choice gone and back
            QCOMPARE(brake.isDue(80.0, text, kDayMs), true);
            QCOMPARE(brake.isDue(60.1, text, kDayMs), true);
            for (const bool isDue : {true, true, true, false})
                QCOMPARE(brake.isDue(59.9, text, kDayMs), isDue); // a quarter less than 80
        }
    }

    void theOldestFilesGoAtTheStart()
    {
        const struct
        {
            QString place;
            int count, deleted;
        } folders[] = {{"/2020_%1.log", 41, 1}, {"/devices/%1.log", 25, 5}, {"/../dumps/%1.dmp", 22, 2}};
        // Names run against the times, so only the time can have decided.
        const auto path = [this](const QString& place, int i) { return logs() + place.arg(99 - i); };
        for (const auto& folder : folders) {
            for (int i = 0; i < folder.count; ++i)
                writeOldFile(path(folder.place, i), 1000 - i);
        }
        const QString other = writeOldFile(logs() + "/notes.txt", 9999);
        const QString backup = writeOldFile(path(folders[0].place, 0) + ".1", 1000);

        LogSystem log(logs());
        qInfo("new");
        for (const auto& folder : folders) {
            for (int i = 0; i < folder.count; ++i)
                QCOMPARE(QFile::exists(path(folder.place, i)), i >= folder.deleted);
        }
        QVERIFY(QFile::exists(other) && !QFile::exists(backup));
        QCOMPARE(texts(log.filePath()), QStringList{"new"});
    }
};

QTEST_GUILESS_MAIN(tst_logging)
#include "tst_logging.moc"
