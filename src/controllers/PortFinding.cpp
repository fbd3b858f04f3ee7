#include "controllers/PortFinding.h"

#include "controllers/SerialPortSource.h"

#include <algorithm>

namespace {

constexpr int kShownBytes = 12;

/// Plain letters as they are, anything else in hexadecimal.
QString excerpt(const QByteArray& raw)
{
    const QByteArray text = raw.trimmed().left(kShownBytes);
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
    return isPlain && !text.isEmpty() ? QString::fromLatin1(text)
                                      : QString::fromLatin1(raw.left(kShownBytes).toHex(' ').toUpper());
}

} // namespace

PortFinding PortFinding::ofRefusal(const SerialPortRecord& record, const PortHolder& before)
{
    const QString group = groupInNeed(record.systemLocation);
    if (!group.isEmpty())
        return {record.name, Kind::NotPermitted, group};
    return {record.name, Kind::Held, {}, holderOf(record.systemLocation, before)};
}

PortFinding PortFinding::ofSilence(const SerialPortRecord& record, const PortHolder& before)
{
    const PortHolder holder = certainHolderOf(record.systemLocation, before);
    return {record.name, holder.isCertain() ? Kind::Held : Kind::Silent, {}, holder};
}

PortFinding PortFinding::ofUnknownAnswer(const SerialPortRecord& record, const QByteArray& raw,
                                         const PortHolder& before)
{
    PortFinding finding = ofSilence(record, before);
    if (finding.kind == Kind::Silent) {
        finding.kind = Kind::Unknown;
        finding.detail = excerpt(raw);
    }
    return finding;
}

PortFinding PortFinding::ofAdapter(const PortlessAdapter& adapter, const PortHolder& before)
{
    // Nobody else opens an adapter's own node, so who is known for it is enough of a reason.
    const PortHolder holder = adapter.isTaken ? holderOf(adapter.location, before) : PortHolder();
    return {adapter.socket, adapter.isTaken ? Kind::TakenOff : Kind::NoDriver, {}, holder};
}
