#pragma once

#include "support/capture/SourceTrouble.h"

#include <QList>
#include <QRect>
#include <QString>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

/// A picture stream as the desktop's portal describes it.
struct ScreenCastStream
{
    uint32_t node = 0; ///< of the media server
    QString id;        ///< stable over restarts
    QString name;      ///< for people
    QRect place;       ///< in the desktop's coordinates; empty where the portal does not tell
    bool primary = false;

    bool operator==(const ScreenCastStream& other) const
    {
        return node == other.node && id == other.id && name == other.name && place == other.place &&
               primary == other.primary;
    }
};
using ScreenCastStreams = QList<ScreenCastStream>;

/// Lies between the conversation with the portal (main thread), which offers streams, and the grabber
/// (capture thread), which reads them. All operations may be called from any thread. Listeners are called on
/// the thread of who changed something and may use the feed. Setting one returns when the old one is not
/// running any more (but for itself), so that after it what the old one used may go; nobody sets one while he
/// holds a lock that the old one waits for.
class ScreenCastFeed
{
public:
    struct Offer
    {
        int remote = -1; ///< the connection to the media server; whoever takes the offer closes it
        ScreenCastStreams streams;
        quint64 number = 0; ///< of this offer, see number()
    };

    ScreenCastFeed() = default;
    ~ScreenCastFeed();
    Q_DISABLE_COPY(ScreenCastFeed)

    // For the conversation.

    /// Takes `remote` over, and what was offered before does not count any more.
    void offer(int remote, const ScreenCastStreams& streams);
    /// Nothing is offered (any more), for this reason.
    void withdraw(SourceTrouble trouble);
    /// Called when the grabber has lost the offer that it took. None to end.
    void setLostListener(std::function<void()> listener);
    /// Whether what is offered now was reported lost.
    bool isLost() const;

    // For the grabber.

    /// The offer that nobody has taken yet.
    std::optional<Offer> takeOffer();
    /// Counts offers and withdrawals: what was taken at another number does not count any more.
    quint64 number() const;
    SourceTrouble trouble() const;
    /// What was taken at this number broke. An older one is no news.
    void reportLost(quint64 number);
    /// Called at each offer and withdrawal. None to end.
    void setChangeListener(std::function<void()> listener);

private:
    /// A listener and the turn to call or to replace it.
    struct Listener
    {
        std::recursive_mutex turn;
        std::function<void()> call;
    };
    static void set(Listener& listener, std::function<void()> call);
    static void tell(Listener& listener);
    void change(int remote, const ScreenCastStreams& streams, SourceTrouble trouble);

    mutable std::mutex m_mutex;
    Offer m_offer;
    bool m_isTaken = true;
    quint64 m_number = 0;
    SourceTrouble m_trouble = SourceTrouble::NotAsked;
    bool m_isLost = false;
    Listener m_lostListener;
    Listener m_changeListener;
};
