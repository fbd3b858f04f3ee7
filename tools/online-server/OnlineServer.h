#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QUrl>
#include <memory>

/// What a server may do wrong with an answer's body, or instead of one.
enum class ServerFault {
    None,
    SilentAfterConnect, ///< takes the request and says nothing
    OneByteASecond,
    Endless,        ///< announces 10 GB, or nothing, and never stops
    WrongLength,    ///< announces more than it sends, then closes
    CutInTheMiddle, ///< half of the body, then closes
    BrokenGzip,     ///< says that the body is compressed, which it is not
    HtmlPage,       ///< a page of HTML with status 200, as a hotel's network answers
    ServerError,    ///< status 500
    Redirect,       ///< to `redirectTo`
};

/// One request as it arrived.
struct ServerRequest
{
    QByteArray method;
    QByteArray path;                      ///< with its query
    QMap<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;
};

/// A small real server of the online service on the loopback address, as docs/online.md has it: for tests,
/// the demo and whoever writes a bigger one. Speaks HTTP/1.1, one request a connection. Lives in the thread
/// that made it.
class OnlineServer : public QObject
{
    Q_OBJECT

public:
    explicit OnlineServer(QObject* parent = nullptr);
    ~OnlineServer() override;

    /// Speaks TLS from the next listen() on.
    void setCertificate(const QSslCertificate& certificate, const QSslKey& key);
    /// On a free port, or the one given; false when that is taken.
    bool listen(quint16 port = 0);
    /// "http://127.0.0.1:PORT", or with https.
    QUrl address() const;
    /// Ed25519 key made at construction, 32 bytes.
    QByteArray publicKey() const;

    /// The version answer's fields (`file`, `url`, `sha256`, `size` are filled in by setInstaller());
    /// whatever the test wants.
    void setVersion(const QJsonObject& version);
    QJsonObject version() const;
    /// Serves these bytes below /download/ and names them in the version answer.
    void setInstaller(const QString& file, const QByteArray& bytes);
    void setAdvertisement(const QJsonObject& advertisement);
    /// Any other file, by its path.
    void setFile(const QString& path, const QByteArray& bytes, const QByteArray& contentType);
    /// Answers these bytes as the body of `path` whatever it would be.
    void setRawAnswer(const QString& path, const QByteArray& body);
    void setSignatureWrong(bool isWrong);
    void setCanResume(bool canResume); ///< whether Range is honoured; true at first

    /// For requests whose path begins so; `times` of them, -1 for all.
    void setFault(const QString& path, ServerFault fault, int times = -1);
    QUrl redirectTo;

    /// All so far, refused ones as well, and connections that said nothing.
    QList<ServerRequest> requests() const;
    int requestCount(const QString& path) const;
    int connectionCount() const;

signals:
    void requested(QByteArray path);
    void feedbackReceived(QByteArray archive);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
