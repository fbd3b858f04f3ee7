#pragma once

#include "ServerFault.h"
#include "ServerRequest.h"

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QUrl>

#include <memory>

class SigningKey;

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
    /// Hangs up on everybody and is not there any more.
    void close();

    /// Signs by another key than the one made at construction.
    void setKey(const SigningKey& key);
    /// Ed25519, 32 bytes.
    QByteArray publicKey() const;

    /// The version answer's fields, whatever the test wants; none is answered until there is one. Those that
    /// are absent come from the question (`system`, `arch`), from setInstaller() (`file`, `url`, `sha256`,
    /// `size`), or are right (`product`).
    void setVersion(const QJsonObject& version);
    QJsonObject version() const;
    /// Any text with its signature, for setRawAnswer().
    QByteArray signedAnswer(const QByteArray& text) const;
    /// Serves these bytes as /download/FILE (its plain name) and names them in the version answer.
    void setInstaller(const QString& file, const QByteArray& bytes);
    /// At first there is none to show.
    void setAdvertisement(const QJsonObject& advertisement);
    /// Any other file, by its path.
    void setFile(const QString& path, const QByteArray& bytes, const QByteArray& contentType);
    /// Answers these bytes as the body of `path` whatever it would be.
    void setRawAnswer(const QString& path, const QByteArray& body);
    void setSignatureWrong(bool isWrong);
    void setCanResume(bool canResume); ///< whether Range is honoured; true at first

    /// For requests whose path begins so; `times` of them, -1 for all. The fault set last counts.
    void setFault(const QString& path, ServerFault fault, int times = -1);
    QUrl redirectTo;

    /// All so far, refused ones as well.
    QList<ServerRequest> requests() const;
    /// Of those whose path begins so.
    int requestCount(const QString& path) const;
    /// With those that said nothing.
    int connectionCount() const;

signals:
    void requested(QByteArray path); ///< before it is answered
    /// The answer's whole body has so many bytes; what a fault makes of it is not told.
    void answered(QByteArray method, QByteArray path, int status, qint64 bytes);
    void feedbackReceived(QByteArray archive);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
