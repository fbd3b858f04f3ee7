#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <functional>

class QIODevice;
class QNetworkAccessManager;

/// What a transfer may cost at most.
struct HttpLimits
{
    qint64 mostBytes = 64 * 1024; ///< of an answer's body
    int connectMs = 10000;        ///< until the first byte goes or comes
    /// In each such span this many bytes have to go or come, or the transfer is given up; a shorter answer
    /// has to be whole by then. So a server that sends one byte a second holds nobody.
    int paceMs = 20000;
    qint64 leastBytes = 64 * 1024;
};

/// One request. With a content type it is a POST of `upload` or, without one, of `body`; else a GET.
struct HttpRequest
{
    QUrl url;
    QByteArray contentType;
    QByteArray body;
    QIODevice* upload = nullptr; ///< open, seekable; has to outlive the transfer
    qint64 from = 0; ///< a GET asks for the bytes from here on only; the server may send all the same
    HttpLimits limits;
};

/// How a transfer ended. Anything but NoError means that nothing of it may be used.
struct HttpAnswer
{
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorText; ///< for the log
    int status = 0;    ///< of HTTP; 0 without an answer
    QByteArray body;   ///< empty when it went to a sink
};

/// One HTTP exchange that a hostile or broken server can neither hold up nor blow up: bounded in time and
/// size, redirected only where isAllowedRedirect() says so, without cookies, never compressed. Main thread.
class HttpTransfer : public QObject
{
    Q_OBJECT

public:
    /// `network` is the caller's, and outlives the transfer.
    HttpTransfer(QNetworkAccessManager& network, HttpRequest request, QObject* parent = nullptr);
    ~HttpTransfer() override; ///< aborts; nothing is told any more

    /// The body goes to `sink` piece by piece instead; false ends the transfer with an error. `begin` is told
    /// first at which byte of the file the body starts (0, or `from` where the server could) and how many
    /// come, -1 when the server does not say; false ends it as well. To be set before start().
    void setSink(std::function<bool(qint64 from, qint64 size)> begin,
                 std::function<bool(const QByteArray& piece)> sink);

    /// Ends with finished(), once and never from inside this call. An address that is not allowed fails.
    void start();
    /// Ends with finished() and OperationCanceledError.
    void cancel();

signals:
    void progress(qint64 bytes, qint64 of); ///< of the upload, then of the answer; `of` is -1 when unknown
    void finished(HttpAnswer answer);
};
