// The server of the online service, asked as the wire has it.
#include "OnlineServer.h"
#include "RequestParser.h"
#include "SigningKey.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpSocket>
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

QJsonObject object(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object();
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
            QCOMPARE(parser.add(request.left(cut)) == RequestParser::State::Whole, cut == request.size());
            QCOMPARE(parser.add(request.mid(cut) + "more"), RequestParser::State::Whole);
            QCOMPARE(parser.request().body, QByteArray("{\"a\": 1}\r\n\r\n"));
            QCOMPARE(parser.request().headers["content-type"], QByteArray("application/json"));
        }
    }

    void refusesWhatIsNoRequest()
    {
        const QByteArray head = "POST / HTTP/1.1\r\n";
        const std::pair<QByteArray, int> wrongOnes[]{
            {QByteArray("\x16\x03\x01\x02\x00\n", 6), 400}, // TLS
            {"GET / HTTP/1.1\n\n", 400},
            {"GET / HTTP/2.0\r\n", 505},
            {head + "nonsense\r\n", 400},
            {head + "A: b\r\n c\r\n", 400},
            {head + "A: " + QByteArray(100000, 'a'), 431},
            {head + "Content-Length: -1\r\n\r\n", 400},
            {head + "Content-Length: 1\r\nContent-Length: 2\r\n\r\n", 400},
            {head + "Content-Length: 99999999999999999999\r\n\r\n", 413},
            {head + "Transfer-Encoding: chunked\r\n\r\n", 501},
        };
        for (const auto& [request, status] : wrongOnes)
            QVERIFY2(ask(request).startsWith("HTTP/1.1 " + QByteArray::number(status)),
                     request.left(60).constData());
        QCOMPARE(m_server->requests().size(), int(std::size(wrongOnes)));
    }

    void signsTheVersionOfTheSystemThatAsks()
    {
        m_server->setInstaller("../new.deb", "installer");
        m_server->setVersion({{"version", "2.0"}, {"size", 7}});
        const QJsonObject envelope =
            object(bodyOf(ask(got("/app/version?system=linux&arch=arm64&version=1.2"))));
        const QByteArray text = envelope["signed"].toString().toUtf8();
        const QByteArray signature = QByteArray::fromBase64(envelope["signature"].toString().toLatin1());
        const auto bytes = [](const QByteArray& of) { return reinterpret_cast<const uchar*>(of.data()); };
        QCOMPARE(crypto_sign_verify_detached(bytes(signature), bytes(text), text.size(),
                                             bytes(m_server->publicKey())),
                 0);
        const QJsonObject version = object(text);
        QCOMPARE(version["arch"].toString(), QString("arm64"));
        QCOMPARE(version["file"].toString(), QString("../new.deb"));
        QCOMPARE(version["size"].toInt(), 7); // the test's goes first
        QCOMPARE(bodyOf(ask(got('/' + version["url"].toString().toUtf8()))), QByteArray("installer"));
    }

    void sendsThePartOfAFileThatIsAskedFor()
    {
        const struct
        {
            QByteArray range, status, told, body;
        } parts[]{{"7-", "206", " bytes 7-9/10\r\n", "789"},
                  {"0-1", "206", " bytes 0-1/10\r\n", "01"},
                  {"9-99", "206", " bytes 9-9/10\r\n", "9"},
                  {"10-", "416", " bytes */10\r\n", "Range Not Satisfiable\n"},
                  {"5-2", "200", {}, "0123456789"}};
        m_server->setFile("/a file", "0123456789", "text/plain");
        for (const auto& part : parts) {
            const QByteArray question = got("/a%20file?really", "Range: bytes=" + part.range + "\r\n");
            m_server->setCanResume(true);
            const QByteArray answer = ask(question);
            QVERIFY2(answer.startsWith("HTTP/1.1 " + part.status), answer.constData());
            QCOMPARE(answer.contains("Content-Range:" + part.told), !part.told.isEmpty());
            QCOMPARE(bodyOf(answer), part.body);
            m_server->setCanResume(false);
            QCOMPARE(bodyOf(ask(question)), QByteArray("0123456789"));
        }
    }

    void takesFeedback()
    {
        const QByteArray archive(3000000, 'z');
        QSignalSpy feedback(m_server.get(), &OnlineServer::feedbackReceived);
        QVERIFY(ask(posted("/app/feedback", "text/plain", archive)).contains(" 415 "));
        QVERIFY(feedback.isEmpty());
        QVERIFY(ask(posted("/app/feedback", "application/zip", archive)).endsWith(R"({"received":true})"));
        QCOMPARE(feedback.value(0).value(0).toByteArray(), archive);
    }

private:
    /// Everything that is answered until the server closes.
    QByteArray ask(const QByteArray& request)
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, quint16(m_server->address().port()));
        socket.write(request);
        QSignalSpy closed(&socket, &QTcpSocket::disconnected);
        return closed.wait(20000) ? socket.readAll() : QByteArray();
    }

    std::unique_ptr<OnlineServer> m_server;
};

QTEST_GUILESS_MAIN(TestOnlineServer)
#include "tst_online_server.moc"
