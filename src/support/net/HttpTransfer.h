#pragma once

#include <QBuffer>
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
    /// Whether the answer has to tell its length. One that does not, or comes in chunks, passes for whole
    /// where it is cut: only for what shows that by itself, as a JSON object does.
    bool needsLength = true;
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

Q_DECLARE_METATYPE(HttpAnswer)

/// One HTTP exchange that a hostile or broken server can neither hold up nor blow up: bounded in time and
/// size, redirected only where isAllowedRedirect() says so, without cookies, never compressed. No answer that
/// was cut passes for a whole one, unless the request does without a length. A POST is sent once. Main
/// thread. May be deleted at any time, also by what it calls.
class HttpTransfer : public QObject
{
    Q_OBJECT

public:
    /// `network` is the caller's, and outlives the transfer.
    HttpTransfer(QNetworkAccessManager& network, HttpRequest request, QObject* parent = nullptr);
    ~HttpTransfer() override; ///< aborts; nothing is told any more

    /// The body goes to `sink` piece by piece instead; false ends the transfer with an error. `begin` is told
    /// first at which byte of the file the body starts (0, or `from` where the server could) and how many
    /// come (-1: untold); false ends it as well. To be set before start().
    void setSink(std::function<bool(qint64 from, qint64 size)> begin,
                 std::function<bool(const QByteArray& piece)> sink);

    /// Ends with finished(), once and always from the event loop. An address that is not allowed fails.
    void start();
    /// Ends with finished() and OperationCanceledError, from the event loop as well.
    void cancel();

signals:
    void progress(qint64 bytes, qint64 of); ///< of the upload, then of the answer; -1: untold
    void finished(HttpAnswer answer);

private:
    enum class Phase { New, Connecting, Running, Over };

    void ask(const QUrl& url);
    void listenTo(QNetworkReply* reply);
    void dropReply();
    void countUpload(qint64 sent, qint64 of);
    void countBytes(qint64 bytes);
    void checkPace();
    void readHead();
    void followRedirect();
    bool readLength();
    bool readRange();
    void readBody();
    void readEnd();
    void end(QNetworkReply::NetworkError error, const QString& text);

    QPointer<QNetworkAccessManager> m_network;
    HttpRequest m_request;
    QBuffer m_body;
    std::function<bool(qint64, qint64)> m_begin;
    std::function<bool(const QByteArray&)> m_sink;
    Phase m_phase = Phase::New;
    QPointer<QNetworkReply> m_reply;
    QTimer m_deadline; ///< of the connection, then of a span of the pace
    qint64 m_spanBytes = 0;
    qint64 m_sent = 0;
    int m_redirects = 0;
    bool m_hasHead = false;
    qint64 m_start = 0;
    qint64 m_size = -1; ///< as it was told
    qint64 m_received = 0;
    QString m_tlsErrors;
    HttpAnswer m_answer;
};
