#include "online/ADManager.h"

#include "online/advertisement.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/DataFile.h"
#include "support/net/OnlineAddress.h"
#include "support/net/RetriedTransfer.h"
#include "support/net/discard.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QSaveFile>

namespace {

constexpr int kRetryPauseMs = 5000;
constexpr qint64 kMostPictureBytes = 8 * 1024 * 1024;

std::optional<int> integer(const QJsonValue& value)
{
    const int number = value.toInt(-1);
    return number == value.toInt(0) ? std::optional<int>(number) : std::nullopt;
}

} // namespace

struct ADManager::Private
{
    Private(ADManager* owner, ProductSettings productSettings, const QString& folder)
        : q(owner)
        , settings(std::move(productSettings))
        , resourcesPath(folder)
        , stateFile(folder + QLatin1String("/ad_images/ad.json"))
    {
    }

    void ask(const HttpRequest& request, void (Private::*then)(const HttpAnswer&));
    void requestFinished(const HttpAnswer& answer);
    bool checkNeedUpdate(int serverVersion) const;
    QJsonObject getLocalADStateJsonObj() const;
    void showLocal() const;
    void downloadFile(const QJsonObject& state);
    void saveFile(const HttpAnswer& answer);
    void writeState() const;

    ADManager* const q;
    const ProductSettings settings;
    const QString resourcesPath;
    const QString stateFile;
    int retryPauseMs = kRetryPauseMs;
    std::unique_ptr<QNetworkAccessManager> network; ///< from the first request on
    std::unique_ptr<RetriedTransfer> transfer;      ///< the one that is under way
    QByteArray newState;                            ///< of the picture that is on its way, with the next
    Advertisement coming;
};

ADManager::ADManager(QObject* parent)
    : ADManager(productSettings(), ConfigurationManager::instance()->resourcesPath(), parent)
{
}

ADManager::ADManager(ProductSettings settings, const QString& resourcesPath, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, std::move(settings), resourcesPath))
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [this] { discard(d->transfer); });
}

ADManager::~ADManager() = default;

void ADManager::setRetryPause(int ms)
{
    d->retryPauseMs = ms;
}

void ADManager::requestADInfo()
{
    if (d->settings.service.isEmpty() || d->transfer)
        return;
    const QJsonObject question{{"var", QCoreApplication::applicationVersion()},
                               {"app_name", QFileInfo(QCoreApplication::applicationFilePath()).fileName()}};
    HttpRequest request;
    request.url = serviceUrl(d->settings.service, QStringLiteral("app/get_advertisement_info.php"));
    request.contentType = "application/json";
    request.body = QJsonDocument(question).toJson(QJsonDocument::Compact);
    request.needsLength = false;
    d->ask(request, &Private::requestFinished);
}

void ADManager::Private::ask(const HttpRequest& request, void (Private::*then)(const HttpAnswer&))
{
    if (!network)
        network = std::make_unique<QNetworkAccessManager>();
    transfer = std::make_unique<RetriedTransfer>(*network, request, retryPauseMs);
    connect(transfer.get(), &RetriedTransfer::finished, q, [this, then](const HttpAnswer& answer) {
        discard(transfer);
        (this->*then)(answer);
    });
    transfer->start();
}

void ADManager::Private::requestFinished(const HttpAnswer& answer)
{
    if (answer.error != QNetworkReply::NoError) {
        qWarning() << "***ADManager::requestFinished requestFinished Error:" << answer.error
                   << answer.errorText;
        return;
    }
    qInfo() << "ADManager::requestFinished";
    const QJsonObject state = QJsonDocument::fromJson(answer.body).object();
    const std::optional<int> enable = integer(state["enable"]);
    const std::optional<int> version = integer(state["vertion"]);
    if (!enable || (*enable != 0 && !version)) {
        qWarning() << "ADManager::requestFinished The answer is none:" << answer.body.left(200);
        return;
    }
    qInfo() << "ADManager::requestFinished ad enable:" << *enable;
    if (*enable == 0)
        return;
    if (checkNeedUpdate(*version)) {
        newState = answer.body;
        downloadFile(state);
    } else {
        showLocal();
    }
}

bool ADManager::Private::checkNeedUpdate(int serverVersion) const
{
    const int localVersion = getLocalADStateJsonObj()["vertion"].toInt();
    const bool result = localVersion != serverVersion;
    qDebug() << "ADManager::checkNeedUpdate local:" << localVersion << " , server:" << serverVersion
             << " result:" << result;
    return result;
}

/// The texts of the log name the caller.
QJsonObject ADManager::Private::getLocalADStateJsonObj() const
{
    QString reason;
    const std::optional<QByteArray> bytes = readDataFile(stateFile, &reason);
    if (!bytes) {
        qWarning() << "ADManager::requestFinished Failed to open file." << stateFile << reason;
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError)
        qWarning() << "ADManager::requestFinished " << stateFile
                   << " Failed to parse JSON:" << error.errorString();
    return document.object();
}

/// Files are edited by hand, too: the names in this one are no better than those from the network.
void ADManager::Private::showLocal() const
{
    const QJsonObject state = getLocalADStateJsonObj();
    QString error;
    const std::optional<Advertisement> local = Advertisement::fromJson(state, &error);
    if (!local && !state.isEmpty())
        qWarning() << "[ADManager]: Refused in" << stateFile << error;
    const QString image = resourcesPath + u'/' + (local ? local->fileName : QString());
    const QString href = local ? local->href : QString();
    qInfo() << "ADManager::requestFinished use local ad state:" << image << "ulr:" << href;
    emit q->sendUpadteDone(image, href);
}

void ADManager::Private::downloadFile(const QJsonObject& state)
{
    qInfo() << "ADManager::downloadFiles";
    QString error;
    const std::optional<Advertisement> wanted = Advertisement::fromJson(state, &error);
    if (!wanted || !isAllowedAddress(wanted->imageUrl)) {
        qWarning() << "[ADManager]: Refused:" << (wanted ? state["ad1_image_url"].toString() : error);
        return;
    }
    coming = *wanted;
    HttpRequest request;
    request.url = coming.imageUrl;
    request.limits.mostBytes = kMostPictureBytes;
    ask(request, &Private::saveFile);
}

/// Whatever is wrong, the old picture and its state stay.
void ADManager::Private::saveFile(const HttpAnswer& answer)
{
    const QString path = resourcesPath + u'/' + coming.fileName;
    QString fault = answer.error == QNetworkReply::NoError
                        ? pictureFault(answer.body)
                        : QStringLiteral("%1 %2").arg(answer.error).arg(answer.errorText);
    if (fault.isEmpty()) {
        QDir().mkpath(resourcesPath);
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(answer.body) != answer.body.size() ||
            !file.commit())
            fault = file.errorString();
    }
    if (!fault.isEmpty()) {
        qWarning() << "Failed to save image file." << path << fault;
        return;
    }
    qInfo() << "Download" << path;
    writeState();
    emit q->sendUpadteDone(path, coming.href);
}

void ADManager::Private::writeState() const
{
    const QString folder = QFileInfo(stateFile).path();
    if (!QFileInfo::exists(folder))
        qInfo() << "ADManager::requestFinished" << folder << QDir().mkpath(folder);
    QSaveFile file(stateFile);
    if (!file.open(QIODevice::WriteOnly)) {
        qWarning() << "ADManager::requestFinished Failed to open file for writing." << stateFile;
        return;
    }
    if (file.write(newState) != newState.size() || !file.commit())
        qWarning() << "ADManager::requestFinished Failed to write JSON data to file." << stateFile;
    else
        qInfo() << "ADManager::requestFinished JSON data written to file successfully.";
}
