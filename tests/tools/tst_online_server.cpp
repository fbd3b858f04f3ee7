// The server of the online service, asked as the wire has it.
#include "OnlineServer.h"
#include "RequestParser.h"
#include "SigningKey.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>
#include <sodium.h>

namespace {

const QByteArray kQuestion = R"({"var":"1.2.1","app_name":"lumivar"})";

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

private:
    /// Everything that is answered until the server closes.
    QByteArray ask(const QByteArray& request)
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, quint16(m_server->address().port()));
        socket.write(request);
        QSignalSpy closed(&socket, &QTcpSocket::disconnected);
        if (!closed.wait(20000))
            return {};
        return socket.readAll();
    }

    std::unique_ptr<OnlineServer> m_server;
};

QTEST_GUILESS_MAIN(TestOnlineServer)
#include "tst_online_server.moc"
