#include "support/net/RetriedTransfer.h"

#include <QDebug>

RetriedTransfer::RetriedTransfer(QNetworkAccessManager& network, HttpRequest request, int pauseMs,
                                 QObject* parent)
    : QObject(parent)
    , m_network(network)
    , m_request(std::move(request))
    , m_pauseMs(pauseMs)
{
}

void RetriedTransfer::start()
{
    attempt(false);
}

void RetriedTransfer::attempt(bool isLast)
{
    m_transfer = std::make_unique<HttpTransfer>(m_network, m_request);
    connect(m_transfer.get(), &HttpTransfer::finished, this, [this, isLast](const HttpAnswer& answer) {
        if (isLast || answer.error == QNetworkReply::NoError) {
            emit finished(answer);
            return;
        }
        qInfo() << "[RetriedTransfer]: Tried once more in" << m_pauseMs << "ms:" << answer.errorText;
        QTimer::singleShot(m_pauseMs, this, [this] { attempt(true); });
    });
    m_transfer->start();
}
