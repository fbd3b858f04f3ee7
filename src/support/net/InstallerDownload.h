#pragma once

#include "support/net/HttpTransfer.h"
#include "support/net/VersionAnswer.h"

#include <QCryptographicHash>
#include <QFile>
#include <memory>

/// Fetches one installer into a folder of its own, where it goes on with the part that an earlier download
/// left, and gives it its name only when it is the file that the maker has signed. Files of other versions
/// are removed. Main thread; what is there already is hashed in slices between events.
class InstallerDownload : public QObject
{
    Q_OBJECT

public:
    enum class Failure {
        Network, ///< the part stays, for the next time
        Disk,    ///< full, or not to be written
        Content, ///< not the signed file; removed
    };

    /// `network` is the caller's, and outlives this.
    InstallerDownload(QNetworkAccessManager& network, InstallerInfo installer, const QString& folder,
                      QObject* parent = nullptr);

    /// Ends with downloaded() or failed(), once and never from inside this call.
    void start();
    /// Ends it at once and without a word; the part stays.
    void cancel();

signals:
    void progress(qint64 bytes, qint64 of);
    void downloaded(QString path);
    void failed(InstallerDownload::Failure failure);

private:
    void prepare();
    void removeOthers() const;
    void openAndHash(const QString& path);
    void hashSlice();
    void fetch();
    bool beginBody(qint64 from, qint64 size);
    bool takePiece(const QByteArray& piece);
    void finishFetch(const HttpAnswer& answer);
    void conclude();
    void fail(Failure failure, const QString& reason);
    void tellProgress();

    QNetworkAccessManager& m_network;
    const InstallerInfo m_installer;
    const QString m_path; ///< of the whole installer
    const QString m_partPath;
    QFile m_file; ///< one of the two
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    std::unique_ptr<HttpTransfer> m_transfer; ///< once something is fetched
    std::optional<Failure> m_refusal;         ///< why the sink ended the transfer
    qint64 m_toldBytes = -1;
    bool m_isOver = false;
};
