#include "controllers/ProbeReply.h"

#include <QStringList>

namespace {

constexpr int kModelSize = 6;
constexpr int kTailSize = 2;
constexpr char kMark[] = "LV";
constexpr char kUsualTail[] = "\r\n";

/// A device that was asked again while it was busy answers again, and noise may follow an answer. The tail
/// may be any two bytes, so only where the usual ones stand is it known what does not belong.
QByteArray oneAnswer(const QByteArray& bytes)
{
    const QByteArray first = bytes.mid(0, bytes.indexOf(bytes.left(kModelSize + 1), 1));
    const int tail = first.lastIndexOf(kUsualTail);
    return tail < kModelSize ? first : first.left(tail + kTailSize);
}

} // namespace

bool ProbeReply::mayBegin(const QByteArray& bytes)
{
    const QByteArray mark(kMark);
    return mark.startsWith(bytes.left(mark.size()).toUpper());
}

bool ProbeReply::looksWhole(const QByteArray& bytes)
{
    return bytes.size() >= kModelSize + kTailSize && bytes.endsWith(kUsualTail);
}

void ProbeReply::standIn(const QString& place)
{
    if (!serial.isEmpty())
        return;
    serial = QStringLiteral("port-") + place;
    id = model + QLatin1Char(':') + serial;
}

ProbeReply ProbeReply::parse(const QByteArray& bytes)
{
    ProbeReply reply;
    if (bytes.size() > kMaxBytes || !bytes.toUpper().startsWith(kMark))
        return reply;
    const QByteArray raw = oneAnswer(bytes);
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
    reply.id = reply.model + QLatin1Char(':') + reply.serial; // as its settings are stored
    return reply;
}
