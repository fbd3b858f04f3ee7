#include "LogCapture.h"
#include "OnlineServer.h"
#include "ProgramUnderTest.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/FeedbackManager.h"
#include "support/net/NetRCManager.h"
#include "support/net/plainFileName.h"

#include <QtTest>
#include <csignal>
#include <sys/resource.h>

namespace {

const QString kName = "lumivar_1.3_amd64.deb";
const QByteArray kInstaller = QByteArray("installer ").repeated(60000);

const auto& bytesOf = ProgramUnderTest::readFile;
const auto& put = ProgramUnderTest::writeFile;

/// A client, and what it tells.
struct Client
{
    explicit Client(const OnlineServer& server, const QString& version = "1.2.1.5")
        : manager({server.address(), server.publicKey(), {}, {}}, version)
    {
        manager.setRetryPause(10);
    }

    bool check()
    {
        manager.checkVersion();
        return found.wait(20000);
    }
    /// Whether the installer has come; false with one more failure.
    bool download()
    {
        const int before = downloaded.size(), failures = failed.size();
        manager.downloadLatestApp();
        const auto isOver = [&] { return downloaded.size() > before || failed.size() > failures; };
        return QTest::qWaitFor(isOver, 20000) && failed.size() == failures;
    }

    NetRCManager manager;
    QSignalSpy found{&manager, &NetRCManager::hasNewAppVersion};
    QSignalSpy downloaded{&manager, &NetRCManager::newInstallationFileDownloaded};
    QSignalSpy failed{&manager, &NetRCManager::downloadFailed};
};

} // namespace

class TestNetClient : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(m_folder).removeRecursively();
        m_config->setGlobalValue(ConfigKeys::kLatestVersion.key, "before");
        m_server = std::make_unique<OnlineServer>();
        QVERIFY(m_server->listen());
        m_server->setInstaller(kName, kInstaller);
        m_server->setVersion({{"version", "1.3"}});
    }

    void fetchesALaterVersionOnce()
    {
        put(m_folder + "/lumivar_1.1_amd64.deb", "old");
        put(m_folder + "/00ff.part", "old");
        m_server->setFault("/app/", ServerFault::Chunked); // once the other is over
        m_server->setFault("/app/version", ServerFault::ServerError, 1);
        Client client(*m_server);
        QSignalSpy progress(&client.manager, &NetRCManager::downloadProgress);
        QVERIFY(client.check());
        QVERIFY(stored() == "1.3" && m_server->requestCount("/app/version?system=linux&arch=") == 2);
        connect(&client.manager, &NetRCManager::downloadProgress, &client.manager,
                &NetRCManager::downloadLatestApp); // an impatient user
        QVERIFY(client.download());
        QCOMPARE(client.downloaded, (QList<QVariantList>{{path()}}));
        QCOMPARE(bytesOf(path()), kInstaller);
        QCOMPARE(QDir(m_folder).entryList(QDir::Files), QStringList{kName});
        QCOMPARE(progress.last(), (QVariantList{qint64(kInstaller.size()), qint64(kInstaller.size())}));
        // What is there is judged again.
        for (const QByteArray& other : {kInstaller, damaged(), kInstaller.left(9)}) {
            put(path(), other);
            QVERIFY(client.download());
            QCOMPARE(bytesOf(path()), kInstaller);
        }
        QCOMPARE(m_server->requestCount("/download/"), 3);
    }

    void believesOnlyWhatIsSignedAndWhole()
    {
        const auto refuses = [this] {
            const LogCapture log;
            Client client(*m_server);
            const int before = m_server->requestCount("/");
            return !client.download() && client.failed.size() == 1 && client.found.isEmpty() && // asks first
                   log.contains("[NetRCManager]: The latest version is not known:") &&
                   m_server->requestCount("/") == before + 1 && stored() == "before";
        };
        const QMap<QString, QJsonArray> wrong{
            {"product", {"Other", 1}},
            {"system", {"windows", true}},
            {"arch", {"pdp11", QJsonValue()}},
            {"version", {"", "1.3b", "1.2.3.4.5", 1.3, QJsonArray{"1.3"}, QJsonObject()}},
            {"file", {"", "../x.deb", "/x.deb", "x.exe", "x.deb.sh", ".deb", 5}},
            {"url", {"", "file:///etc/passwd", "http://example.org/x.deb", 5}},
            {"size", {0, -1, 1.5, 1e18, 600e6, "540000"}},
            {"sha256", {"", "00", 7}}};
        for (auto it = wrong.begin(); it != wrong.end(); ++it) {
            for (const QJsonValue& value : *it) {
                m_server->setVersion({{"version", "1.3"}, {it.key(), value}});
                QVERIFY2(refuses(), qPrintable(it.key() + ' ' + value.toVariant().toString()));
            }
        }
        m_server->setVersion({{"version", "1.3"}});
        m_server->setSignatureWrong(true);
        QVERIFY(refuses());
        for (const char* raw :
             {"<html>", "[]", R"({"signed": 1, "signature": []})", R"({"signed": "{}", "signature": ""})"}) {
            m_server->setRawAnswer("/app/version", raw);
            QVERIFY2(refuses(), raw);
        }
    }

    void neverGoesBackToAnEarlierVersion()
    {
        for (const char* version : {"1.3", "1.2.9", "1"}) {
            m_server->setVersion({{"version", version}});
            Client client(*m_server, "1.3");
            QVERIFY(!client.download() && client.found.isEmpty() && stored() == version);
        }
        QCOMPARE(m_server->requestCount("/download/"), 0);
    }

    void goesOnAfterACutAnywhere()
    {
        const QByteArray installer = kInstaller.left(1000);
        const auto hash = QCryptographicHash::hash(installer, QCryptographicHash::Sha256).toHex();
        const QString part = m_folder + '/' + hash + ".part";
        m_server->setInstaller(kName, installer);
        Client client(*m_server);
        for (const bool canResume : {false, true}) {
            m_server->setCanResume(canResume);
            for (const int cut : {0, 1, 999, 1000, 1200}) {
                QFile::remove(path());
                put(part, kInstaller.left(cut));
                const int before = m_server->requestCount("/download/");
                QVERIFY(client.download());
                QCOMPARE(bytesOf(path()), installer);
                QCOMPARE(m_server->requestCount("/download/") - before, cut == 1000 ? 0 : 1);
                const bool goesOn = cut == 1 || cut == 999;
                const QByteArray range = m_server->requests().last().headers.value("range");
                QVERIFY(cut == 1000 || range == (goesOn ? "bytes=" + QByteArray::number(cut) + '-' : ""));
            }
        }
        QFile::remove(path());
        put(part, "damaged");
        QVERIFY(!client.download() && QDir(m_folder).isEmpty());
        QVERIFY(client.download());
    }

    void keepsWhatHasComeWhenTheLineFails()
    {
        Client client(*m_server);
        m_server->setFault("/download/", ServerFault::CutInTheMiddle, 1);
        QVERIFY(!client.download());
        bool isCancelled = false;
        connect(&client.manager, &NetRCManager::downloadProgress, &client.manager, [&] {
            if (!std::exchange(isCancelled, true))
                client.manager.cancelDownload();
        });
        client.manager.downloadLatestApp();
        QTRY_VERIFY(isCancelled);
        QVERIFY(client.download());
        QCOMPARE(bytesOf(path()), kInstaller);
        QVERIFY(client.downloaded.size() == 1 && client.failed.size() == 1); // the cancelled one is silent
        QVERIFY(m_server->requests().last().headers.value("range") >= "bytes=270000-");
    }

    void tellsWhatCannotBeFetchedOrSent()
    {
        OnlineServer server;
        QVERIFY(server.listen());
        server.setVersion({{"version", "1.3"}});
        Client client(server);
        QVERIFY(client.check());
        QVERIFY(!client.manager.hasInstaller() && !client.download()); // the click is answered
        NetRCManager manager({{}, QByteArray(32, 'k'), {}, {}}, "1");  // there is no service
        bool isSent = true;
        manager.sendFeedback(&m_feedback, {}, [&](QNetworkReply::NetworkError) { isSent = false; });
        QTRY_VERIFY(!isSent);
    }

    void keepsNothingElseThanTheSignedFileAndOnlyWhereThereIsRoom()
    {
        Client client(*m_server);
        for (const QByteArray& other : {damaged(), kInstaller + '!', kInstaller.left(999)}) {
            m_server->setFile("/download/" + kName, other, "application/octet-stream");
            QVERIFY(!client.download());
            QVERIFY(client.failed.last().first().toString().startsWith("下载的文件不正确"));
            QVERIFY(QDir(m_folder).isEmpty());
        }
        m_server->setInstaller(kName, kInstaller);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
        const rlimit tiny = {300000, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &tiny);
        const bool hasRoom = client.download();
        ::setrlimit(RLIMIT_FSIZE, &limit);
        QVERIFY(!hasRoom && client.failed.last().first().toString().startsWith("无法保存"));
    }

    void reducesNamesToPlainOnes()
    {
        const QStringList endings{"deb", "png"};
        for (const QString plain : {"a.deb", "Lumivar 1.2~3+b_x-64.DEB", "图.png", "console.png"})
            QCOMPARE(plainFileName("ad_images/" + plain, endings), plain);
        const QString tricks = QString(300, 'a') + ".png|a" + QChar(0) +
                               ".png||.|..|/a.png|../a.png|a/../b.png|a/./b.png|..\\a.png|a\\b.png|C:a.png|"
                               "a.png:b.png|.a.png|a/.b.png| a.png|a.png |a.png.|a.png/|a//b.png|a.json|png|"
                               "nul.png|COM1.x.png|aux .png|a\n.png|$(a).png|gnp.\u202Edeb.png|%2e%2e.png";
        for (const QString& trick : tricks.split('|'))
            QCOMPARE(plainFileName(trick, endings), QString());
    }

    void saysNothingOnceTheProgramQuits()
    {
        Client client(*m_server);
        QVERIFY(client.check());
        bool isQuitting = false;
        const auto asked = connect(m_server.get(), &OnlineServer::requested, this, [&] { // it answers later
            isQuitting = QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit");
        });
        client.manager.downloadLatestApp();
        client.manager.checkVersion();
        QTRY_VERIFY(isQuitting);
        disconnect(asked);
        Client other(*m_server); // its answers come later than those
        QVERIFY(other.check() && other.download());
        QVERIFY(client.found.size() == 1 && client.downloaded.isEmpty() && client.failed.isEmpty());
    }

    void mayEndInWhateverItTells()
    {
        QVERIFY(!m_feedback.zipFeedbackFile().isEmpty());
        m_server->setFault("/download/", ServerFault::CutInTheMiddle, 2); // of the second and the third
        for (int told = 0; told < 5; ++told) {
            auto client = std::make_unique<Client>(*m_server);
            const auto endAt = [&](int which, auto signal) {
                if (which == told)
                    connect(&client->manager, signal, this, [&client] { client.reset(); });
            };
            endAt(0, &NetRCManager::hasNewAppVersion);
            endAt(1, &NetRCManager::downloadProgress);
            endAt(2, &NetRCManager::downloadFailed);
            endAt(3, &NetRCManager::newInstallationFileDownloaded);
            endAt(4, &NetRCManager::feedbackProgress);
            client->manager.downloadLatestApp();
            if (told == 4)
                client->manager.sendFeedback(
                    &m_feedback, [] {}, [](QNetworkReply::NetworkError) {});
            QTRY_VERIFY2(!client, qPrintable(QString::number(told)));
            QCoreApplication::processEvents();
        }
    }

private:
    static QByteArray damaged() { return QByteArray(kInstaller).replace(7, 1, "!"); }
    QString path() const { return m_folder + '/' + kName; }
    QString stored() const { return m_config->globalValue(ConfigKeys::kLatestVersion.key).toString(); }

    FeedbackManager m_feedback;
    ConfigurationManager* const m_config = ConfigurationManager::instance();
    const QString m_folder = m_config->resourcesPath() + "/updates";
    std::unique_ptr<OnlineServer> m_server;
};

QTEST_GUILESS_MAIN(TestNetClient)
#include "tst_net_client.moc"
