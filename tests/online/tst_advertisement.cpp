#include "LogCapture.h"
#include "OnlineServer.h"
#include "ProgramUnderTest.h"
#include "online/ADManager.h"

#include <QBuffer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray picture(QSize size = {40, 20}, const char* format = "PNG")
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::green);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

} // namespace

class TestAdvertisement : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<OnlineServer>();
        QVERIFY(m_server->listen());
        m_server->setFile("/ad.png", picture(), "image/png");
    }

    void fetchesAPictureWheneverTheVersionDiffers()
    {
        offer();
        m_server->setFault("/app/", ServerFault::Chunked);
        m_server->setFault("/app/", ServerFault::ServerError, 1);
        m_server->setFault("/ad.png", ServerFault::CutInTheMiddle, 1);
        const QList<QVariantList> shown{{path("ad1.png"), "https://example.org/"}};
        QCOMPARE(run(), shown);
        QCOMPARE(bytesOf("ad1.png"), picture());
        QCOMPARE(ProgramUnderTest::readObject(path("ad_images/ad.json")), m_offer);
        QCOMPARE(m_server->requestCount("/ad.png"), 2); // one more try
        const QJsonObject question = QJsonDocument::fromJson(m_server->requests().first().body).object();
        const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QCOMPARE(question, (QJsonObject{{"var", "1.2"}, {"app_name", program}}));

        QCOMPARE(run(), shown); // from the disk
        QCOMPARE(m_server->requestCount("/ad.png"), 2);
        offer({{"vertion", 2}, {"ad1_local_file_name", "folder/lower.png"}, {"ad1_image_href", ""}});
        QCOMPARE(run(), (QList<QVariantList>{{path("lower.png"), ""}}));
        QCOMPARE(bytesOf("lower.png"), picture());
    }

    void showsNoFileWithoutAVersionOrByAStateThatLeadsElsewhere()
    {
        offer({{"vertion", 0}});
        QCOMPARE(run(), (QList<QVariantList>{{path(""), ""}}));
        QCOMPARE(m_server->requests().size(), 1);
        offer();
        for (const QStringList& state : {QStringList{"../../x.png", ""}, QStringList{"x.png", "file:///x"}}) {
            m_offer["ad1_local_file_name"] = state[0];
            m_offer["ad1_image_href"] = state[1];
            ProgramUnderTest::writeFile(path("ad_images/ad.json"), QJsonDocument(m_offer).toJson());
            QCOMPARE(run(), (QList<QVariantList>{{path(""), ""}}));
        }
    }

    void leavesEverythingAsItIs()
    {
        const QByteArray state = "{\"vertion\": 3}";
        ProgramUnderTest::writeFile(path("ad1.png"), picture());
        ProgramUnderTest::writeFile(path("ad_images/ad.json"), state);
        QDir(path("")).mkdir("taken.png");
        const auto isLeft = [&](QJsonObject change, const QString& line) {
            if (!change.contains("vertion"))
                change["vertion"] = 4;
            offer(change);
            return run(line).isEmpty() && bytesOf("ad_images/ad.json") == state &&
                   bytesOf("ad1.png") == picture() &&
                   QDir(path("")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot) ==
                       QStringList{"ad1.png", "ad_images", "taken.png"};
        };
        QVERIFY(isLeft({{"enable", 0}}, "ad enable: 0"));
        const QJsonArray types{1.5, true, QJsonValue(), QJsonObject()};
        const QMap<QString, QJsonArray> wrong{
            {"enable", {"1"}},
            {"vertion", {"1"}},
            {"ad1_local_file_name",
             {"", "../ad1.png", "/tmp/a.png", "ad_images/ad.json", ".a.png", "nul.png"}},
            {"ad1_image_href", {"file:///etc/x", "javascript:alert(1)", "smb://h/x", "a.org", "https:"}},
            {"ad1_image_url", {"", "file:///etc/x", "http://example.org/ad.png", "ftp://127.0.0.1/ad.png"}}};
        for (auto it = wrong.begin(); it != wrong.end(); ++it) {
            const QString line = it.key().startsWith("ad1") ? "[ADManager]: Refused" : "The answer is none";
            for (const QJsonArray& values : {types, *it}) {
                for (const QJsonValue& value : values)
                    QVERIFY2(isLeft({{it.key(), value}}, line), qPrintable(it.key() + value.toString()));
            }
        }
        const QString unsaved = "Failed to save image file.";
        QVERIFY(isLeft({{"ad1_local_file_name", "taken.png"}}, unsaved)); // a folder's name
        for (const QByteArray& image :
             {QByteArray("<html>Welcome to our hotel</html>"), picture().left(60), // the head of one
              picture({4097, 1}), picture({1, 4097}, "BMP"), picture() + QByteArray(8 * 1024 * 1024, ' '),
              QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")}) {
            m_server->setFile("/ad.png", image, "image/png");
            QVERIFY2(isLeft({}, unsaved), image.left(60).constData());
        }
    }

private:
    QString path(const QString& name) const { return m_folder->path() + '/' + name; }

    QByteArray bytesOf(const QString& name) const { return ProgramUnderTest::readFile(path(name)); }

    void offer(const QJsonObject& change = {})
    {
        m_offer = {{"enable", 1},
                   {"vertion", 3},
                   {"ad1_image_url", m_server->address().toString() + "/ad.png"},
                   {"ad1_local_file_name", "ad1.png"},
                   {"ad1_image_href", "https://example.org/"}};
        for (auto it = change.begin(); it != change.end(); ++it)
            m_offer[it.key()] = it.value();
        m_server->setAdvertisement(m_offer);
    }

    /// One start of the program; ends with a picture or with the line of the log.
    QList<QVariantList> run(const QString& line = "never said")
    {
        const LogCapture log;
        QCoreApplication::setApplicationVersion("1.2");
        ADManager manager({m_server->address(), {}, {}, {}}, m_folder->path());
        QSignalSpy shown(&manager, &ADManager::sendUpadteDone);
        manager.setRetryPause(10);
        manager.requestADInfo();
        if (!QTest::qWaitFor([&] { return !shown.isEmpty() || log.contains(line); }, 20000))
            qWarning("neither a picture nor the line");
        return shown;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<OnlineServer> m_server;
    QJsonObject m_offer;
};

QTEST_GUILESS_MAIN(TestAdvertisement)
#include "tst_advertisement.moc"
