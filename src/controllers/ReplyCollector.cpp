#include "controllers/ReplyCollector.h"

#include "controllers/ProbeReply.h"

void ReplyCollector::add(const QByteArray& piece)
{
    if (piece.isEmpty())
        return;
    m_bytes +=
        piece.left(ProbeReply::kMaxBytes + 1 - m_bytes.size()); // one too many tells that it is too long
    m_quietTicks = 0;
}

void ReplyCollector::tick()
{
    if (isEmpty())
        return;
    ++m_ticks;
    ++m_quietTicks;
}

bool ReplyCollector::isOver() const
{
    // The first tick behind a piece may follow at once, so one more makes the silence whole.
    return !ProbeReply::mayBegin(m_bytes) || m_bytes.size() > ProbeReply::kMaxBytes || isEndless() ||
           m_quietTicks > ticksOfSilence();
}

int ReplyCollector::ticksOfSilence() const
{
    return ProbeReply::looksWhole(m_bytes) ? kTicksOfSilence : kTicksOfDoubt;
}

QByteArray ReplyCollector::reply() const
{
    return isEndless() ? QByteArray() : m_bytes;
}
