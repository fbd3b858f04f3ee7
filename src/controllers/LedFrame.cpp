#include "controllers/LedFrame.h"

#include <cstring>

namespace {
constexpr int kHeaderSize = 6;
}

QByteArray LedFrame::header(quint32 nbLeds)
{
    QByteArray bytes("Ada");
    bytes.append('\0');
    bytes.append(static_cast<char>(nbLeds >> 8));
    bytes.append(static_cast<char>(nbLeds));
    return bytes;
}

int LedFrame::statedCount(const QByteArray& header)
{
    if (header.size() < kHeaderSize)
        return 0;
    return static_cast<unsigned char>(header.at(4)) << 8 | static_cast<unsigned char>(header.at(5));
}

QByteArray LedFrame::build(const QByteArray& header, const QVector<LV_RGB>& colors)
{
    const int colorSize = colors.size() * static_cast<int>(sizeof(LV_RGB));
    const int padding = qMax(0, statedCount(header) * static_cast<int>(sizeof(LV_RGB)) - colorSize);
    QByteArray frame(header.size() + colorSize + padding, Qt::Uninitialized);
    char* out = frame.data();
    std::memcpy(out, header.constData(), static_cast<std::size_t>(header.size()));
    out += header.size();
    if (colorSize > 0)
        std::memcpy(out, colors.constData(), static_cast<std::size_t>(colorSize));
    std::memset(out + colorSize, 0, static_cast<std::size_t>(padding));
    return frame;
}

QByteArray LedFrame::reaching(const QByteArray& frame, int count)
{
    if (statedCount(frame) >= count)
        return frame;
    const int size = kHeaderSize + count * static_cast<int>(sizeof(LV_RGB));
    return header(static_cast<quint32>(count)) + frame.mid(kHeaderSize) +
           QByteArray(qMax(0, size - frame.size()), '\0');
}
