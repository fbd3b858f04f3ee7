#include "controllers/ProbeReply.h"

#include <QStringList>

namespace {
constexpr int kMaxReplyBytes = 128;
constexpr int kModelSize = 6;
constexpr int kTailSize = 2;
} // namespace

ProbeReply ProbeReply::parse(const QByteArray& bytes)
{
    ProbeReply reply;
    const QByteArray raw = bytes.left(kMaxReplyBytes);
    if (!raw.toUpper().startsWith("LV"))
        return reply;
    reply.text = QString::fromLatin1(raw.constData(), raw.size()); // with the size: NULs belong to it
    reply.text.chop(kTailSize);
    reply.hasSerial = reply.text.mid(kModelSize, 1) == QLatin1String(",");
    if (!reply.hasSerial) {
        reply.model = reply.id = reply.text.toUpper();
        return reply;
    }
    reply.model = reply.text.left(kModelSize).toUpper();
    // From the raw bytes: the serial may hold anything, commas included.
    reply.serial = QString::fromLatin1(
        raw.mid(kModelSize + 1, raw.size() - kModelSize - 1 - kTailSize).toHex().toUpper());
    reply.id = reply.text.section(QLatin1Char(','), 0, 0).toUpper() + QLatin1Char(':') + reply.serial;
    return reply;
}
