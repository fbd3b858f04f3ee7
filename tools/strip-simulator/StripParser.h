#pragma once

#include "StripFrame.h"

#include <QByteArray>

/// The strip's side of the wire format: finds probes and frames in a stream of bytes that may be cut
/// anywhere, and skips what is neither. Plain value, no thread of its own.
class StripParser
{
public:
    struct Events
    {
        int probes = 0;
        QVector<StripFrame> frames;
    };

    /// Takes the bytes that came at nowMs and returns what they complete.
    Events feed(const QByteArray& bytes, double nowMs);
    /// Drops an unfinished frame, as a strip does whose host has gone.
    void reset();

    qint64 totalBytes() const { return m_totalBytes; }
    /// Bytes that belonged to no probe and no complete frame.
    qint64 garbageBytes() const { return m_garbageBytes; }

private:
    QByteArray m_pending; ///< starts with an unfinished probe or frame
    double m_pendingSinceMs = 0;
    qint64 m_totalBytes = 0;
    qint64 m_garbageBytes = 0;
};
