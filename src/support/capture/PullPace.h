#pragma once

#include <QtGlobal>
#include <array>

/// Learns the rhythm in which frames are pulled, so that each is grabbed just before it is wanted. Several
/// pullers of one period are predicted one by one; otherwise the shortest gap between pulls counts.
/// Times are microseconds of one steady clock. A plain value without a lock.
class PullPace
{
public:
    void record(qint64 nowUs);
    /// Nobody has pulled for about a second (longer where the pulls are that slow).
    bool isAsleep(qint64 nowUs) const;
    /// The earliest pull to be expected after the given time; -1 while the rhythm is unknown.
    qint64 nextAfter(qint64 timeUs) const;
    /// Expected pulls closer together than this are one.
    qint64 apartUs() const;
    /// The latest pull; -1 without any.
    qint64 lastUs() const { return m_lastUs; }
    /// 0 while unknown.
    qint64 periodUs() const { return m_periodUs; }

private:
    static constexpr int kHistory = 32;

    qint64 at(int age) const { return m_pulls[(m_count - 1 - age) % kHistory]; }
    int known() const { return int(qMin<qint64>(m_count, kHistory)); }
    void learn();
    bool repeatsEvery(int pulls) const;

    std::array<qint64, kHistory> m_pulls{};
    qint64 m_count = 0;
    qint64 m_lastUs = -1;
    qint64 m_periodUs = 0;
    int m_used = 0; ///< how many of the newest pulls carry the prediction
};
