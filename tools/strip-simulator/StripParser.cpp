#include "StripParser.h"

#include <algorithm>
#include <cstring>

namespace {

const QByteArray kProbe = QByteArrayLiteral("Moni-A");
const QByteArray kFrameMark("Ada\0", 4);
constexpr int kHeaderBytes = 6;

/// Whether the bytes could be, or go on to be, the mark.
bool beginsLike(const char* data, int size, const QByteArray& mark)
{
    return std::memcmp(data, mark.constData(), static_cast<size_t>(std::min(size, mark.size()))) == 0;
}

int ledsIn(const char* header)
{
    return static_cast<uchar>(header[4]) << 8 | static_cast<uchar>(header[5]);
}

} // namespace

StripParser::Events StripParser::feed(const QByteArray& bytes, double nowMs)
{
    Events events;
    const int oldBytes = m_pending.size();
    m_pending += bytes;
    m_totalBytes += bytes.size();

    const char* data = m_pending.constData();
    const int size = m_pending.size();
    int pos = 0;
    while (pos < size) {
        const char* here = data + pos;
        const int left = size - pos;
        if (beginsLike(here, left, kProbe)) {
            if (left < kProbe.size())
                break;
            ++events.probes;
            pos += kProbe.size();
        } else if (beginsLike(here, left, kFrameMark)) {
            if (left < kHeaderBytes || left < kHeaderBytes + 3 * ledsIn(here))
                break;
            StripFrame frame;
            frame.colors.resize(ledsIn(here));
            std::copy_n(here + kHeaderBytes, 3 * frame.colors.size(),
                        reinterpret_cast<char*>(frame.colors.data()));
            frame.firstByteMs = pos < oldBytes ? m_pendingSinceMs : nowMs;
            frame.lastByteMs = nowMs;
            pos += kHeaderBytes + 3 * frame.colors.size();
            frame.totalBytes = m_totalBytes - (size - pos);
            events.frames.append(frame);
        } else {
            ++m_garbageBytes;
            ++pos;
        }
    }
    if (pos >= oldBytes)
        m_pendingSinceMs = nowMs;
    m_pending.remove(0, pos);
    return events;
}

void StripParser::reset()
{
    m_garbageBytes += m_pending.size();
    m_pending.clear();
}
