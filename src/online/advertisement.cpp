#include "online/advertisement.h"

#include "support/net/plainFileName.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>

namespace {

constexpr QSize kMostPixels{4096, 4096};
const QStringList kPictureKinds{"png", "jpg", "jpeg", "gif", "bmp", "webp"};

/// What is taken memory for. Of a GIF the toolkit tells the size of the first frame, and takes memory for all
/// of the screen that the frames are parts of.
QSize sizeInMemory(const QImageReader& reader, const QByteArray& bytes)
{
    constexpr int kScreenAt = 6;
    QSize size = reader.size();
    if (reader.format() == "gif" && bytes.size() >= kScreenAt + 4)
        size = size.expandedTo({qFromLittleEndian<quint16>(bytes.constData() + kScreenAt),
                                qFromLittleEndian<quint16>(bytes.constData() + kScreenAt + 2)});
    return size;
}

} // namespace

std::optional<Advertisement> Advertisement::fromJson(const QJsonObject& object, QString* error)
{
    const QString name = object["ad1_local_file_name"].toString();
    const QJsonValue href = object["ad1_image_href"];
    Advertisement advertisement{QUrl(object["ad1_image_url"].toString()), plainFileName(name, kPictureKinds),
                                href.toString()};
    const QUrl link(advertisement.href, QUrl::StrictMode);
    const bool isWeb = link.scheme() == QLatin1String("https") || link.scheme() == QLatin1String("http");
    if (advertisement.fileName.isEmpty())
        *error = QStringLiteral("not the plain name of a picture: ") + name;
    else if (!href.isString() || (!advertisement.href.isEmpty() && (!isWeb || link.host().isEmpty())))
        *error = QStringLiteral("no link into the web: ") + advertisement.href;
    else
        return advertisement;
    return std::nullopt;
}

QString pictureFault(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (!kPictureKinds.contains(QString::fromLatin1(reader.format())))
        return QStringLiteral("it is no picture");
    const QSize size = sizeInMemory(reader, bytes);
    if (size.isEmpty() || size.boundedTo(kMostPixels) != size)
        return QStringLiteral("it is too large");
    return reader.read().isNull() ? reader.errorString() : QString();
}
