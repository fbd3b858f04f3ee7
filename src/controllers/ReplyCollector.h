#pragma once

#include <QByteArray>

/// Puts the answer to a probe together from the pieces in which an adapter delivers it. The tail of an answer
/// is any two bytes, and its serial may hold the same ones, so only silence tells the end: a short one behind
/// the usual tail, a long one behind anything else, because half an answer is another device's. Counts ticks
/// instead of time: a program that was busy must not take its own pause for the device's.
class ReplyCollector
{
public:
    static constexpr int kTicksOfSilence = 3;
    static constexpr int kTicksOfDoubt = 60; ///< without the usual tail
    static constexpr int kMaxTicks = 200;    ///< from the first byte on

    void add(const QByteArray& piece);
    /// Call it kTicksOfSilence times in the silence that ends an answer.
    void tick();

    bool isEmpty() const { return m_bytes.isEmpty(); }
    /// Nothing more is to be waited for: it went silent, will not end, or does not begin as an answer does.
    bool isOver() const;
    /// What came; empty where it did not end in time. A few bytes longer than an answer may be at most.
    QByteArray reply() const;

private:
    int ticksOfSilence() const;
    bool isEndless() const { return m_ticks > kMaxTicks; }

    QByteArray m_bytes;
    int m_ticks = 0;
    int m_quietTicks = 0; ///< since the last piece
};
