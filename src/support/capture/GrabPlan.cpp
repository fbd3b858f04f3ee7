#include "support/capture/GrabPlan.h"

#include <algorithm>

namespace {
constexpr qint64 kBurstUs = 4000; // pulls of strangers that are closer together are one
constexpr qint64 kShareUs = 4000; // expected pulls closer together than this share a frame
constexpr qint64 kLeadUs = 500;   // for an early pull
constexpr qint64 kLateUs = 2000;  // not worth to be woken for
constexpr qint64 kDearestUs = 100000;
constexpr qint64 kIdleUs = 1000000;
constexpr qint64 kLookAnywayUs = 1000000; // at a source that tells of changes: not all of them do
constexpr qint64 kRestUs = 2500000;       // after which resting is over unless it is repeated
constexpr qint64 kSlowestUs = 10000000;
} // namespace

void GrabPlan::pull(qint64 nowUs, const void* puller, qint64 nextUs, qint64 periodUs)
{
    Puller& known = find(puller, nowUs);
    m_urgent = m_urgent || isGone(known, nowUs);
    known.lastUs = nowUs;
    known.nextUs = nextUs;
    known.periodUs = periodUs;
    known.restPaceUs = 0;
}

void GrabPlan::pull(qint64 nowUs)
{
    const Puller& known = find(nullptr, nowUs);
    const bool isNew = nowUs - known.lastUs > kSlowestUs;
    const qint64 gapUs = isNew ? 0 : nowUs - known.lastUs;
    if (!isNew && gapUs < kBurstUs)
        return;
    // Where several pull, the shorter gap is the one between them.
    const qint64 periodUs = m_gapUs > 0 ? qMin(gapUs, m_gapUs) : gapUs;
    m_gapUs = gapUs;
    pull(nowUs, nullptr, nowUs + periodUs, periodUs);
}

void GrabPlan::rest(qint64 nowUs, const void* puller, qint64 paceUs)
{
    Puller& known = find(puller, nowUs);
    known.lastUs = nowUs;
    known.restPaceUs = qMax<qint64>(1, paceUs);
}

bool GrabPlan::isAwaited(qint64 nowUs) const
{
    return std::any_of(m_pullers.begin(), m_pullers.end(),
                       [nowUs](const Puller& puller) { return isResting(puller, nowUs); });
}

bool GrabPlan::takeAwaited(qint64 nowUs)
{
    bool isAny = false;
    for (Puller& puller : m_pullers) {
        if (!isResting(puller, nowUs))
            continue;
        isAny = true;
        puller.nextUs = nowUs;
        puller.periodUs = puller.restPaceUs;
        puller.restPaceUs = 0;
    }
    return isAny;
}

void GrabPlan::hurry(qint64 nowUs)
{
    m_urgent = m_urgent || std::any_of(m_pullers.begin(), m_pullers.end(),
                                       [nowUs](const Puller& puller) { return !isGone(puller, nowUs); });
}

qint64 GrabPlan::dueUs(qint64 nowUs) const
{
    if (m_urgent)
        return nowUs;
    qint64 earliest = -1;
    const auto consider = [&earliest](qint64 dueUs) {
        earliest = earliest < 0 ? dueUs : qMin(earliest, dueUs);
    };
    for (const Puller& puller : m_pullers) {
        const qint64 expected = expectedUs(puller);
        if (expected >= 0)
            consider(expected - qMin(leadUs(), puller.periodUs / 2));
        if (isResting(puller, nowUs))
            consider(qMax(nowUs, m_grabbedUs + (m_tellsOfChange ? kLookAnywayUs : puller.restPaceUs)));
    }
    return earliest;
}

qint64 GrabPlan::takeDueUs(qint64 nowUs, bool tellsOfChange)
{
    m_tellsOfChange = tellsOfChange;
    return m_plannedUs = dueUs(nowUs);
}

bool GrabPlan::takeWake(qint64 nowUs)
{
    const qint64 due = dueUs(nowUs);
    if (due < 0 || (m_plannedUs >= 0 && due >= m_plannedUs - kLateUs))
        return false;
    m_plannedUs = due;
    return true;
}

void GrabPlan::done(qint64 dueUs, qint64 nowUs)
{
    m_servedUs = (m_urgent ? nowUs : qMax(nowUs, dueUs + leadUs())) + kShareUs;
    m_grabbedUs = nowUs;
    // From the due time on, so that a busy machine's late wake-ups count. It rises fast and falls slowly.
    const qint64 cost = qMin(nowUs - dueUs, kDearestUs);
    m_costUs += (cost - m_costUs) / (cost > m_costUs ? 2 : 16);
    m_urgent = false;
}

GrabPlan::Puller& GrabPlan::find(const void* name, qint64 nowUs)
{
    const auto known = std::find_if(m_pullers.begin(), m_pullers.end(),
                                    [name](const Puller& puller) { return puller.name == name; });
    if (known != m_pullers.end())
        return *known;
    m_pullers.erase(
        std::remove_if(m_pullers.begin(), m_pullers.end(),
                       [nowUs](const Puller& puller) { return nowUs - puller.lastUs > kSlowestUs; }),
        m_pullers.end());
    Puller added;
    added.name = name;
    m_pullers.push_back(added);
    return m_pullers.back();
}

bool GrabPlan::isGone(const Puller& puller, qint64 nowUs)
{
    return nowUs - puller.lastUs > qMax(kIdleUs, puller.periodUs * 5 / 2);
}

bool GrabPlan::isResting(const Puller& puller, qint64 nowUs)
{
    return puller.restPaceUs > 0 && nowUs - puller.lastUs < kRestUs;
}

qint64 GrabPlan::expectedUs(const Puller& puller) const
{
    if (puller.periodUs <= 0)
        return -1;
    for (const qint64 expected : {puller.nextUs, puller.nextUs + puller.periodUs}) {
        if (expected > m_servedUs)
            return expected;
    }
    return -1;
}

qint64 GrabPlan::leadUs() const
{
    return m_costUs + kLeadUs;
}
