// The server of the online service, asked as the wire has it.
#include "OnlineServer.h"
#include "RequestParser.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QtTest>

namespace {

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
        const QByteArray request =
            "POST /app/usage?a=b HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
            "Content-Length: 12\r\n\r\n{\"a\": 1}\r\n\r\n";
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
