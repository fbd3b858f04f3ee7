#include "OnlineServer.h"
#include "ProgramUnderTest.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/FeedbackArchive.h"
#include "support/net/FeedbackManager.h"
#include "support/net/FeedbackUpload.h"

#include <QtNetwork>
#include <QtTest>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

/// The feedback archive as its reader finds it, and its way to the service.
class tst_feedback : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_temporary;
    using Files = QMap<QString, QByteArray>;
    static constexpr auto bytesOf = &ProgramUnderTest::readFile;

    static QString config(const QString& name = {})
    {
        return ConfigurationManager::instance()->configPath() + u'/' + name;
    }

    static void write(const QString& path, const QByteArray& bytes, int ageMinutes = 0)
    {
        ProgramUnderTest::writeFile(path, bytes);
        QFile file(path);
        QVERIFY(file.open(QIODevice::Append));
        const QDateTime then = QDateTime::currentDateTime().addSecs(-60LL * ageMinutes);
        file.setFileTime(then, QFileDevice::FileModificationTime);
    }

    static Files unzipped(const QString& path)
    {
        Files files;
        zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
        for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
            zip_stat_t stat;
            zip_stat_index(archive, zip_uint64_t(i), 0, &stat);
            QByteArray text(int(stat.size), '\0');
            zip_file_t* file = zip_fopen_index(archive, zip_uint64_t(i), 0);
            if (zip_fread(file, text.data(), stat.size) == zip_int64_t(stat.size))
                files.insert(QString::fromUtf8(stat.name), text);
            zip_fclose(file);
        }
        zip_close(archive);
        return files;
    }

    /// Neither the group nor others may touch it.
    static bool isPrivate(const QString& path) { return !(QFile::permissions(path) & 0x77); }

    static QStringList temporaries() { return QDir::temp().entryList({"lumivar-feedback-*"}); }

private slots:
    void initTestCase()
    {
        qputenv("USER", "annabel");
        qputenv("TMPDIR", QFile::encodeName(m_temporary.path())); // nobody else's archives are in there
        QVERIFY(!QSslSocket::sslLibraryVersionString().isNull());
    }

    void init()
    {
        ConfigurationManager::instance()->reset();
        QVERIFY(QDir(config()).removeRecursively());
        write(config("logs/2026_01_01_10_00_00.log"), QByteArray("a line of a log\n").repeated(60000));
    }

    void takesWholeWordsOutOfTexts()
    {
        const QVector<std::tuple<PersonalFacts, QString, QString>> rows{
            {{{"al"}, {}, {}, {}, {}}, "Al: all, normal_al(al)", "<user>: all, normal_<user>(<user>)"},
            {{{"0", "a", "12"}, {}, {}, {}, {}}, "0 of a, 12:00", "0 of a, 12:00"},
            {{{"root"}, {"localhost"}, {"/root"}, {}, {}}, "root@localhost /root/x", "root@localhost ~/x"},
            {{{"a.b|c"}, {}, {}, {}, {}}, "a.b|c, not axb or c", "<user>, not axb or c"},
            {{{"李雷", "anna"}, {}, {}, {}, {}}, "用户李雷登录anna了", "用户<user>登录<user>了"},
            {{{"anna"}, {"anna.example.org"}, {}, {}, {}}, "anna.example.org, ANNA", "<host>, <host>"},
            {{{"jö"}, {}, {"/home/jö/"}, {}, {}},
             R"(/home/jö/x /home/jöx file:///home/j%C3%B6/y %2Fhome%2Fj%C3%B6 "\\home\\jö\\z")",
             R"(~/x /home/jöx file://~/y ~ "~\\z")"},
            {{{}, {}, {}, {"1380013"}, {}},
             "1380013 21380013\nx User contact info:  \"138\"\nend",
             "<contact> 21380013\nx User contact info: <contact>\nend"},
            {{{"anna"}, {}, {}, {}, {}},
             "anna@b.example.org. sink.AA_BB_CC_00_11_22 2026_11_21_10_11_12",
             "<mail>. sink.<address> 2026_11_21_10_11_12"}};
        for (const auto& [facts, text, left] : rows)
            QCOMPARE(PersonalText(facts).removedFrom(text), left);
    }

    void jsonKeepsItsShapeWhateverTheUserIsCalled()
    {
        for (const QString user : {"true", "null", "0.8", "light", "color", "a\"}", "$1 \\1"}) {
            const QJsonObject object{{user, true},
                                     {user.toUpper(), true},
                                     {"list", QJsonArray{QJsonValue(), user + " x", 0.8}},
                                     {"inside", QJsonObject{{"color", user}}},
                                     {"half a pair", QString(QChar(0xD800)) + ' ' + user},
                                     {ConfigKeys::kUserContact.key, "old contact"}};
            const QJsonValue left = PersonalText({{user}, {}, {}, {}, {}}).removedFrom(QJsonValue(object));
            const QByteArray text = QJsonDocument(left.toObject()).toJson();
            const QJsonObject read = QJsonDocument::fromJson(text).object();
            QCOMPARE(read.size(), object.size()); // two that have become equal as well
            QVERIFY(text.contains(": true,") && text.contains("0.8") && text.contains("null"));
            QVERIFY(!text.contains("old contact"));
            QCOMPARE(read["inside"].toObject().begin().value().toString(), QString("<user>"));
        }
    }

    void holdsWhatHelpsAndNothingPersonal()
    {
        FeedbackManager manager;
        manager.setUserMsg("I am annabel. It blinks.");
        manager.setUserContactInfo("bell@example.org");
        ConfigurationManager::instance()->save();
        const QByteArray home = QDir::homePath().toUtf8();
        write(config("global.json"), "{\"annabel\": \"" + home + "/x\", \"cut");
        write(config("effects/id.effect.a.json"), R"({"annabel": {"speed": 1}})");
        write(config("secret.json"), "{}");
        write(config("logs/devices/2026_01_01_09_00_00.log"), "opened by annabel\n", 1);
        write(config("dumps/old.dmp"), "old", 9);
        write(config("dumps/new.dmp"), "Crash dump, " + home + "\n\nStack:\n0x00  61 6e 6e 61\n");
        QVERIFY(QFile::link("/etc/passwd", config("logs/link.log")));
        QVERIFY(QFile::link("/etc", config("logs/usrOptions")));
        QVERIFY(QDir().mkpath(config("controllers.json")));
        QCOMPARE(mkfifo(QFile::encodeName(config("logs/pipe.log")).constData(), 0600), 0);

        QVERIFY(!manager.zipFeedbackFile().isEmpty());
        const QString path = manager.zipFeedbackFile(); // removes the first
        QCOMPARE(temporaries(), QStringList{QFileInfo(path).fileName()});
        QVERIFY(isPrivate(path));
        Files files = unzipped(path);
        QCOMPARE(
            QStringList(files.keys()).join(u' '),
            "config/app.json config/effects/id.effect.a.json config/global.json contact.txt dumps/new.dmp "
            "left-out.txt logs/2026_01_01_10_00_00.log logs/devices/2026_01_01_09_00_00.log message.txt "
            "versions.json");
        QCOMPARE(files.take("message.txt"), QByteArray("I am annabel. It blinks."));
        QCOMPARE(files.take("contact.txt"), QByteArray("bell@example.org"));
        QCOMPARE(files["config/global.json"], QByteArray("{\"<user>\": \"~/x\", \"cut"));
        QCOMPARE(files["dumps/new.dmp"], QByteArray("Crash dump, ~\n\n"));
        QCOMPARE(files["logs/devices/2026_01_01_09_00_00.log"], QByteArray("opened by <user>\n"));
        const QByteArray leftOut = files["left-out.txt"], all = QByteArrayList(files.values()).join();
        QVERIFY(leftOut.contains("logs/link.log") && leftOut.contains("logs/pipe.log"));
        QVERIFY(!all.contains("annabel") && !all.contains("bell@") && !all.contains(home));
    }

    void newestLogsComeFirstAndFillTheRoom()
    {
        const QByteArray line = "al " + QByteArray(96, 'x') + '\n'; // grows by what replaces him
        const QString logs = config("logs/");
        write(logs + "2026_01_01_10_00_00.log", line.repeated(40000), 2);
        write(logs + "2026_01_02_10_00_00.log", line.repeated(90000), 3);
        write(logs + "2026_01_03_10_00_00.log", "the oldest\n", 4);
        write(logs + "devices/2026_01_01_10_00_00.log", "the newest\n", 1);
        const PersonalText personal({{"al"}, {}, {}, {}, {}});
        const auto files =
            feedbackFiles({{}, {}, {}, config("none"), logs, personal}, [](int) { return true; });
        QStringList names;
        qint64 sum = 0;
        for (const FeedbackFile& file : files) {
            names << file.name;
            sum += file.name.startsWith("logs/") ? file.bytes.size() : 0;
        }
        QCOMPARE(names.mid(3).join(u' '), "logs/devices/2026_01_01_10_00_00.log logs/2026_01_01_10_00_00.log "
                                          "logs/2026_01_02_10_00_00.log left-out.txt");
        QVERIFY(sum <= kMaxFeedbackLogBytes && sum > kMaxFeedbackLogBytes - 104);
        QCOMPARE(int(files[5].bytes.size() % 104), 0); // from a line's start to the end
        QCOMPARE(files.back().bytes, QByteArray("logs/2026_01_02_10_00_00.log: all but its end\n"
                                                "logs/2026_01_03_10_00_00.log: no room\n"));
    }

    void cancelledOrAbandonedNothingIsLeft()
    {
        QTemporaryDir dir;
        const QString target = dir.filePath("report.zip");
        QThreadPool* const pool = QThreadPool::globalInstance();
        pool->setMaxThreadCount(1);
        enum { BeforeItBegins, WhileItWrites, BeforeTheEndIsTold, Moments };
        for (int i = 0; i < 4 * Moments; ++i) {
            const int moment = i / 4;
            const QString file = i % 2 == 0 ? QString() : target;
            const bool isAbandoned = i % 4 < 2;
            write(target, "older");
            auto manager = std::make_unique<FeedbackManager>();
            QSignalSpy ends(manager.get(), &FeedbackManager::zipped);
            const auto stop = [&] { isAbandoned ? manager.reset() : manager->cancelZip(); };
            QSemaphore held;
            if (moment == BeforeItBegins)
                pool->start([&held] { held.acquire(); }); // its only thread
            if (moment == WhileItWrites)
                connect(manager.get(), &FeedbackManager::zipProgress, qApp, stop);
            manager->startZip(file);
            if (moment == BeforeTheEndIsTold)
                pool->waitForDone();
            if (moment == WhileItWrites)
                QTRY_VERIFY(!manager || !ends.isEmpty());
            else
                stop();
            held.release();
            pool->waitForDone();
            const bool isThere = bytesOf(target) != "older"; // written by then, and not taken back
            QVERIFY(!isThere || (isPrivate(target) && unzipped(target).contains("message.txt")));
            QVERIFY(moment == WhileItWrites || isThere == (moment == BeforeTheEndIsTold && !file.isEmpty()));
            if (!isAbandoned) {
                QTRY_COMPARE(ends, (QList<QVariantList>{{isThere ? target : QString(), QString()}}));
                QVERIFY(manager->feedbackFile().isEmpty());
            }
            QCOMPARE(temporaries(), QStringList());
            QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"report.zip"});
        }
    }

    void uploadTellsHowItEnded()
    {
        using Error = QNetworkReply::NetworkError;
        FeedbackManager manager;
        const QString archive = manager.zipFeedbackFile();
        const auto send = [](const QString& file, const QByteArray& answer, ServerFault fault) -> int {
            OnlineServer server;
            server.listen();
            server.setFault("/app/feedback", fault);
            if (!answer.isEmpty())
                server.setRawAnswer("/app/feedback", answer);
            const QSignalSpy arrivals(&server, &OnlineServer::feedbackReceived);
            QNetworkAccessManager network;
            FeedbackUpload upload(network, QUrl(server.address().toString() + "/app/feedback"), file);
            QSignalSpy ends(&upload, &FeedbackUpload::finished);
            upload.start();
            if (!ends.isEmpty() || !ends.wait(30000)) // comes by an event
                return -1;
            const int error = ends[0][0].toInt();
            return error != 0 || arrivals.contains(QVariantList{bytesOf(file)}) ? error : -1;
        };
        for (const ServerFault fault : {ServerFault::None, ServerFault::Chunked})
            QCOMPARE(send(archive, {}, fault), int(Error::NoError));
        for (const char* answer : {R"({"received": false})", R"({"received": "true"})", "<html>"})
            QCOMPARE(send(archive, answer, ServerFault::None), int(Error::UnknownContentError));
        QCOMPARE(send(QDir::tempPath(), {}, ServerFault::None), int(Error::ContentNotFoundError));
    }
};

QTEST_MAIN(tst_feedback)
#include "tst_feedback.moc"
