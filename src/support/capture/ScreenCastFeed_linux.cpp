#include "support/capture/ScreenCastFeed_linux.h"

#include <unistd.h>
#include <utility>

ScreenCastFeed::~ScreenCastFeed()
{
    if (m_offer.remote >= 0)
        close(m_offer.remote);
}

void ScreenCastFeed::offer(int remote, const ScreenCastStreams& streams)
{
    change(remote, streams, SourceTrouble::None);
}

void ScreenCastFeed::withdraw(SourceTrouble trouble)
{
    change(-1, {}, trouble);
}

void ScreenCastFeed::change(int remote, const ScreenCastStreams& streams, SourceTrouble trouble)
{
    std::unique_lock lock(m_mutex);
    const int unused = std::exchange(m_offer.remote, remote);
    m_offer.streams = streams;
    m_isTaken = remote < 0;
    m_trouble = trouble;
    ++m_number;
    const auto listener = m_changeListener;
    lock.unlock();
    if (unused >= 0)
        close(unused);
    if (listener)
        listener();
}

void ScreenCastFeed::setLostListener(std::function<void()> listener)
{
    const std::lock_guard lock(m_mutex);
    m_lostListener = std::move(listener);
}

std::optional<ScreenCastFeed::Offer> ScreenCastFeed::takeOffer()
{
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_isTaken, true))
        return {};
    return Offer{std::exchange(m_offer.remote, -1), m_offer.streams, m_number};
}

quint64 ScreenCastFeed::number() const
{
    const std::lock_guard lock(m_mutex);
    return m_number;
}

SourceTrouble ScreenCastFeed::trouble() const
{
    const std::lock_guard lock(m_mutex);
    return m_trouble;
}

void ScreenCastFeed::reportLost(quint64 number)
{
    std::unique_lock lock(m_mutex);
    if (number != m_number)
        return;
    const auto listener = m_lostListener;
    lock.unlock();
    if (listener)
        listener();
}

void ScreenCastFeed::setChangeListener(std::function<void()> listener)
{
    const std::lock_guard lock(m_mutex);
    m_changeListener = std::move(listener);
}
