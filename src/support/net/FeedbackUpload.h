#pragma once

#include <QFile>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QUrl>

class HttpTransfer;
class QNetworkAccessManager;

/// Sends one feedback archive to the service, once: a second try might deliver it twice. Main thread.
class FeedbackUpload : public QObject
{
    Q_OBJECT

public:
    /// `network` is the caller's, and outlives the upload.
    FeedbackUpload(QNetworkAccessManager& network, const QUrl& address, const QString& archive,
                   QObject* parent = nullptr);
    ~FeedbackUpload() override; ///< aborts; nothing is told any more

    /// Ends with finished(), once and never from inside this call. An archive that is not there or cannot be
    /// read gives ContentNotFoundError, any answer but the service's word that it has it UnknownContentError.
    void start();
    /// Ends with finished() and OperationCanceledError; nothing before start() and after the end.
    void cancel();

signals:
    void progress(qint64 bytes, qint64 of); ///< of the archive
    void finished(QNetworkReply::NetworkError error);

private:
    QNetworkAccessManager& m_network;
    const QUrl m_address;
    QFile m_archive;
    QPointer<HttpTransfer> m_transfer;
    qint64 m_sent = 0;
};
