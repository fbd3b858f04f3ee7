#include "effects/graphics/readColorPicture.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRgba64>
#include <QtEndian>
#include <optional>

namespace {

constexpr qint64 kMostBytes = 16 << 20;
constexpr quint64 kMostPixels = 4096 * 2160;
constexpr quint64 kBestCompression = 1032; // no zlib stream holds more than so many times its own size

constexpr char kSignature[] = "\x89PNG\r\n\x1a\n";
constexpr int kSignatureSize = sizeof(kSignature) - 1;
constexpr int kHeaderSize = kSignatureSize + 8 + 10; // up to and with the kind of colour
constexpr int kChunkFrame = 12;                      // length, type and checksum of a chunk

const QString kNoFile = QStringLiteral("is no file that can be read");
const QString kNoPng = QStringLiteral("is no PNG picture");
const QString kTooLarge = QStringLiteral("is larger than 16 MB or 4096 x 2160 pixels");
const QString kDamaged = QStringLiteral("is damaged or cut off");

quint32 bigEndian(const QByteArray& bytes, int at)
{
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

/// What is wrong with a picture that begins so, before anything of it is decoded; empty when nothing is.
QString problemOfHeader(const QByteArray& header, qint64 fileBytes)
{
    if (header.size() < kHeaderSize || !header.startsWith(kSignature) ||
        header.mid(kSignatureSize + 4, 4) != "IHDR")
        return kNoPng;
    const quint64 pixels = quint64(bigEndian(header, 16)) * bigEndian(header, 20);
    if (fileBytes > kMostBytes || pixels > kMostPixels)
        return kTooLarge;
    const quint64 bits = static_cast<uchar>(header[24]);
    // A header may claim what the file cannot hold.
    if (pixels == 0 || pixels * bits / 8 > quint64(fileBytes) * kBestCompression)
        return kDamaged;
    return {};
}

struct PngChunks
{
    QByteArray picture; ///< the file with those alone that a decoder must know
    QByteArray exif;
};

/// What else is in the file would change the colours (transparency, gamma) or only cost time and memory.
std::optional<PngChunks> essentialChunks(const QByteArray& file)
{
    PngChunks chunks{file.left(kSignatureSize), {}};
    for (int at = kSignatureSize; file.size() - at >= kChunkFrame;) {
        const quint32 length = bigEndian(file, at);
        if (length > quint32(file.size() - at - kChunkFrame))
            break;
        const QByteArray type = file.mid(at + 4, 4);
        const int whole = int(length) + kChunkFrame;
        if (type[0] >= 'A' && type[0] <= 'Z')
            chunks.picture.append(file.constData() + at, whole);
        else if (type == "eXIf" && chunks.exif.isEmpty())
            chunks.exif = file.mid(at + 8, int(length));
        at += whole;
        if (type == "IEND")
            return chunks;
    }
    return std::nullopt;
}

/// 1 to 8 as the camera's record has it; 1, which is upright, where it says nothing.
int orientationOf(const QByteArray& exif)
{
    constexpr quint32 kOrientation = 0x0112;
    const bool isLittle = exif.startsWith("II");
    const auto number = [&exif, isLittle](quint64 at, int bytes) {
        quint32 value = 0;
        for (int i = 0; i < bytes && at + quint64(bytes) <= quint64(exif.size()); ++i)
            value = value << 8 | static_cast<uchar>(exif[int(at) + (isLittle ? bytes - 1 - i : i)]);
        return value;
    };
    if ((!isLittle && !exif.startsWith("MM")) || number(2, 2) != 42)
        return 1;
    const quint64 table = number(4, 4);
    const quint32 count = number(table, 2);
    for (quint32 i = 0; i < count; ++i) {
        const quint64 entry = table + 2 + 12 * quint64(i);
        if (number(entry, 2) == kOrientation)
            return int(number(entry + 8, 2));
    }
    return 1;
}

/// From 5 on the picture lies on its side; the rest is mirrored along one axis or both.
void setUpright(cv::Mat& picture, int orientation)
{
    constexpr int kNoFlip = 2;
    constexpr int kFlips[] = {kNoFlip, kNoFlip, 1, -1, 0, kNoFlip, 1, -1, 0};
    if (orientation < 2 || orientation > 8)
        return;
    if (orientation >= 5)
        cv::transpose(picture, picture);
    if (kFlips[orientation] != kNoFlip)
        cv::flip(picture, picture, kFlips[orientation]);
}

cv::Vec3b toBgr(QRgb color)
{
    return {uchar(qBlue(color)), uchar(qGreen(color)), uchar(qRed(color))};
}

cv::Vec3b toBgr(QRgba64 color)
{
    return {uchar(color.blue() >> 8), uchar(color.green() >> 8), uchar(color.red() >> 8)};
}

template <typename Pixel>
cv::Mat toBgrPicture(const QImage& image)
{
    cv::Mat picture(image.height(), image.width(), CV_8UC3);
    for (int y = 0; y < image.height(); ++y) {
        const auto* in = reinterpret_cast<const Pixel*>(image.constScanLine(y));
        auto* out = picture.ptr<cv::Vec3b>(y);
        for (int x = 0; x < image.width(); ++x)
            out[x] = toBgr(in[x]);
    }
    return picture;
}

cv::Mat decoded(const PngChunks& chunks, bool is16Bit)
{
    QBuffer bytes;
    bytes.setData(chunks.picture);
    QImageReader reader(&bytes, "png");
    QImage image;
    // The image alone would not tell: of a damaged file it holds what could be read.
    if (!bytes.open(QIODevice::ReadOnly) || !reader.read(&image))
        return {};
    image = std::move(image).convertToFormat(is16Bit ? QImage::Format_RGBA64 : QImage::Format_ARGB32);
    if (image.isNull())
        return {};
    cv::Mat picture = is16Bit ? toBgrPicture<QRgba64>(image) : toBgrPicture<QRgb>(image);
    setUpright(picture, orientationOf(chunks.exif));
    return picture;
}

} // namespace

cv::Mat readColorPicture(const QString& path, QString* problem)
{
    problem->clear();
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return {};
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) { // a pipe would keep us waiting
        *problem = kNoFile;
        return {};
    }
    const QByteArray header = file.peek(kHeaderSize);
    *problem = problemOfHeader(header, file.size());
    if (!problem->isEmpty())
        return {};
    const std::optional<PngChunks> chunks = essentialChunks(file.read(kMostBytes));
    const bool is16Bit = header[24] == 16;
    cv::Mat picture = chunks ? decoded(*chunks, is16Bit) : cv::Mat();
    if (picture.empty())
        *problem = kDamaged;
    return picture;
}
