#pragma once

#include <QtGlobal>
#include <array>

/// When to grab one source, so that each frame is finished just before it is pulled: learns the rhythm of the
/// pulls and how long a grab takes. Several pullers of one period are predicted one by one; otherwise the
/// shortest gap between pulls counts. Times are microseconds of one steady clock. A plain value without a
/// lock.
class GrabPlan
{
public:
    /// Somebody pulls. The first pull after a long rest wants a frame at once.
    void pull(qint64 nowUs);
    /// A frame is wanted as soon as possible, unless nobody pulls.
    void hurry(qint64 nowUs);
    /// When the next grab is to begin; -1 while none is wanted, as when nobody has pulled for about a second
    /// (longer where the pulls are that slow).
    qint64 dueUs(qint64 nowUs) const;
    /// The same, and who grabs means to come back then.
    qint64 takeDueUs(qint64 nowUs) { return m_plannedUs = dueUs(nowUs); }
    /// Whether who grabs must be woken, because he would come back too late. Says so once.
    bool takeWake(qint64 nowUs);
    /// Who grabs is another one now, without a plan.
    void forget() { m_plannedUs = -1; }
    /// The grab that was due at `dueUs` is done.
    void done(qint64 dueUs, qint64 nowUs);

private:
    static constexpr int kHistory = 32;

    qint64 at(int age) const { return m_pulls[(m_count - 1 - age) % kHistory]; }
    int known() const { return int(qMin<qint64>(m_count, kHistory)); }
    bool isAsleep(qint64 nowUs) const;
    void learn();
    bool repeatsEvery(int pulls) const;
    /// The earliest pull to be expected after the given time; -1 while the rhythm is unknown.
    qint64 nextPullUs(qint64 afterUs) const;
    /// How long before the pull a grab begins.
    qint64 leadUs() const;

    std::array<qint64, kHistory> m_pulls{};
    qint64 m_count = 0;
    qint64 m_lastUs = -1;    ///< the latest pull
    qint64 m_periodUs = 0;   ///< 0 while unknown
    int m_used = 0;          ///< how many of the newest pulls carry the prediction
    bool m_urgent = false;   ///< the next grab waits for no pull
    qint64 m_targetUs = 0;   ///< the pull that the latest grab was for
    qint64 m_costUs = 2000;  ///< from the due time to the finished frame
    qint64 m_plannedUs = -1; ///< when who grabs means to come back
};
