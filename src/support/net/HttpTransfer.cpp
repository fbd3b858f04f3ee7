#include "support/net/HttpTransfer.h"

#include "support/net/LentDevice.h"
#include "support/net/OnlineAddress.h"

#include <QCoreApplication>
#include <QDebug>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QSslConfiguration>

namespace {

constexpr int kMostRedirects = 5;
constexpr qint64 kBufferBytes = 256 * 1024;

bool isRedirect(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

QNetworkRequest networkRequest(const QUrl& url, const HttpRequest& request)
{
    QNetworkRequest network(url);
    // Followed by hand, so that every step passes the same check and is bounded like the first.
    network.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    network.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    network.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    network.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    network.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    network.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    network.setRawHeader("Accept-Encoding", "identity");
    // A kept connection that the server has closed meanwhile would send a request a second time.
    network.setRawHeader("Connection", "close");
    network.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("Lumivar/") + QCoreApplication::applicationVersion());
    if (!request.contentType.isEmpty())
        network.setHeader(QNetworkRequest::ContentTypeHeader, request.contentType);
    else if (request.from > 0)
        network.setRawHeader("Range", "bytes=" + QByteArray::number(request.from) + '-');
    QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
    tls.setProtocol(QSsl::TlsV1_2OrLater);
    tls.setPeerVerifyMode(QSslSocket::VerifyPeer);
    network.setSslConfiguration(tls);
    return network;
}

} // namespace

HttpTransfer::HttpTransfer(QNetworkAccessManager& network, HttpRequest request, QObject* parent)
    : QObject(parent)
    , m_network(&network)
    , m_request(std::move(request))
{
    m_body.setData(m_request.body);
    m_body.open(QIODevice::ReadOnly);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &HttpTransfer::checkPace);
}

HttpTransfer::~HttpTransfer()
{
    dropReply();
}

void HttpTransfer::setSink(std::function<bool(qint64 from, qint64 size)> begin,
                           std::function<bool(const QByteArray& piece)> sink)
{
    m_begin = std::move(begin);
    m_sink = std::move(sink);
}

void HttpTransfer::start()
{
    if (m_phase == Phase::New)
        ask(m_request.url);
}

void HttpTransfer::cancel()
{
    end(QNetworkReply::OperationCanceledError, QStringLiteral("cancelled"));
}

void HttpTransfer::ask(const QUrl& url)
{
    m_request.url = url;
    if (!isAllowedAddress(url))
        return end(QNetworkReply::ProtocolUnknownError, QStringLiteral("not an address for requests"));
    if (!m_network)
        return end(QNetworkReply::OperationCanceledError, QStringLiteral("the network is gone"));
    m_phase = Phase::Connecting;
    m_deadline.start(m_request.limits.connectMs);
    const QNetworkRequest request = networkRequest(url, m_request);
    if (m_request.contentType.isEmpty()) {
        listenTo(m_network->get(request));
    } else {
        auto* lent = new LentDevice(m_request.upload ? *m_request.upload : m_body);
        listenTo(m_network->post(request, lent));
        lent->setParent(m_reply);
    }
}

void HttpTransfer::listenTo(QNetworkReply* reply)
{
    m_reply = reply;
    m_sent = 0;
    reply->setReadBufferSize(kBufferBytes);
    connect(reply, &QNetworkReply::encrypted, this, [this] { countBytes(0); });
    connect(reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
        for (const QSslError& error : errors)
            m_tlsErrors += u' ' + error.errorString();
    });
    connect(reply, &QNetworkReply::uploadProgress, this, &HttpTransfer::countUpload);
    connect(reply, &QNetworkReply::metaDataChanged, this, &HttpTransfer::readHead);
    connect(reply, &QNetworkReply::readyRead, this, &HttpTransfer::readBody);
    connect(reply, &QNetworkReply::finished, this, &HttpTransfer::readEnd);
    connect(reply, &QObject::destroyed, this,
            [this] { end(QNetworkReply::OperationCanceledError, QStringLiteral("the network is gone")); });
}

void HttpTransfer::dropReply()
{
    m_deadline.stop();
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    if (auto* lent = m_reply->findChild<LentDevice*>())
        lent->takeBack();
    m_reply->abort();
    m_reply->deleteLater(); // one of its signals may have led here
    m_reply = nullptr;
}

void HttpTransfer::countUpload(qint64 sent, qint64 of)
{
    if (sent <= 0)
        return;
    countBytes(qMax<qint64>(0, sent - m_sent));
    m_sent = sent;
    emit progress(sent, of);
}

void HttpTransfer::countBytes(qint64 bytes)
{
    if (m_phase == Phase::Connecting) {
        m_phase = Phase::Running;
        m_spanBytes = 0;
        m_deadline.start(m_request.limits.paceMs);
    }
    m_spanBytes += bytes;
}

void HttpTransfer::checkPace()
{
    if (m_phase == Phase::Connecting)
        return end(QNetworkReply::TimeoutError,
                   QStringLiteral("no answer within %1 ms").arg(m_request.limits.connectMs));
    if (m_spanBytes < m_request.limits.leastBytes)
        return end(
            QNetworkReply::TimeoutError,
            QStringLiteral("only %1 bytes within %2 ms").arg(m_spanBytes).arg(m_request.limits.paceMs));
    m_spanBytes = 0;
    m_deadline.start(m_request.limits.paceMs);
}

void HttpTransfer::readHead()
{
    if (m_hasHead || !m_reply)
        return;
    countBytes(0);
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_answer.status = status;
    if (isRedirect(status))
        return followRedirect();
    if (status >= 400)
        return; // what is unread holds it up at the latest, else it ends with its error
    if (status != 200 && (status != 206 || m_request.from == 0))
        return end(QNetworkReply::ProtocolFailure, QStringLiteral("status %1").arg(status));
    m_hasHead = true;
    const QByteArray encoding = m_reply->rawHeader("Content-Encoding").trimmed().toLower();
    if (!encoding.isEmpty() && encoding != "identity")
        return end(
            QNetworkReply::ProtocolFailure,
            QStringLiteral("compressed, which nobody asked for: %1").arg(QString::fromLatin1(encoding)));
    if (!readLength() || (status == 206 && !readRange()))
        return;
    const QPointer<HttpTransfer> self(this);
    const auto begin = m_begin; // keeps itself alive when it deletes the transfer
    if (begin && !begin(m_start, m_size) && self)
        end(QNetworkReply::OperationCanceledError, QStringLiteral("not wanted by its receiver"));
}

void HttpTransfer::followRedirect()
{
    const QUrl to = m_request.url.resolved(QUrl::fromEncoded(m_reply->rawHeader("Location")));
    const QString step = QStringLiteral("led on to %1").arg(to.toDisplayString());
    // Any other status but these would turn what is sent into a GET, and its loss into a success.
    const bool canKeepPost = m_answer.status == 307 || m_answer.status == 308;
    if (!isAllowedRedirect(m_request.url, to) || (!m_request.contentType.isEmpty() && !canKeepPost)) {
        qWarning().noquote() << "[HttpTransfer]: Refused to be" << step;
        return end(QNetworkReply::InsecureRedirectError, step + QStringLiteral(", which is refused"));
    }
    if (++m_redirects > kMostRedirects)
        return end(QNetworkReply::TooManyRedirectsError, step + QStringLiteral(", once too often"));
    dropReply();
    ask(to);
}

bool HttpTransfer::readLength()
{
    static const QRegularExpression number(QStringLiteral(R"(\A[0-9]{1,18}\z)"));
    const QString length = QString::fromLatin1(m_reply->rawHeader("Content-Length").trimmed());
    if (!m_request.needsLength && !m_reply->hasRawHeader("Content-Length"))
        return true;
    // In chunks an answer is cut where the toolkit takes it for whole.
    if (!number.match(length).hasMatch() || m_reply->hasRawHeader("Transfer-Encoding")) {
        end(QNetworkReply::ProtocolFailure, QStringLiteral("does not tell its length: %1").arg(length));
        return false;
    }
    m_size = length.toLongLong();
    if (m_size > m_request.limits.mostBytes) {
        end(QNetworkReply::UnknownContentError,
            QStringLiteral("%1 bytes are more than %2").arg(m_size).arg(m_request.limits.mostBytes));
        return false;
    }
    return true;
}

bool HttpTransfer::readRange()
{
    static const QRegularExpression range(
        QStringLiteral(R"(\Abytes ([0-9]{1,18})-([0-9]{1,18})/([0-9]{1,18}|\*)\z)"));
    const QString header = QString::fromLatin1(m_reply->rawHeader("Content-Range").trimmed());
    const auto parts = range.match(header);
    const qint64 first = parts.captured(1).toLongLong();
    const qint64 behind = parts.captured(2).toLongLong() + 1;
    const bool isToTheEnd = parts.captured(3) == u'*' || parts.captured(3).toLongLong() == behind;
    if (!parts.hasMatch() || first != m_request.from || behind <= first || !isToTheEnd ||
        m_size != behind - first) {
        end(QNetworkReply::ProtocolFailure, QStringLiteral("not the range asked for: %1").arg(header));
        return false;
    }
    m_start = first;
    return true;
}

void HttpTransfer::readBody()
{
    const QPointer<HttpTransfer> self(this);
    const auto sink = m_sink;
    readHead();
    while (self && m_reply && m_hasHead) {
        const QByteArray piece = m_reply->read(kBufferBytes);
        if (piece.isEmpty())
            return;
        m_received += piece.size();
        countBytes(piece.size());
        const qint64 most = m_size < 0 ? m_request.limits.mostBytes : m_size;
        if (m_received > most)
            return end(QNetworkReply::UnknownContentError, QStringLiteral("more than %1 bytes").arg(most));
        if (!sink) {
            m_answer.body += piece;
        } else if (!sink(piece)) {
            if (self)
                end(QNetworkReply::OperationCanceledError, QStringLiteral("not taken by its receiver"));
            return;
        }
        if (self && m_reply)
            emit progress(m_received, m_size);
    }
}

void HttpTransfer::readEnd()
{
    const QPointer<HttpTransfer> self(this);
    const QPointer<QNetworkReply> reply = m_reply;
    const QNetworkReply::NetworkError error = reply->error();
    if (m_hasHead || error == QNetworkReply::NoError)
        readBody(); // what came before a cut as well: a download can go on from there
    if (!self || !reply || m_reply != reply)
        return;
    if (error != QNetworkReply::NoError)
        return end(error, reply->errorString() + m_tlsErrors);
    if (m_size >= 0 && m_received != m_size)
        return end(QNetworkReply::RemoteHostClosedError,
                   QStringLiteral("cut after %1 of %2 bytes").arg(m_received).arg(m_size));
    end(QNetworkReply::NoError, {});
}

void HttpTransfer::end(QNetworkReply::NetworkError error, const QString& text)
{
    if (m_phase == Phase::Over)
        return;
    m_phase = Phase::Over;
    dropReply();
    m_answer.error = error;
    if (error != QNetworkReply::NoError) {
        m_answer.errorText = m_request.url.toDisplayString() + QStringLiteral(": ") + text;
        m_answer.body.clear();
    }
    QMetaObject::invokeMethod(
        this, [this] { emit finished(m_answer); }, Qt::QueuedConnection);
}
