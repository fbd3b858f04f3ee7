#include "OnlineServer.h"

#include "ServerConnection.h"
#include "SigningKey.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QJsonDocument>
#include <QMap>
#include <QSslSocket>
#include <QTcpServer>
#include <QUrlQuery>

#include <algorithm>
#include <functional>

namespace {

/// Hands every connection over before its socket is made.
class Listener : public QTcpServer
{
public:
    std::function<void(qintptr)> onConnection;

protected:
    void incomingConnection(qintptr handle) override { onConnection(handle); }
};

struct Fault
{
    QByteArray path;
    ServerFault fault;
    int times;
};

ServerAnswer jsonAnswer(const QByteArray& body)
{
    return {200, "application/json", body, {}};
}

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray withSlash(const QString& path)
{
    return path.startsWith(u'/') ? path.toUtf8() : '/' + path.toUtf8();
}

/// As the files are kept: without the query, and decoded.
QString plainPath(const QByteArray& target)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(target.split('?').first()));
}

} // namespace

struct OnlineServer::Private
{
    using Answerer = ServerAnswer (Private::*)(const ServerRequest&);

    explicit Private(OnlineServer* server)
        : q(server)
    {
    }

    void onConnection(qintptr handle);
    void onRequest(ServerConnection* connection, const ServerRequest& request, int refusal);
    ServerAnswer answer(const ServerRequest& request);
    ServerAnswer versionAnswer(const ServerRequest& request);
    ServerAnswer advertisementAnswer(const ServerRequest& request);
    ServerAnswer feedbackAnswer(const ServerRequest& request);
    ServerAnswer usageAnswer(const ServerRequest& request);
    ServerFault takeFault(const QByteArray& path);

    OnlineServer* q;
    SigningKey key;
    bool isSignatureWrong = false;
    bool canResume = true;
    QJsonObject version;
    QJsonObject installer; ///< its members of the version answer
    QJsonObject advertisement{{"enable", 0}, {"vertion", 0}};
    QMap<QString, ServerAnswer> files;
    QMap<QString, QByteArray> rawAnswers;
    QList<Fault> faults; ///< the last one first
    QList<ServerRequest> requests;
    int connections = 0;
    QSslCertificate certificate;
    QSslKey certificateKey;
    Listener listener; ///< holds the connections, and so goes first
};

OnlineServer::OnlineServer(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
    d->listener.onConnection = [this](qintptr handle) { d->onConnection(handle); };
}

OnlineServer::~OnlineServer() = default;

void OnlineServer::setCertificate(const QSslCertificate& certificate, const QSslKey& key)
{
    d->certificate = certificate;
    d->certificateKey = key;
}

bool OnlineServer::listen(quint16 port)
{
    return d->listener.listen(QHostAddress::LocalHost, port);
}

QUrl OnlineServer::address() const
{
    return QUrl(QStringLiteral("%1://127.0.0.1:%2")
                    .arg(d->certificate.isNull() ? QLatin1String("http") : QLatin1String("https"))
                    .arg(d->listener.serverPort()));
}

void OnlineServer::close()
{
    d->listener.close();
    qDeleteAll(d->listener.findChildren<ServerConnection*>());
}

void OnlineServer::setKey(const SigningKey& key)
{
    d->key = key;
}

QByteArray OnlineServer::publicKey() const
{
    return d->key.publicKey();
}

void OnlineServer::setVersion(const QJsonObject& version)
{
    d->version = version;
}

QJsonObject OnlineServer::version() const
{
    QJsonObject version = d->installer;
    for (auto it = d->version.begin(); it != d->version.end(); ++it)
        version[it.key()] = it.value();
    return version;
}

QByteArray OnlineServer::signedAnswer(const QByteArray& text) const
{
    QByteArray signature = d->key.signature(text);
    if (d->isSignatureWrong)
        signature[0] = char(signature[0] ^ 1);
    return compact(
        {{"signed", QString::fromUtf8(text)}, {"signature", QString::fromLatin1(signature.toBase64())}});
}

void OnlineServer::setInstaller(const QString& file, const QByteArray& bytes)
{
    const QString name = QFileInfo(file).fileName();
    setFile("/download/" + name, bytes, "application/octet-stream");
    const QByteArray sum = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    d->installer = {{"file", file},
                    {"url", QString::fromLatin1("download/" + QUrl::toPercentEncoding(name))},
                    {"size", bytes.size()},
                    {"sha256", QString::fromLatin1(sum.toHex())}};
}

void OnlineServer::setAdvertisement(const QJsonObject& advertisement)
{
    d->advertisement = advertisement;
}

void OnlineServer::setFile(const QString& path, const QByteArray& bytes, const QByteArray& contentType)
{
    d->files[QString::fromUtf8(withSlash(path))] = {200, contentType, bytes, {}};
}

void OnlineServer::setRawAnswer(const QString& path, const QByteArray& body)
{
    d->rawAnswers[QString::fromUtf8(withSlash(path))] = body;
}

void OnlineServer::setSignatureWrong(bool isWrong)
{
    d->isSignatureWrong = isWrong;
}

void OnlineServer::setCanResume(bool canResume)
{
    d->canResume = canResume;
}

void OnlineServer::setFault(const QString& path, ServerFault fault, int times)
{
    d->faults.prepend({withSlash(path), fault, times});
}

QList<ServerRequest> OnlineServer::requests() const
{
    return d->requests;
}

int OnlineServer::requestCount(const QString& path) const
{
    const QByteArray begin = withSlash(path);
    return int(std::count_if(d->requests.begin(), d->requests.end(), [&begin](const ServerRequest& request) {
        return request.path.startsWith(begin);
    }));
}

int OnlineServer::connectionCount() const
{
    return d->connections;
}

void OnlineServer::Private::onConnection(qintptr handle)
{
    ++connections;
    QTcpSocket* socket = nullptr;
    if (certificate.isNull()) {
        socket = new QTcpSocket;
        socket->setSocketDescriptor(handle);
    } else {
        auto* const tls = new QSslSocket;
        tls->setSocketDescriptor(handle);
        tls->setLocalCertificate(certificate);
        tls->setPrivateKey(certificateKey);
        tls->setPeerVerifyMode(QSslSocket::VerifyNone);
        tls->startServerEncryption();
        socket = tls;
    }
    auto* const connection = new ServerConnection(socket, &listener);
    QObject::connect(connection, &ServerConnection::requested, q,
                     [this, connection](const ServerRequest& request, int refusal) {
                         onRequest(connection, request, refusal);
                     });
}

void OnlineServer::Private::onRequest(ServerConnection* connection, const ServerRequest& request, int refusal)
{
    requests += request;
    emit q->requested(request.path);
    const ServerFault fault = takeFault(request.path);
    const bool isError = fault == ServerFault::ServerError; // nothing is taken then
    const ServerAnswer reply =
        refusal != 0 || isError ? plainAnswer(isError ? 500 : refusal) : answer(request);
    connection->send(delivery(reply, fault, q->redirectTo));
    emit q->answered(request.method, request.path, reply.status, reply.body.size());
}

ServerAnswer OnlineServer::Private::answer(const ServerRequest& request)
{
    struct Route
    {
        QByteArray method;
        QByteArray contentType;
        Answerer answer;
    };
    static const QMap<QString, Route> routes{
        {"/app/version", {"GET", {}, &Private::versionAnswer}},
        {"/app/get_advertisement_info.php", {"POST", "application/json", &Private::advertisementAnswer}},
        {"/app/feedback", {"POST", "application/zip", &Private::feedbackAnswer}},
        {"/app/usage", {"POST", "application/json", &Private::usageAnswer}},
    };
    const QString path = plainPath(request.path);
    if (rawAnswers.contains(path))
        return jsonAnswer(rawAnswers[path]);
    const auto route = routes.find(path);
    if (route == routes.end()) {
        if (!files.contains(path))
            return plainAnswer(404);
        if (request.method != "GET")
            return plainAnswer(405);
        return canResume ? rangeAnswer(files[path], request.headers.value("range")) : files[path];
    }
    if (request.method != route->method)
        return plainAnswer(405);
    if (!route->contentType.isEmpty() && request.headers.value("content-type") != route->contentType)
        return plainAnswer(415);
    return (this->*route->answer)(request);
}

ServerAnswer OnlineServer::Private::versionAnswer(const ServerRequest& request)
{
    if (version.isEmpty())
        return plainAnswer(404);
    const QUrlQuery question(QUrl::fromEncoded(request.path).query());
    QJsonObject text{{"product", "Lumivar"}};
    for (const char* member : {"system", "arch"})
        text[QLatin1String(member)] = question.queryItemValue(QLatin1String(member));
    const QJsonObject given = q->version();
    for (auto it = given.begin(); it != given.end(); ++it)
        text[it.key()] = it.value();
    return jsonAnswer(q->signedAnswer(compact(text)));
}

ServerAnswer OnlineServer::Private::advertisementAnswer(const ServerRequest& request)
{
    const QJsonObject question = QJsonDocument::fromJson(request.body).object();
    if (!question["var"].isString() || !question["app_name"].isString())
        return plainAnswer(400);
    return jsonAnswer(compact(advertisement));
}

ServerAnswer OnlineServer::Private::feedbackAnswer(const ServerRequest& request)
{
    emit q->feedbackReceived(request.body);
    return jsonAnswer(compact({{"received", true}}));
}

ServerAnswer OnlineServer::Private::usageAnswer(const ServerRequest& request)
{
    return plainAnswer(QJsonDocument::fromJson(request.body).isObject() ? 200 : 400);
}

ServerFault OnlineServer::Private::takeFault(const QByteArray& path)
{
    const auto fault = std::find_if(faults.begin(), faults.end(), [&path](const Fault& candidate) {
        return candidate.times != 0 && path.startsWith(candidate.path);
    });
    if (fault == faults.end())
        return ServerFault::None;
    if (fault->times > 0)
        --fault->times;
    return fault->fault;
}
