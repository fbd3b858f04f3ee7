#include "windowsIcon.h"

#include <QBuffer>
#include <QDataStream>

namespace {

constexpr int kFileHeaderBytes = 6;
constexpr int kEntryBytes = 16;
constexpr quint32 kBitmapHeaderBytes = 40;
constexpr int kPackedSide = 256; ///< from here on as PNG, which the system reads for large icons

QByteArray packed(const QImage& picture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return buffer.data();
}

/// A bitmap without its file header: four bytes a pixel from the bottom up, then a mask that hides nothing.
QByteArray unpacked(const QImage& picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32).mirrored();
    const int side = pixels.width();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << kBitmapHeaderBytes << qint32(side) << qint32(2 * side); // the mask's rows count as well
    stream << quint16(1) << quint16(32);
    for (int i = 0; i < 6; ++i)
        stream << quint32(0);
    for (int y = 0; y < side; ++y)
        stream.writeRawData(reinterpret_cast<const char*>(pixels.constScanLine(y)), 4 * side);
    const int maskRowBytes = (side + 31) / 32 * 4;
    return bytes + QByteArray(maskRowBytes * side, '\0');
}

} // namespace

QByteArray windowsIcon(const QVector<QImage>& pictures)
{
    QByteArray head;
    QByteArray body;
    QDataStream stream(&head, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint16(0) << quint16(1) << quint16(pictures.size());
    for (const QImage& picture : pictures) {
        const QByteArray bytes = picture.width() < kPackedSide ? unpacked(picture) : packed(picture);
        const auto side = quint8(picture.width()); // 0 stands for 256
        stream << side << side << quint16(0) << quint16(1) << quint16(32);
        stream << quint32(bytes.size())
               << quint32(kFileHeaderBytes + kEntryBytes * pictures.size() + body.size());
        body += bytes;
    }
    return head + body;
}
