#include "support/capture/GrabPlan.h"

#include <limits>

namespace {
constexpr qint64 kBurstUs = 4000; // pulls closer together are one: they can share a frame
constexpr qint64 kIdleUs = 1000000;
constexpr qint64 kSlowestUs = 10000000;
constexpr int kCycles = 3; // equal cycles that make a rhythm
constexpr int kRecentGaps = 8;
constexpr qint64 kLeadUs = 2000; // for an early pull

qint64 toleranceUs(qint64 periodUs)
{
    return qMax<qint64>(4000, periodUs / 8);
}
} // namespace

void GrabPlan::pull(qint64 nowUs)
{
    if (isAsleep(nowUs)) { // the old rhythm is over, but slow pullers have one as well
        m_urgent = true;
        m_count = 0;
        m_used = 0;
        m_periodUs = 0;
        if (m_lastUs >= 0 && nowUs - m_lastUs < kSlowestUs)
            m_pulls[m_count++] = m_lastUs;
    }
    m_lastUs = nowUs;
    if (m_count > 0 && nowUs - at(0) < kBurstUs)
        return;
    m_pulls[m_count++ % kHistory] = nowUs;
    learn();
}

void GrabPlan::hurry(qint64 nowUs)
{
    m_urgent = m_urgent || !isAsleep(nowUs);
}

qint64 GrabPlan::dueUs(qint64 nowUs) const
{
    if (m_urgent)
        return nowUs;
    if (isAsleep(nowUs))
        return -1;
    // Expected pulls closer together than this are one.
    const qint64 apartUs = qMin(qMax<qint64>(6000, m_periodUs / 16), m_periodUs / 4);
    const qint64 next = nextPullUs(qMax(m_lastUs, m_targetUs) + apartUs);
    return next < 0 ? -1 : next - leadUs();
}

bool GrabPlan::takeWake(qint64 nowUs)
{
    const qint64 due = dueUs(nowUs);
    if (due < 0 || (m_plannedUs >= 0 && due >= m_plannedUs - kLeadUs))
        return false;
    m_plannedUs = due;
    return true;
}

void GrabPlan::done(qint64 dueUs, qint64 nowUs)
{
    m_targetUs = m_urgent ? nowUs : qMax(nowUs, dueUs + leadUs());
    // From the due time on, so that a busy machine's late wake-ups count. It rises fast and falls slowly.
    const qint64 cost = nowUs - dueUs;
    m_costUs += (cost - m_costUs) / (cost > m_costUs ? 2 : 16);
    m_urgent = false;
}

bool GrabPlan::isAsleep(qint64 nowUs) const
{
    return m_lastUs < 0 || nowUs - m_lastUs > qMax(kIdleUs, m_periodUs * 5 / 2);
}

void GrabPlan::learn()
{
    for (int pulls = 1; pulls * kCycles < known(); ++pulls) {
        if (!repeatsEvery(pulls))
            continue;
        m_used = pulls * kCycles;
        m_periodUs = (at(0) - at(m_used)) / kCycles;
        return;
    }
    qint64 shortest = 0;
    for (int age = 0; age + 1 < known() && age < kRecentGaps; ++age) {
        const qint64 gap = at(age) - at(age + 1);
        shortest = shortest ? qMin(shortest, gap) : gap;
    }
    if (shortest) {
        m_used = 1;
        m_periodUs = shortest;
    }
}

bool GrabPlan::repeatsEvery(int pulls) const
{
    const qint64 period = at(0) - at(pulls);
    for (int age = 1; age <= pulls * (kCycles - 1); ++age) {
        if (qAbs(at(age) - at(age + pulls) - period) > toleranceUs(period))
            return false;
    }
    return true;
}

qint64 GrabPlan::nextPullUs(qint64 afterUs) const
{
    if (m_periodUs <= 0 || m_used == 0)
        return -1;
    qint64 next = std::numeric_limits<qint64>::max();
    for (int age = 0; age < m_used; ++age) {
        const qint64 periods = qMax<qint64>(0, afterUs - at(age)) / m_periodUs + 1;
        next = qMin(next, at(age) + periods * m_periodUs);
    }
    return next;
}

qint64 GrabPlan::leadUs() const
{
    return qMin(m_costUs + kLeadUs, m_periodUs / 2);
}
