#include "support/net/FeedbackUpload.h"

#include "support/net/HttpTransfer.h"

#include <QDebug>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

namespace {

QNetworkReply::NetworkError meaning(const HttpAnswer& answer)
{
    if (answer.error != QNetworkReply::NoError)
        return answer.error;
    const QJsonDocument document = QJsonDocument::fromJson(answer.body);
    const bool isReceived = document.object().value(QLatin1String("received")) == QJsonValue(true);
    return isReceived ? QNetworkReply::NoError : QNetworkReply::UnknownContentError;
}

} // namespace

FeedbackUpload::FeedbackUpload(QNetworkAccessManager& network, const QUrl& address, const QString& archive,
                               QObject* parent)
    : QObject(parent)
    , m_network(network)
    , m_address(address)
    , m_archive(archive)
{
}

FeedbackUpload::~FeedbackUpload()
{
    delete m_transfer; // before the file that it reads
}

void FeedbackUpload::start()
{
    if (m_transfer || m_archive.isOpen())
        return;
    if (!QFileInfo(m_archive).isFile() || !m_archive.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << "[FeedbackUpload]: cannot read" << m_archive.fileName();
        QTimer::singleShot(0, this, [this] { emit finished(QNetworkReply::ContentNotFoundError); });
        return;
    }
    HttpRequest request;
    request.url = m_address;
    request.contentType = "application/zip";
    request.upload = &m_archive;
    request.needsLength = false;
    m_transfer = new HttpTransfer(m_network, request, this);
    connect(m_transfer, &HttpTransfer::progress, this, [this](qint64 bytes, qint64 of) {
        if (of != m_archive.size() || bytes <= m_sent)
            return; // the answer's
        m_sent = bytes;
        emit progress(bytes, of);
    });
    connect(m_transfer, &HttpTransfer::finished, this, [this](const HttpAnswer& answer) {
        m_transfer->deleteLater();
        m_transfer = nullptr;
        const QNetworkReply::NetworkError error = meaning(answer);
        if (error != QNetworkReply::NoError)
            qWarning().noquote() << "[FeedbackUpload]: the feedback was not taken:" << error
                                 << answer.errorText;
        emit finished(error);
    });
    m_transfer->start();
}

void FeedbackUpload::cancel()
{
    if (m_transfer)
        m_transfer->cancel();
}
