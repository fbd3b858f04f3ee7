#include "OnlineServer.h"
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

Q_DECLARE_METATYPE(PersonalFacts)

/// The feedback archive as its reader finds it, and its way to the service.
class tst_feedback : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_temporary;
    using Files = QMap<QString, QByteArray>;

    static QString config(const QString& name = {})
    {
        return ConfigurationManager::instance()->configPath() + u'/' + name;
    }

    static void write(const QString& path, const QByteArray& bytes, int ageMinutes = 0)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.flush();
        file.setFileTime(QDateTime::currentDateTime().addSecs(-60LL * ageMinutes),
                         QFileDevice::FileModificationTime);
    }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static Files unzipped(const QString& path)
    {
        Files files;
        zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
        for (zip_int64_t i = 0; archive && i < zip_get_num_entries(archive, 0); ++i) {
            zip_stat_t stat;
            zip_stat_index(archive, zip_uint64_t(i), 0, &stat);
            QByteArray text(int(stat.size), '\0');
            zip_file_t* file = zip_fopen_index(archive, zip_uint64_t(i), 0);
            if (zip_fread(file, text.data(), stat.size) == zip_int64_t(stat.size))
                files.insert(QString::fromUtf8(stat.name), text);
            zip_fclose(file);
        }
        if (archive)
            zip_close(archive);
        return files;
    }

    static bool isPrivate(const QString& path)
    {
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        return (QFile::permissions(path) & others) == 0;
    }

    static QStringList temporaries() { return QDir::temp().entryList({"lumivar-feedback-*"}); }

    /// While it lives nothing begins in the global pool.
    struct BusyPool
    {
        BusyPool()
        {
            QThreadPool::globalInstance()->setMaxThreadCount(1);
            QThreadPool::globalInstance()->start([this] { held.acquire(); });
        }
        ~BusyPool()
        {
            held.release();
            QThreadPool::globalInstance()->waitForDone();
        }
        QSemaphore held;
    };

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

    void takesWholeWordsOutOfTexts_data()
    {
        QTest::addColumn<PersonalFacts>("facts");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("left");
        const auto row = [](const char* name, const PersonalFacts& facts, const char* text,
                            const char* left) {
            QTest::newRow(name) << facts << QString::fromUtf8(text) << QString::fromUtf8(left);
        };
        row("short", {{"al"}, {}, {}, {}, {}}, "Al said: all alone, normal_al(al)",
            "<user> said: all alone, normal_<user>(<user>)");
        row("single or few digits", {{"0", "a", "12"}, {}, {}, {}, {}}, "0 of a, 12:00", "0 of a, 12:00");
        row("everybody's", {{"root"}, {"localhost"}, {"/root"}, {}, {}}, "root@localhost /root/x root window",
            "root@localhost ~/x root window");
        row("pattern", {{"a.b|c"}, {}, {}, {}, {}}, "a.b|c, not axb or c", "<user>, not axb or c");
        row("unspaced", {{QString::fromUtf8("李雷"), "anna"}, {}, {}, {}, {}}, "用户李雷登录anna了",
            "用户<user>登录<user>了");
        row("domain", {{"anna"}, {"anna.example.org"}, {}, {}, {}}, "anna.example.org, ANNA",
            "<host>, <host>");
        row("homes", {{"jö"}, {}, {"/home/jö/"}, {}, {}},
            R"(/home/jö/x /home/jöx file:///home/j%C3%B6/y %2Fhome%2Fj%C3%B6 "\\home\\jö\\z")",
            R"(~/x /home/jöx file://~/y ~ "~\\z")");
        row("contact", {{}, {}, {}, {"1380013"}, {}}, "1380013 21380013\nx User contact info:  \"138\"\nend",
            "<contact> 21380013\nx User contact info: <contact>\nend");
        row("addresses", {{"anna"}, {}, {}, {}, {}},
            "anna@mail.example.org. bluez_sink.AA_BB_CC_00_11_22 2026_11_21_10_11_12",
            "<mail>. bluez_sink.<address> 2026_11_21_10_11_12");
    }

    void takesWholeWordsOutOfTexts()
    {
        QFETCH(PersonalFacts, facts);
        QFETCH(QString, text);
        QTEST(PersonalText(facts).removedFrom(text), "left");
    }

    void jsonKeepsItsShapeWhateverTheUserIsCalled()
    {
        for (const char* name : {"true", "null", "0.8", "light", "color", "a\"}", "$1 \\1"}) {
            const QString user = QString::fromUtf8(name);
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
            QVERIFY2(text.contains(": true,") && text.contains("0.8") && text.contains("null"),
                     text.constData());
            QVERIFY2(!text.contains("old contact"), text.constData());
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
        for (const char* name : {"logs/link.log", "logs/pipe.log"})
            QVERIFY2(files["left-out.txt"].contains(name), files["left-out.txt"].constData());
        const QJsonObject versions = QJsonDocument::fromJson(files["versions.json"]).object();
        QCOMPARE(versions["libraries"].toObject()["qt"].toString(), QString(qVersion()));
        QCOMPARE(versions["screens"].toArray().size(), QGuiApplication::screens().size());
        for (auto file = files.cbegin(); file != files.cend(); ++file) {
            for (const QByteArray& secret : {QByteArray("annabel"), QByteArray("bell@"), home})
                QVERIFY2(!file.value().contains(secret), qPrintable(file.key()));
        }
    }

    void newestLogsComeFirstAndFillTheRoom()
    {
        const QByteArray line = "al " + QByteArray(96, 'x') + '\n'; // grows by what replaces him
        const QString logs = config("logs/");
        write(logs + "2026_01_01_10_00_00.log", line.repeated(40000), 2);
        write(logs + "2026_01_02_10_00_00.log", line.repeated(90000), 3);
        write(logs + "2026_01_03_10_00_00.log", "the oldest\n", 4);
        write(logs + "devices/2026_01_01_10_00_00.log", "the newest\n", 1);
        const auto files =
            feedbackFiles({{}, {}, {}, config("none"), logs, PersonalText({{"al"}, {}, {}, {}, {}})},
                          [](int) { return true; });
        QStringList names;
        qint64 sum = 0;
        for (const FeedbackFile& file : files) {
            names << file.name;
            sum += file.name.startsWith("logs/") ? file.bytes.size() : 0;
        }
        QCOMPARE(names.mid(3).join(u' '), "logs/devices/2026_01_01_10_00_00.log logs/2026_01_01_10_00_00.log "
                                          "logs/2026_01_02_10_00_00.log left-out.txt");
        QVERIFY2(sum <= kMaxFeedbackLogBytes && sum > kMaxFeedbackLogBytes - 104,
                 qPrintable(QString::number(sum)));
        QCOMPARE(int(files[5].bytes.size() % 104), 0); // from a line's start to the end
        QCOMPARE(files.back().bytes, QByteArray("logs/2026_01_02_10_00_00.log: all but its end\n"
                                                "logs/2026_01_03_10_00_00.log: no room\n"));
    }

    void writesTheChosenFileWholeOrNotAtAll()
    {
        QTemporaryDir dir;
        const QString target = dir.filePath("report.zip");
        write(target, "older");
        FeedbackManager manager;
        QSignalSpy ends(&manager, &FeedbackManager::zipped);
        QSignalSpy steps(&manager, &FeedbackManager::zipProgress);
        manager.startZip(target + "/x/report.zip"); // below a file
        manager.startZip(target);                   // not while one is under way
        QTRY_COMPARE(ends.size(), 1);
        QCOMPARE(ends[0][0].toString(), QString());
        QVERIFY(!ends[0][1].toString().isEmpty());
        QCOMPARE(bytes(target), QByteArray("older"));

        steps.clear();
        manager.startZip(target);
        QTRY_COMPARE(ends.size(), 2);
        QCOMPARE(ends[1], QVariantList({target, QString()}));
        QVERIFY(unzipped(target).contains("message.txt") && isPrivate(target));
        QCOMPARE(steps.last()[0].toInt(), 100);
        QVERIFY(std::is_sorted(steps.begin(), steps.end(),
                               [](auto& a, auto& b) { return a[0].toInt() < b[0].toInt(); }));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"report.zip"});
        QVERIFY(manager.feedbackFile().isEmpty());
    }

    void cancelledOrAbandonedNothingIsLeft()
    {
        QTemporaryDir dir;
        const QString target = dir.filePath("report.zip");
        enum { BeforeItBegins, WhileItWrites, BeforeTheEndIsTold, Moments };
        for (int i = 0; i < 4 * Moments; ++i) {
            const int moment = i / 4;
            const QString file = i % 2 == 0 ? QString() : target;
            const bool isAbandoned = i % 4 < 2;
            auto manager = std::make_unique<FeedbackManager>();
            QSignalSpy ends(manager.get(), &FeedbackManager::zipped);
            const auto stop = [&] { isAbandoned ? manager.reset() : manager->cancelZip(); };
            if (moment == BeforeItBegins) {
                const BusyPool busy;
                manager->startZip(file);
                stop();
            } else if (moment == WhileItWrites) {
                connect(manager.get(), &FeedbackManager::zipProgress, qApp, stop);
                manager->startZip(file);
                QTRY_VERIFY(!manager || !ends.isEmpty());
            } else {
                manager->startZip(file);
                QThreadPool::globalInstance()->waitForDone();
                stop();
            }
            QThreadPool::globalInstance()->waitForDone();
            const bool isThere = QFile::exists(target); // written by then, and not taken back
            QVERIFY(moment == WhileItWrites || isThere == (moment == BeforeTheEndIsTold && !file.isEmpty()));
            if (!isAbandoned) {
                QTRY_COMPARE(ends.size(), 1);
                QCOMPARE(ends[0], QVariantList({isThere ? target : QString(), QString()}));
                QVERIFY(manager->feedbackFile().isEmpty());
            }
            QCOMPARE(temporaries(), QStringList());
            QCOMPARE(int(QDir(dir.path()).count() - 2), int(isThere));
            QFile::remove(target);
        }
    }

    void uploadTellsHowItEnded()
    {
        using Error = QNetworkReply::NetworkError;
        FeedbackManager manager;
        const QString archive = manager.zipFeedbackFile();
        QNetworkAccessManager network;
        const auto send = [&](ServerFault fault, const QByteArray& answer, const QString& file) -> int {
            OnlineServer server;
            server.listen();
            server.setFault("/app/feedback", fault);
            if (!answer.isEmpty())
                server.setRawAnswer("/app/feedback", answer);
            QSignalSpy arrivals(&server, &OnlineServer::feedbackReceived);
            FeedbackUpload upload(network, QUrl(server.address().toString() + "/app/feedback"), file);
            QSignalSpy ends(&upload, &FeedbackUpload::finished);
            QSignalSpy steps(&upload, &FeedbackUpload::progress);
            if (fault == ServerFault::SilentAfterConnect)
                connect(&server, &OnlineServer::requested, &upload, &FeedbackUpload::cancel);
            upload.start();
            if (!ends.isEmpty() || !ends.wait(30000) || server.requestCount("/") != int(file == archive))
                return -1;
            upload.cancel(); // after the end
            QTest::qWait(0);
            const QVariantList all{QFileInfo(file).size(), QFileInfo(file).size()};
            const bool isTaken = arrivals.contains(QVariantList{bytes(file)}) && steps.contains(all);
            return ends.size() == 1 && (isTaken || ends[0][0].toInt() != 0) ? ends[0][0].toInt() : -1;
        };
        QCOMPARE(send(ServerFault::None, {}, archive), int(Error::NoError));
        QCOMPARE(send(ServerFault::Chunked, {}, archive), int(Error::NoError));
        for (const char* answer : {R"({"received": false})", R"({"received": "true"})", "<html>"})
            QCOMPARE(send(ServerFault::None, answer, archive), int(Error::UnknownContentError));
        QCOMPARE(send(ServerFault::ServerError, {}, archive), int(Error::InternalServerError));
        QCOMPARE(send(ServerFault::CutInTheMiddle, {}, archive), int(Error::RemoteHostClosedError));
        QCOMPARE(send(ServerFault::SilentAfterConnect, {}, archive), int(Error::OperationCanceledError));
        QCOMPARE(send(ServerFault::None, {}, QDir::tempPath()), int(Error::ContentNotFoundError));
    }
};

QTEST_MAIN(tst_feedback)
#include "tst_feedback.moc"
