// The server of the online service, asked as the wire has it.
#include "Certificates.h"
#include "OnlineServer.h"
#include "RequestParser.h"
#include "SigningKey.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QtTest>
#include <sodium.h>

namespace {

QByteArray posted(const QByteArray& path, const QByteArray& type, const QByteArray& body)
{
    return "POST " + path + " HTTP/1.1\r\nHost: localhost\r\nContent-Type: " + type +
           "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QByteArray got(const QByteArray& path, const QByteArray& header = {})
{
    return "GET " + path + " HTTP/1.1\r\nHost: localhost\r\n" + header + "\r\n";
}

QByteArray bodyOf(const QByteArray& answer)
{
    return answer.mid(answer.indexOf("\r\n\r\n") + 4);
}

} // namespace

class TestOnlineServer : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_server = std::make_unique<OnlineServer>();
        QVERIFY(m_server->listen());
    }

    void understandsARequestCutAnywhere()
    {
        const QByteArray request = posted("/app/usage?a=b", "application/json", "{\"a\": 1}\r\n\r\n");
        for (int cut = 0; cut <= request.size(); ++cut) {
            RequestParser parser;
            parser.add(request.left(cut));
            QCOMPARE(parser.add(request.mid(cut) + "more"), RequestParser::State::Whole);
            QCOMPARE(parser.request().body, QByteArray("{\"a\": 1}\r\n\r\n"));
            QCOMPARE(parser.request().headers["content-type"], QByteArray("application/json"));
            RequestParser waiting;
            waiting.add(request.left(cut));
            QCOMPARE(waiting.state() == RequestParser::State::Whole, cut == request.size());
        }
    }

    void refusesWhatIsNoRequest_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<int>("status");
        const QByteArray head = "POST / HTTP/1.1\r\n";
        QTest::newRow("TLS") << QByteArray("\x16\x03\x01\x02\x00\n", 6) << 400;
        QTest::newRow("bare line feeds") << QByteArray("GET / HTTP/1.1\n\n") << 400;
        QTest::newRow("another protocol") << QByteArray("GET / HTTP/2.0\r\n") << 505;
        QTest::newRow("no header") << head + "nonsense\r\n" << 400;
        QTest::newRow("folded header") << head + "A: b\r\n c\r\n" << 400;
        QTest::newRow("endless head") << head + "A: " + QByteArray(100000, 'a') << 431;
        QTest::newRow("negative length") << head + "Content-Length: -1\r\n\r\n" << 400;
        QTest::newRow("two lengths") << head + "Content-Length: 1\r\nContent-Length: 2\r\n\r\n" << 400;
        QTest::newRow("huge length") << head + "Content-Length: 99999999999999999999\r\n\r\n" << 413;
        QTest::newRow("chunks") << head + "Transfer-Encoding: chunked\r\n\r\n" << 501;
    }

    void refusesWhatIsNoRequest()
    {
        QFETCH(QByteArray, request);
        QFETCH(int, status);
        QVERIFY(ask(request).startsWith("HTTP/1.1 " + QByteArray::number(status) + ' '));
        QCOMPARE(m_server->requests().size(), 1);
    }

    void signsTheVersionOfTheSystemThatAsks()
    {
        m_server->setInstaller("../new.deb", "installer");
        m_server->setVersion({{"version", "2.0"}, {"size", 7}});
        const auto envelope = [this] {
            const QByteArray answer = ask(got("/app/version?system=linux&arch=arm64&version=1.2"));
            return QJsonDocument::fromJson(bodyOf(answer)).object();
        };
        const auto isSigned = [this](const QJsonObject& object) {
            const QByteArray text = object["signed"].toString().toUtf8();
            const QByteArray signature = QByteArray::fromBase64(object["signature"].toString().toLatin1());
            return crypto_sign_verify_detached(
                       reinterpret_cast<const uchar*>(signature.constData()),
                       reinterpret_cast<const uchar*>(text.constData()), text.size(),
                       reinterpret_cast<const uchar*>(m_server->publicKey().constData())) == 0;
        };
        QVERIFY(isSigned(envelope()));
        const QJsonObject version =
            QJsonDocument::fromJson(envelope()["signed"].toString().toUtf8()).object();
        QCOMPARE(version["arch"].toString(), QString("arm64"));
        QCOMPARE(version["file"].toString(), QString("../new.deb"));
        QCOMPARE(version["size"].toInt(), 7); // the test's goes first
        QCOMPARE(bodyOf(ask(got('/' + version["url"].toString().toUtf8()))), QByteArray("installer"));
        m_server->setSignatureWrong(true);
        QVERIFY(!isSigned(envelope()));
        m_server->setSignatureWrong(false);
        m_server->setKey(SigningKey(SigningKey().seed()));
        QVERIFY(isSigned(envelope()));
    }

    void sendsThePartOfAFileThatIsAskedFor_data()
    {
        QTest::addColumn<QByteArray>("range");
        QTest::addColumn<QByteArray>("told");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("from") << QByteArray("bytes=7-") << QByteArray("206 ~bytes 7-9/10")
                              << QByteArray("789");
        QTest::newRow("from, to") << QByteArray("bytes=0-1") << QByteArray("206 ~bytes 0-1/10")
                                  << QByteArray("01");
        QTest::newRow("too far") << QByteArray("bytes=9-99") << QByteArray("206 ~bytes 9-9/10")
                                 << QByteArray("9");
        QTest::newRow("behind it") << QByteArray("bytes=10-") << QByteArray("416 ~bytes */10")
                                   << QByteArray("Range Not Satisfiable\n");
        QTest::newRow("backwards") << QByteArray("bytes=5-2") << QByteArray("200 ")
                                   << QByteArray("0123456789");
    }

    void sendsThePartOfAFileThatIsAskedFor()
    {
        QFETCH(QByteArray, range);
        QFETCH(QByteArray, told);
        m_server->setFile("/a file", "0123456789", "text/plain");
        const QByteArray answer = ask(got("/a%20file?really", "Range: " + range + "\r\n"));
        QVERIFY(answer.startsWith("HTTP/1.1 " + told.split('~')[0]));
        QVERIFY(told.endsWith(' ') || answer.contains("Content-Range: " + told.split('~')[1] + "\r\n"));
        QTEST(bodyOf(answer), "body");
        m_server->setCanResume(false);
        QCOMPARE(bodyOf(ask(got("/a%20file", "Range: " + range + "\r\n"))), QByteArray("0123456789"));
    }

    void takesFeedbackByTls()
    {
        QVERIFY(m_certificates.make());
        m_server->close();
        m_server->setCertificate(m_certificates.local.certificate, m_certificates.local.key);
        QVERIFY(m_server->listen());
        const QByteArray archive(3000000, 'z');
        QSignalSpy feedback(m_server.get(), &OnlineServer::feedbackReceived);
        QVERIFY(ask(posted("/app/feedback", "text/plain", archive)).contains(" 415 "));
        QVERIFY(feedback.isEmpty());
        QCOMPARE(bodyOf(ask(posted("/app/feedback", "application/zip", archive))),
                 QByteArray(R"({"received":true})"));
        QCOMPARE(feedback.value(0).value(0).toByteArray(), archive);
    }

    void goesWrongAsOftenAsIsWanted()
    {
        const QByteArray request = posted("/app/get_advertisement_info.php", "application/json",
                                          R"({"var":"1","app_name":"lumivar"})");
        const QByteArray body = R"({"enable":0,"vertion":0})";
        m_server->setFault("/app", ServerFault::CutInTheMiddle, 1);
        const QByteArray cut = ask(request);
        QVERIFY(cut.contains("Content-Length: 24\r\n"));
        QCOMPARE(bodyOf(cut), body.left(12));
        QCOMPARE(bodyOf(ask(request)), body);
        QCOMPARE(m_server->requestCount("/app/get"), 2);
    }

private:
    /// Everything that is answered until the server closes.
    QByteArray ask(const QByteArray& request)
    {
        QSslSocket socket;
        const QUrl address = m_server->address();
        if (address.scheme() == "https") {
            QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
            trust.setCaCertificates({m_certificates.authority.certificate});
            socket.setSslConfiguration(trust);
            socket.connectToHostEncrypted(address.host(), quint16(address.port()));
        } else {
            socket.connectToHost(address.host(), quint16(address.port()));
        }
        socket.write(request);
        QSignalSpy closed(&socket, &QTcpSocket::disconnected);
        if (!closed.wait(20000))
            return {};
        return socket.readAll();
    }

    Certificates m_certificates;
    std::unique_ptr<OnlineServer> m_server;
};

QTEST_GUILESS_MAIN(TestOnlineServer)
#include "tst_online_server.moc"
