#include "support/net/NetRCManager.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/FeedbackManager.h"
#include "support/net/FeedbackUpload.h"
#include "support/net/InstallerDownload.h"
#include "support/net/OnlineAddress.h"
#include "support/net/RetriedTransfer.h"
#include "support/net/SignedAnswer.h"
#include "support/net/UsageReports.h"
#include "support/net/VersionAnswer.h"
#include "support/net/compareVersion.h"
#include "support/net/discard.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QUrlQuery>

namespace {

constexpr int kRetryPauseMs = 5000;

} // namespace

struct NetRCManager::Private
{
    Private(NetRCManager* owner, ProductSettings productSettings, QString runningVersion)
        : q(owner)
        , settings(std::move(productSettings))
        , version(std::move(runningVersion))
    {
    }

    QNetworkAccessManager& useNetwork();
    void takeVersion(const HttpAnswer& answer);
    bool readVersion(const HttpAnswer& answer);
    void startDownload();
    void tellFailure(InstallerDownload::Failure failure);
    void finishFeedback(QNetworkReply::NetworkError error);

    NetRCManager* const q;
    const ProductSettings settings;
    const QString version; ///< the running one
    int retryPauseMs = kRetryPauseMs;
    std::unique_ptr<QNetworkAccessManager> network; ///< from the first request on
    std::unique_ptr<RetriedTransfer> versionCheck;  ///< while it is under way, like the next two
    std::unique_ptr<InstallerDownload> download;
    std::unique_ptr<FeedbackUpload> feedback;
    std::function<void()> feedbackSuccess;
    std::function<void(QNetworkReply::NetworkError)> feedbackFailure;
    std::unique_ptr<UsageReports> usage;    ///< from the first report on
    std::optional<InstallerInfo> installer; ///< of a later version than the running one
    bool isDownloadWanted = false;          ///< as soon as the check has told of an installer
};

NetRCManager::NetRCManager(QObject* parent)
    : NetRCManager(productSettings(), QCoreApplication::applicationVersion(), parent)
{
}

NetRCManager::NetRCManager(ProductSettings settings, QString version, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, std::move(settings), std::move(version)))
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
        discard(d->versionCheck);
        cancelDownload();
    });
}

NetRCManager::~NetRCManager() = default;

bool NetRCManager::isOnline() const
{
    return !d->settings.service.isEmpty();
}

QNetworkAccessManager& NetRCManager::Private::useNetwork()
{
    if (!network)
        network = std::make_unique<QNetworkAccessManager>();
    return *network;
}

bool NetRCManager::hasInstaller() const
{
    return d->installer.has_value();
}

void NetRCManager::checkVersion()
{
    if (!isOnline() || d->settings.serviceKey.isEmpty() || d->versionCheck)
        return;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("system"), VersionAnswer::system());
    query.addQueryItem(QStringLiteral("arch"), VersionAnswer::arch());
    query.addQueryItem(QStringLiteral("version"), d->version);
    HttpRequest request;
    request.url = serviceUrl(d->settings.service, QStringLiteral("app/version"));
    request.url.setQuery(query);
    request.needsLength = false;
    d->versionCheck = std::make_unique<RetriedTransfer>(d->useNetwork(), request, d->retryPauseMs);
    connect(d->versionCheck.get(), &RetriedTransfer::finished, this,
            [this](const HttpAnswer& answer) { d->takeVersion(answer); });
    d->versionCheck->start();
}

void NetRCManager::Private::takeVersion(const HttpAnswer& answer)
{
    discard(versionCheck);
    const bool isNewer = readVersion(answer);
    const bool isWanted = std::exchange(isDownloadWanted, false);
    if (isWanted && installer)
        startDownload();
    // One of the two, and last of all: whoever hears may be the end of it.
    if (isWanted && !installer)
        tellFailure(InstallerDownload::Failure::Network);
    else if (isNewer)
        emit q->hasNewAppVersion();
}

/// Whether it tells of a later version; nothing has changed unless every bit of it is good.
bool NetRCManager::Private::readVersion(const HttpAnswer& answer)
{
    QString error = answer.errorText;
    std::optional<QJsonObject> object;
    if (answer.error == QNetworkReply::NoError)
        object = signedAnswer(answer.body, settings.serviceKey, &error);
    std::optional<VersionAnswer> latest;
    if (object)
        latest = VersionAnswer::fromJson(*object, settings.service, &error);
    if (!latest) {
        qWarning() << "[NetRCManager]: The latest version is not known:" << error;
        return false;
    }
    qInfo() << "[NetRCManager]: The latest version is" << latest->version;
    ConfigurationManager::instance()->setGlobalValue(QLatin1String(ConfigKeys::kLatestVersion.key),
                                                     latest->version);
    const bool isNewer = !compareVersion(version, latest->version);
    installer = isNewer ? latest->installer : std::nullopt;
    return isNewer;
}

void NetRCManager::downloadLatestApp()
{
    if (!isOnline() || d->download || d->isDownloadWanted)
        return;
    if (d->installer) {
        d->startDownload();
    } else if (d->settings.serviceKey.isEmpty()) {
        d->tellFailure(InstallerDownload::Failure::Network);
    } else { // known from an earlier run of the program only
        d->isDownloadWanted = true;
        checkVersion();
    }
}

void NetRCManager::Private::startDownload()
{
    const QString folder = ConfigurationManager::instance()->resourcesPath() + QLatin1String("/updates");
    download = std::make_unique<InstallerDownload>(useNetwork(), *installer, folder);
    // Queued: whoever hears may be the end of this manager, and the toolkit is in the middle of its reply.
    const auto tellProgress = [this](qint64 bytes, qint64 of) {
        if (download)
            emit q->downloadProgress(bytes, of);
    };
    connect(download.get(), &InstallerDownload::progress, q, tellProgress, Qt::QueuedConnection);
    connect(download.get(), &InstallerDownload::downloaded, q, [this](const QString& path) {
        discard(download);
        emit q->newInstallationFileDownloaded(path);
    });
    connect(download.get(), &InstallerDownload::failed, q, [this](InstallerDownload::Failure failure) {
        discard(download);
        tellFailure(failure);
    });
    download->start();
}

void NetRCManager::Private::tellFailure(InstallerDownload::Failure failure)
{
    switch (failure) {
    case InstallerDownload::Failure::Network:
        emit q->downloadFailed(NetRCManager::tr("下载未完成，请检查网络后重试"));
        return;
    case InstallerDownload::Failure::Disk:
        emit q->downloadFailed(NetRCManager::tr("无法保存下载的文件，请检查磁盘空间"));
        return;
    case InstallerDownload::Failure::Content:
        emit q->downloadFailed(NetRCManager::tr("下载的文件不正确，已将其删除"));
        return;
    }
}

void NetRCManager::cancelDownload()
{
    d->isDownloadWanted = false;
    if (d->download)
        d->download->cancel();
    discard(d->download);
}

void NetRCManager::sendFeedback(QPointer<FeedbackManager> feedback, std::function<void()> success,
                                std::function<void(QNetworkReply::NetworkError)> failure)
{
    if (!isOnline() || d->feedback) {
        const auto error =
            isOnline() ? QNetworkReply::ContentConflictError : QNetworkReply::HostNotFoundError;
        qWarning() << "[NetRCManager]: Nowhere to send feedback, or there is some under way:" << error;
        QMetaObject::invokeMethod(
            this, [failure = std::move(failure), error] { failure(error); }, Qt::QueuedConnection);
        return;
    }
    d->feedbackSuccess = std::move(success);
    d->feedbackFailure = std::move(failure);
    const QUrl address = serviceUrl(d->settings.service, QStringLiteral("app/feedback"));
    const QString archive = feedback ? feedback->feedbackFile() : QString(); // the upload judges it
    d->feedback = std::make_unique<FeedbackUpload>(d->useNetwork(), address, archive);
    const auto tellProgress = [this](qint64 bytes, qint64 of) {
        if (d->feedback)
            emit feedbackProgress(bytes, of);
    };
    connect(d->feedback.get(), &FeedbackUpload::progress, this, tellProgress, Qt::QueuedConnection);
    connect(d->feedback.get(), &FeedbackUpload::finished, this,
            [this](QNetworkReply::NetworkError error) { d->finishFeedback(error); });
    d->feedback->start();
}

/// What is called may send again, or be the end of this manager.
void NetRCManager::Private::finishFeedback(QNetworkReply::NetworkError error)
{
    discard(feedback);
    const auto success = std::exchange(feedbackSuccess, nullptr);
    const auto failure = std::exchange(feedbackFailure, nullptr);
    if (error == QNetworkReply::NoError)
        success();
    else
        failure(error);
}

void NetRCManager::cancelFeedback()
{
    if (d->feedback)
        d->feedback->cancel();
}

void NetRCManager::uploadAppOnOffTime(QString openTime, QString closeTime)
{
    const bool hasAgreed = ConfigurationManager::instance()
                               ->appConfig(QLatin1String(ConfigKeys::kReportUsage.key))
                               .toBool(ConfigKeys::kReportUsage.fallback);
    if (!isOnline() || !hasAgreed)
        return;
    const QJsonObject report{{"version", d->version}, {"open", openTime}, {"close", closeTime}};
    if (!d->usage)
        d->usage = std::make_unique<UsageReports>();
    d->usage->send(serviceUrl(d->settings.service, QStringLiteral("app/usage")),
                   QJsonDocument(report).toJson(QJsonDocument::Compact));
}

void NetRCManager::finishReports(int ms)
{
    if (d->usage)
        d->usage->finish(ms);
}

void NetRCManager::setRetryPause(int ms)
{
    d->retryPauseMs = ms;
}
