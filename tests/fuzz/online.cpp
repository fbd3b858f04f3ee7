// Every answer of the online services, from a server that means no good.
#include "Fuzz.h"

#include "online/advertisement.h"
#include "support/net/FeedbackUpload.h"
#include "support/net/HttpTransfer.h"
#include "support/net/InstallerDownload.h"
#include "support/net/OnlineAddress.h"
#include "support/net/ProductSettings.h"
#include "support/net/SignedAnswer.h"
#include "support/net/VersionAnswer.h"
#include "support/net/compareVersion.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <sodium.h>

#include <algorithm>

namespace {

const QUrl kService(QStringLiteral("https://lights.example/base/"));

/// What a server sends: a status, headers, a body in pieces, and perhaps no proper end.
struct Script
{
    explicit Script(FuzzInput& input)
        : pieceBytes(1 + input.number())
        , isCut(input.number() == 1)
        , status(input.line().toInt())
    {
        for (QByteArray line = input.line(); !line.isEmpty() && headers.size() < 20; line = input.line()) {
            const int colon = line.indexOf(':');
            headers.append({line.left(colon), colon < 0 ? QByteArray() : line.mid(colon + 1).trimmed()});
        }
        body = input.rest();
    }
    QByteArray header(const char* name) const
    {
        const auto found = std::find_if(headers.begin(), headers.end(), [name](const auto& each) {
            return each.first.toLower() == QByteArray(name).toLower();
        });
        return found == headers.end() ? QByteArray() : found->second;
    }

    int pieceBytes;
    bool isCut;
    int status;
    QVector<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
};

/// Says what the script has, a step in each turn of the event loop.
class ScriptedReply : public QNetworkReply
{
public:
    ScriptedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest& request,
                  const Script& script, QObject* parent)
        : QNetworkReply(parent)
        , m_left(script)
    {
        setRequest(request);
        setUrl(request.url());
        setOperation(operation);
        open(QIODevice::ReadOnly);
        QMetaObject::invokeMethod(this, &ScriptedReply::tellHead, Qt::QueuedConnection);
    }
    void abort() override { m_isAborted = true; }
    qint64 bytesAvailable() const override { return m_arrived.size() + QNetworkReply::bytesAvailable(); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 most) override
    {
        const auto count = static_cast<int>(qMin<qint64>(most, m_arrived.size()));
        std::copy_n(m_arrived.constData(), count, data);
        m_arrived.remove(0, count);
        return count;
    }

private:
    void tellHead()
    {
        if (m_isAborted)
            return;
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_left.status);
        for (const auto& [name, value] : qAsConst(m_left.headers))
            setRawHeader(name, value);
        QMetaObject::invokeMethod(this, &ScriptedReply::tellBody, Qt::QueuedConnection);
        emit metaDataChanged();
    }
    void tellBody()
    {
        if (m_isAborted)
            return;
        m_arrived += m_left.body.left(m_left.pieceBytes);
        m_left.body.remove(0, m_left.pieceBytes);
        if (!m_left.body.isEmpty()) {
            QMetaObject::invokeMethod(this, &ScriptedReply::tellBody, Qt::QueuedConnection);
            emit readyRead();
            return;
        }
        if (m_left.isCut)
            setError(RemoteHostClosedError, QStringLiteral("cut"));
        else if (m_left.status >= 400)
            setError(UnknownServerError, QStringLiteral("status"));
        setFinished(true);
        emit finished();
    }

    Script m_left;
    QByteArray m_arrived;
    bool m_isAborted = false;
};

class ScriptedNetwork : public QNetworkAccessManager
{
public:
    /// One for all: the toolkit takes long to make one.
    static ScriptedNetwork& of(const Script& script)
    {
        static ScriptedNetwork network;
        network.m_script = &script;
        network.requests = 0;
        return network;
    }
    int requests = 0;

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* body) override
    {
        ++requests;
        REQUIRE(isAllowedAddress(request.url()));
        if (body)
            body->readAll();
        return new ScriptedReply(operation, request, *m_script, this);
    }

private:
    const Script* m_script = nullptr;
};

template <typename Over>
void runUntil(const Over& isOver)
{
    QElapsedTimer patience;
    for (patience.start(); !isOver();) {
        REQUIRE(patience.elapsed() < 60000);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void checkInstaller(const InstallerInfo& installer)
{
    REQUIRE(QFileInfo(installer.file).fileName() == installer.file && !installer.file.startsWith('.'));
    REQUIRE(isAllowedAddress(installer.url) && installer.sha256.size() == 32);
    REQUIRE(installer.size >= 1 && installer.size <= 500LL * 1024 * 1024);
}

} // namespace

/// Choices, status, headers, body: the whole answer, within its limits, or an error; told once.
FUZZ_TARGET(http_answer)
{
    FuzzInput input(bytes);
    const int choices = input.number();
    const Script script(input);
    ScriptedNetwork& network = ScriptedNetwork::of(script);
    HttpRequest request;
    request.url = choices & 8 ? QUrl(QStringLiteral("http://127.0.0.1/x")) : kService;
    request.needsLength = choices & 1;
    request.from = choices & 2 ? 10 : 0;
    if (choices & 4)
        request.contentType = request.body = "text/plain";
    request.limits.mostBytes = 1000;
    HttpTransfer transfer(network, request);
    int ends = 0;
    HttpAnswer answer;
    QObject::connect(&transfer, &HttpTransfer::finished, [&](const HttpAnswer& told) {
        ++ends;
        answer = told;
    });
    transfer.start();
    runUntil([&] { return ends > 0; });
    QCoreApplication::processEvents();
    REQUIRE(ends == 1 && network.requests <= 6);
    if (answer.error != QNetworkReply::NoError) {
        REQUIRE(answer.body.isEmpty() && !answer.errorText.isEmpty());
        return;
    }
    REQUIRE(answer.body == script.body && answer.body.size() <= 1000 && !script.isCut);
    REQUIRE(script.status == 200 || (script.status == 206 && request.from > 0));
    const QByteArray length = script.header("Content-Length");
    REQUIRE(length.isEmpty() ? !request.needsLength : length.toInt() == script.body.size());
}

/// An installer that is fetched: the signed file under its name, or none; a part may be there from before.
FUZZ_TARGET(installer_download)
{
    static const QByteArray signedFile("the installer, as its maker has signed it");
    FuzzInput input(bytes);
    const int there = input.number();
    const Script script(input);
    const QString folder = fuzzFolder() + QStringLiteral("updates");
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    InstallerInfo installer{QStringLiteral("lumivar.deb"), kService, signedFile.size(),
                            QCryptographicHash::hash(signedFile, QCryptographicHash::Sha256)};
    const QString path = folder + u'/' + installer.file;
    const QByteArray part = (there & 64 ? signedFile : QByteArray(50, 'x')).left(there % 64);
    if (there > 0)
        writeFuzzFile(there & 128 ? path
                                  : folder + u'/' + QString::fromLatin1(installer.sha256.toHex()) +
                                        QStringLiteral(".part"),
                      part);
    ScriptedNetwork& network = ScriptedNetwork::of(script);
    InstallerDownload download(network, installer, folder);
    int ends = 0;
    bool isThere = false;
    QObject::connect(&download, &InstallerDownload::downloaded, [&](const QString& file) {
        ++ends;
        isThere = true;
        REQUIRE(file == path && readFuzzFile(path) == signedFile);
    });
    QObject::connect(&download, &InstallerDownload::failed, [&] { ++ends; });
    download.start();
    runUntil([&] { return ends > 0; });
    QCoreApplication::processEvents();
    REQUIRE(ends == 1 && (isThere || !QFileInfo::exists(path)));
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files))
        REQUIRE(file.size() <= installer.size);
}

/// The answer to a feedback: taken, or not.
FUZZ_TARGET(feedback_answer)
{
    const QString archive = fuzzFolder() + QStringLiteral("feedback.zip");
    if (!QFileInfo::exists(archive))
        writeFuzzFile(archive, "PK");
    FuzzInput input(bytes);
    const Script script(input);
    ScriptedNetwork& network = ScriptedNetwork::of(script);
    FeedbackUpload upload(network, kService, archive);
    int ends = 0;
    QObject::connect(&upload, &FeedbackUpload::finished, [&](QNetworkReply::NetworkError error) {
        ++ends;
        REQUIRE(error != QNetworkReply::NoError ||
                fuzzObject(script.body)[QLatin1String("received")] == QJsonValue(true));
    });
    upload.start();
    runUntil([&] { return ends > 0; });
    QCoreApplication::processEvents();
    REQUIRE(ends == 1);
}

/// An envelope as it comes, and what would be inside of one that the maker has signed.
FUZZ_TARGET(version_answer)
{
    static const QPair<QByteArray, QByteArray> keys = [] {
        REQUIRE(sodium_init() >= 0);
        QByteArray own(crypto_sign_PUBLICKEYBYTES, 0);
        QByteArray secret(crypto_sign_SECRETKEYBYTES, 0);
        const QByteArray seed(crypto_sign_SEEDBYTES, 1);
        crypto_sign_seed_keypair(reinterpret_cast<uchar*>(own.data()),
                                 reinterpret_cast<uchar*>(secret.data()),
                                 reinterpret_cast<const uchar*>(seed.constData()));
        return qMakePair(own, secret);
    }();
    QString error;
    REQUIRE(!signedAnswer(bytes, keys.first, &error) && !error.isEmpty());

    const QByteArray text = QString::fromUtf8(bytes).toUtf8();
    QByteArray signature(crypto_sign_BYTES, 0);
    crypto_sign_detached(reinterpret_cast<uchar*>(signature.data()), nullptr,
                         reinterpret_cast<const uchar*>(text.constData()),
                         static_cast<unsigned long long>(text.size()),
                         reinterpret_cast<const uchar*>(keys.second.constData()));
    const QJsonObject envelope{{"signed", QString::fromUtf8(text)},
                               {"signature", QString::fromLatin1(signature.toBase64())}};
    const auto inner = signedAnswer(QJsonDocument(envelope).toJson(), keys.first, &error);
    REQUIRE(bool(inner) == QJsonDocument::fromJson(text).isObject());
    if (!inner)
        return;
    QJsonObject object = *inner; // else no find without the name of this machine's architecture
    object.insert(QStringLiteral("product"), QStringLiteral("Lumivar"));
    object.insert(QStringLiteral("system"), VersionAnswer::system());
    object.insert(QStringLiteral("arch"), VersionAnswer::arch());
    const auto answer = VersionAnswer::fromJson(object, kService, &error);
    if (!answer)
        return;
    REQUIRE(!compareVersion(QString(), answer->version));
    if (answer->installer)
        checkInstaller(*answer->installer);
}

/// Two lines: a total order of whatever is a version, and all that is none is not later than anything.
FUZZ_TARGET(compare_version)
{
    FuzzInput input(bytes);
    const QString a = QString::fromUtf8(input.line());
    const QString b = QString::fromUtf8(input.line());
    const QString c = QString::fromUtf8(input.line());
    const auto isVersion = [](const QString& text) { return !compareVersion(QString(), text); };
    REQUIRE(compareVersion(a, a));
    if (!isVersion(a) || !isVersion(b))
        return;
    REQUIRE(compareVersion(a, b) || compareVersion(b, a));
    REQUIRE(!isVersion(c) || !compareVersion(a, b) || !compareVersion(b, c) || compareVersion(a, c));
}

FUZZ_TARGET(advertisement)
{
    QString error;
    const auto advertisement = Advertisement::fromJson(fuzzObject(bytes), &error);
    REQUIRE(bool(advertisement) == error.isEmpty());
    if (!advertisement)
        return;
    REQUIRE(QFileInfo(advertisement->fileName).fileName() == advertisement->fileName);
    const QString scheme = QUrl(advertisement->href).scheme();
    REQUIRE(advertisement->href.isEmpty() || scheme == QLatin1String("http") ||
            scheme == QLatin1String("https"));
}

FUZZ_TARGET(advertisement_picture)
{
    if (!pictureFault(bytes).isEmpty())
        return;
    const QImage picture = QImage::fromData(bytes);
    REQUIRE(!picture.isNull() && picture.width() <= 4096 && picture.height() <= 4096);
}

/// The file that may name a service for trials: only one on this machine.
FUZZ_TARGET(product_stand_in)
{
    const QString path = fuzzFolder() + QStringLiteral("product.json");
    writeFuzzFile(path, bytes);
    const ProductSettings settings = productSettings(path);
    REQUIRE(settings.service.isEmpty() || isLoopback(settings.service) ||
            settings.service == productSettings(QString()).service);
    REQUIRE(settings.serviceKey.isEmpty() || settings.serviceKey.size() == 32);
}
