#pragma once

#include "support/net/ProductSettings.h"

#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

class FeedbackManager;

/// The client of the update and feedback service. Without a service address nothing is ever sent, and no
/// network object is made. docs/online.md tells the wire. Main thread. Once the program is about to quit, no
/// version and no download is told of any more.
class NetRCManager : public QObject
{
    Q_OBJECT

public:
    explicit NetRCManager(QObject* parent = nullptr);
    /// With other settings than those of the build, for tests; `version` is the running one.
    NetRCManager(ProductSettings settings, QString version, QObject* parent = nullptr);
    /// What is under way ends without a word. Allowed in whatever it tells.
    ~NetRCManager() override;

    /// Whether there is a service to talk to.
    bool isOnline() const;

    /// Asks for the latest version, which is stored as "latestVerion.version" once its signature holds. Tried
    /// a second time after a pause. A failure changes nothing but the log. Nothing while one is under way.
    void checkVersion();
    /// Whether the last good answer named a later version that can be downloaded.
    bool hasInstaller() const;
    /// Downloads the installer of the version that the last good checkVersion() told of, or asks for one
    /// first; goes on where an earlier download ended. Nothing while one is under way.
    void downloadLatestApp();
    /// Without a word: neither a failure nor an installer is told of. What has come is kept for the next
    /// time.
    void cancelDownload();
    /// Sends the archive of `feedback` and calls one of the two, once and never from inside this call;
    /// neither when the manager is gone by then. Not tried again. Without a service, without an archive and
    /// while another one is being sent it fails.
    void sendFeedback(QPointer<FeedbackManager> feedback, std::function<void()> success,
                      std::function<void(QNetworkReply::NetworkError)> failure);
    /// The failure is OperationCanceledError.
    void cancelFeedback();
    /// When the program was started and, at its end, stopped ("yyyyMMddHHmmss", or empty). Sent only when the
    /// user has agreed (ConfigKeys::kReportUsage).
    void uploadAppOnOffTime(QString openTime, QString closeTime);
    /// Waits for usage reports that are under way, `ms` at most, and lets nothing else of this thread run.
    void finishReports(int ms);

    /// The pause before a second try, for tests.
    void setRetryPause(int ms);

signals:
    void hasNewAppVersion(); ///< the stored one is later than the running one
    void downloadProgress(qint64 bytes, qint64 of);
    void newInstallationFileDownloaded(QString path); ///< checked against the signed answer
    void downloadFailed(QString reason);              ///< for the user's eyes, translated
    void feedbackProgress(qint64 bytes, qint64 of);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
