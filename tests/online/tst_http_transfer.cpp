#include "support/net/HttpTransfer.h"

#include <QBuffer>
#include <QNetworkAccessManager>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

/// Calls `answer` with each request that has come whole, and keeps it.
class RawServer : public QTcpServer
{
public:
    RawServer()
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            requests.append(QByteArray());
            connect(socket, &QTcpSocket::readyRead, socket, [this, socket, index = requests.size() - 1] {
                QByteArray& request = requests[index];
                request += socket->readAll();
                const int body = request.indexOf("\r\n\r\n") + 4;
                const int length = request.toLower().indexOf("content-length: ");
                const int size = length < 0 ? 0 : request.mid(length + 16).split('\r').first().toInt();
                if (body >= 4 && request.size() >= body + size && answer)
                    answer(socket);
            });
        });
        listen(QHostAddress::LocalHost);
    }

    /// Each request is answered so, and the connection closed.
    void say(const QByteArray& bytes)
    {
        answer = [bytes](QTcpSocket* socket) {
            socket->write(bytes);
            socket->disconnectFromHost();
        };
    }

    QUrl url(const QByteArray& path = "/") const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(serverPort()) + QString::fromLatin1(path));
    }

    std::function<void(QTcpSocket*)> answer;
    QList<QByteArray> requests;
};

/// Runs one transfer to its end and counts what it tells.
struct Exchange
{
    explicit Exchange(HttpRequest request)
        : transfer(new HttpTransfer(network, std::move(request)))
    {
        QObject::connect(transfer, &HttpTransfer::finished, [this](const HttpAnswer& its) {
            answer = its;
            ++ends;
        });
    }
    ~Exchange() { delete transfer; }

    HttpAnswer& run()
    {
        transfer->start();
        if (ends == 0 && !QTest::qWaitFor([this] { return ends > 0; }, 30000))
            qFatal("never ended");
        QCoreApplication::processEvents(); // a second end would come now
        return answer;
    }

    QNetworkAccessManager network;
    QPointer<HttpTransfer> transfer;
    HttpAnswer answer;
    int ends = 0;
};

HttpRequest requestOf(const QUrl& url)
{
    HttpRequest request;
    request.url = url;
    return request;
}

const QByteArray kWhole = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello";

} // namespace

class HttpTransferTest : public QObject
{
    Q_OBJECT

private slots:
    void no_cut_answer_passes_for_a_whole_one()
    {
        RawServer server;
        for (int size = 0; size <= kWhole.size(); ++size) {
            server.say(kWhole.left(size));
            Exchange exchange(requestOf(server.url()));
            const HttpAnswer& answer = exchange.run();
            const bool isWhole = answer.error == QNetworkReply::NoError;
            QCOMPARE(exchange.ends, 1);
            QCOMPARE(answer.body, isWhole ? "hello" : "");
            QVERIFY2(isWhole == (size == kWhole.size()),
                     qPrintable(QString::number(size) + answer.errorText));
        }
    }
};

QTEST_GUILESS_MAIN(HttpTransferTest)
#include "tst_http_transfer.moc"
