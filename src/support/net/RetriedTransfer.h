#pragma once

#include "support/net/HttpTransfer.h"

#include <memory>

/// An HttpTransfer that is tried once more, after a pause, when it failed. Main thread.
class RetriedTransfer : public QObject
{
    Q_OBJECT

public:
    /// `network` is the caller's, and outlives this.
    RetriedTransfer(QNetworkAccessManager& network, HttpRequest request, int pauseMs,
                    QObject* parent = nullptr);

    /// Ends with finished(), once and never from inside this call.
    void start();

signals:
    void finished(HttpAnswer answer);

private:
    void attempt(bool isLast);

    QNetworkAccessManager& m_network;
    const HttpRequest m_request;
    const int m_pauseMs;
    std::unique_ptr<HttpTransfer> m_transfer;
};
