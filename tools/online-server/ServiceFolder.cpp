#include "ServiceFolder.h"

#include "OnlineServer.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QImage>
#include <QJsonDocument>
#include <QMimeDatabase>
#include <QPainter>
#include <QSaveFile>

#include <optional>

namespace {

const QString kPictureUrl = QStringLiteral("ad1_image_url");

std::optional<QByteArray> readFile(const QString& path, QString* error)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return file.readAll();
    *error = QStringLiteral("Can't read %1: %2").arg(path, file.errorString());
    return std::nullopt;
}

/// Empty when there is no such file.
std::optional<QJsonObject> readObject(const QString& path, QString* error)
{
    if (!QFile::exists(path))
        return QJsonObject();
    const auto bytes = readFile(path, error);
    if (!bytes)
        return std::nullopt;
    QJsonParseError why;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &why);
    if (document.isObject())
        return document.object();
    *error = QStringLiteral("%1 is no JSON object: %2").arg(path, why.errorString());
    return std::nullopt;
}

/// A strip of light in all colours, and its glow.
QByteArray samplePicture()
{
    constexpr int kLights = 24;
    constexpr int kGlow = 250;
    QImage picture(960, 540, QImage::Format_RGB32);
    picture.fill(QColor(0x1c1c1e));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kLights; ++i) {
        const QColor color = QColor::fromHsvF(double(i) / kLights, 0.85, 1);
        const QPointF at((i + 0.5) * picture.width() / kLights, picture.height() * 0.5);
        QRadialGradient glow(at, kGlow);
        glow.setColorAt(0, QColor(color.red(), color.green(), color.blue(), 50));
        glow.setColorAt(1, Qt::transparent);
        painter.setBrush(glow);
        painter.drawEllipse(at, kGlow, kGlow);
        painter.setBrush(color.lighter(140));
        painter.drawRoundedRect(QRectF(at.x() - 12, at.y() - 6, 24, 12), 6, 6);
    }
    painter.end();
    QBuffer png;
    picture.save(&png, "png");
    return png.data();
}

void offerPicture(OnlineServer& server, QJsonObject advertisement)
{
    const QUrl url(advertisement[kPictureUrl].toString());
    if (url.isRelative()) // for the server's own files it need not be known where that is
        advertisement[kPictureUrl] = QUrl(server.address().toString() + u'/').resolved(url).toString();
    server.setAdvertisement(advertisement);
}

} // namespace

bool serveFolder(OnlineServer& server, const QString& folder, QString* error)
{
    const QDir dir(folder);
    const auto version = readObject(dir.filePath(QStringLiteral("version.json")), error);
    const auto advertisement = readObject(dir.filePath(QStringLiteral("advertisement.json")), error);
    if (!dir.exists())
        *error = QStringLiteral("There is no folder %1").arg(folder);
    if (!dir.exists() || !version || !advertisement)
        return false;
    const QDir files(dir.filePath(QStringLiteral("files")));
    for (const QString& name : files.entryList(QDir::Files)) {
        const auto bytes = readFile(files.filePath(name), error);
        if (!bytes)
            return false;
        const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(name, *bytes);
        server.setFile("/files/" + name, *bytes, type.name().toLatin1());
        if (name == (*version)["file"].toString())
            server.setInstaller(name, *bytes);
    }
    server.setVersion(*version);
    if (!advertisement->isEmpty())
        offerPicture(server, *advertisement);
    return true;
}

void serveSample(OnlineServer& server)
{
    server.setVersion({{"version", SAMPLE_VERSION}});
    server.setFile(QStringLiteral("/files/sample.png"), samplePicture(), "image/png");
    offerPicture(server, {{"enable", 1},
                          {"vertion", 1},
                          {kPictureUrl, "files/sample.png"},
                          {"ad1_local_file_name", "sample.png"},
                          {"ad1_image_href", server.address().toString() + "/files/sample.png"}});
}

QString keepFeedback(const QString& folder, const QByteArray& archive)
{
    const QDir dir(folder + "/feedback");
    const QString name = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    QSaveFile file(dir.filePath(name + ".zip"));
    const bool isKept = dir.mkpath(QStringLiteral(".")) && file.open(QIODevice::WriteOnly) &&
                        file.write(archive) == archive.size() && file.commit();
    return isKept ? file.fileName() : QString();
}
