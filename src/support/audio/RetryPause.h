#pragma once

#include <QtGlobal>

/// How long to wait before what has failed is tried again: a few times soon, enough for a restart, then
/// seldom. The clock is the caller's: a steady one, in milliseconds.
class RetryPause
{
public:
    static constexpr int kSoonMs = 300;
    static constexpr int kLateMs = 2400;

    /// After a failure. One that comes long after the one before counts as the first.
    int next(qint64 nowMs)
    {
        if (nowMs - m_lastMs > kForgottenMs)
            m_failures = 0;
        m_lastMs = nowMs;
        return m_failures++ < kSoonTries ? kSoonMs : kLateMs;
    }

    /// Something is another than it was, so that the next try may well succeed.
    void reset() { m_failures = 0; }

private:
    static constexpr int kSoonTries = 10;
    static constexpr qint64 kForgottenMs = 60000;

    int m_failures = 0;
    qint64 m_lastMs = 0;
};
