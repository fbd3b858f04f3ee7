#pragma once

#include <QtGlobal>
#include <vector>

/// When to grab one source, so that each frame is finished just before it is pulled, for several pullers of
/// different rhythms; and so that those who rest hear of a change. Times are microseconds of one steady
/// clock. A plain value without a lock.
class GrabPlan
{
public:
    /// Somebody pulls who comes again at `nextUs`, and then after each period.
    void pull(qint64 nowUs, const void* puller, qint64 nextUs, qint64 periodUs);
    /// Somebody pulls of whom nothing is known: the rhythm is that of the latest such pulls.
    void pull(qint64 nowUs);
    /// Whoever pulled last under this name rests. The source is looked at every `paceUs` meanwhile, or once a
    /// second while it is known to tell of changes; for somewhat longer than a second.
    void rest(qint64 nowUs, const void* puller, qint64 paceUs);
    bool isAwaited(qint64 nowUs) const;
    /// Whether somebody rested, who is told now and begins to pull again.
    bool takeAwaited(qint64 nowUs);
    /// A frame is wanted as soon as possible, unless nobody pulls.
    void hurry(qint64 nowUs);
    /// When the next grab is to begin; -1 while none is wanted.
    qint64 dueUs(qint64 nowUs) const;
    /// The same, and who grabs means to come back then, or when the source tells of a change.
    qint64 takeDueUs(qint64 nowUs, bool tellsOfChange);
    /// Whether who grabs must be woken, because he would come back too late. Says so once.
    bool takeWake(qint64 nowUs);
    /// Who grabs is another one now, without a plan.
    void forget() { m_plannedUs = -1; }
    /// The grab that was due at `dueUs` is done.
    void done(qint64 dueUs, qint64 nowUs);

private:
    static constexpr qint64 kNever = -1000000000000;

    struct Puller
    {
        const void* name = nullptr;
        qint64 lastUs = kNever;
        qint64 nextUs = 0;
        qint64 periodUs = 0;
        qint64 restPaceUs = 0; ///< 0: does not rest
    };

    Puller& find(const void* name, qint64 nowUs);
    static bool isGone(const Puller& puller, qint64 nowUs);
    static bool isResting(const Puller& puller, qint64 nowUs);
    /// The earliest pull to be expected that no grab was for; -1 for none.
    qint64 expectedUs(const Puller& puller) const;
    qint64 leadUs() const;

    std::vector<Puller> m_pullers;
    bool m_urgent = false; ///< the next grab waits for no pull
    bool m_tellsOfChange = false;
    qint64 m_gapUs = 0;          ///< between the latest two pulls of strangers
    qint64 m_grabbedUs = kNever; ///< the latest grab
    qint64 m_servedUs = kNever;  ///< pulls up to here have their frame
    qint64 m_costUs = 2000;      ///< from the due time to the finished frame
    qint64 m_plannedUs = -1;     ///< when who grabs means to come back
};
