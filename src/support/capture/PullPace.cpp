#include "support/capture/PullPace.h"

#include <limits>

namespace {
constexpr qint64 kBurstUs = 4000; // pulls closer together are one: they can share a frame
constexpr qint64 kIdleUs = 1000000;
constexpr qint64 kSlowestUs = 10000000;
constexpr int kCycles = 3; // equal cycles that make a rhythm
constexpr int kRecentGaps = 8;

qint64 toleranceUs(qint64 periodUs)
{
    return qMax<qint64>(4000, periodUs / 8);
}
} // namespace

void PullPace::record(qint64 nowUs)
{
    if (isAsleep(nowUs)) { // the old rhythm is over, but slow pullers have one as well
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

bool PullPace::isAsleep(qint64 nowUs) const
{
    return m_lastUs < 0 || nowUs - m_lastUs > qMax(kIdleUs, m_periodUs * 5 / 2);
}

qint64 PullPace::nextAfter(qint64 timeUs) const
{
    if (m_periodUs <= 0 || m_used == 0)
        return -1;
    qint64 next = std::numeric_limits<qint64>::max();
    for (int age = 0; age < m_used; ++age) {
        const qint64 periods = qMax<qint64>(0, timeUs - at(age)) / m_periodUs + 1;
        next = qMin(next, at(age) + periods * m_periodUs);
    }
    return next;
}

qint64 PullPace::apartUs() const
{
    return qMin(qMax<qint64>(6000, m_periodUs / 16), m_periodUs / 4);
}

void PullPace::learn()
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

bool PullPace::repeatsEvery(int pulls) const
{
    const qint64 period = at(0) - at(pulls);
    for (int age = 1; age <= pulls * (kCycles - 1); ++age) {
        if (qAbs(at(age) - at(age + pulls) - period) > toleranceUs(period))
            return false;
    }
    return true;
}
