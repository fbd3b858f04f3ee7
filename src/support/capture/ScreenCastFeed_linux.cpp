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
    m_isLost = false;
    ++m_number;
    lock.unlock();
    if (unused >= 0)
        close(unused);
    tell(m_changeListener);
}

void ScreenCastFeed::setLostListener(std::function<void()> listener)
{
    set(m_lostListener, std::move(listener));
}

bool ScreenCastFeed::isLost() const
{
    const std::lock_guard lock(m_mutex);
    return m_isLost;
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
    if (number != m_number || std::exchange(m_isLost, true))
        return;
    lock.unlock();
    tell(m_lostListener);
}

void ScreenCastFeed::setChangeListener(std::function<void()> listener)
{
    set(m_changeListener, std::move(listener));
}

void ScreenCastFeed::set(Listener& listener, std::function<void()> call)
{
    const std::lock_guard turn(listener.turn);
    listener.call = std::move(call);
}

void ScreenCastFeed::tell(Listener& listener)
{
    const std::lock_guard turn(listener.turn);
    if (const auto call = listener.call) // it may replace itself
        call();
}
