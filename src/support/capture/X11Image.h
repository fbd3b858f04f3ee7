#pragma once

#include <QRect>
#include <cstddef>
#include <cstdint>

struct xcb_connection_t;

/// Memory that the X server writes pictures into; plain replies where the server shares no memory.
/// The connection must outlive it.
class X11Image
{
public:
    X11Image(xcb_connection_t* connection, bool shared);
    ~X11Image();
    X11Image(const X11Image&) = delete;
    X11Image& operator=(const X11Image&) = delete;

    /// The pixels of a rectangle of a drawable, four bytes each and without gaps; valid until the next call.
    /// Null when the server refuses, as it does for a rectangle outside.
    const unsigned char* grab(uint32_t drawable, const QRect& rect);

private:
    bool ensureSegment(size_t bytes);
    void dropSegment();
    const unsigned char* grabShared(uint32_t drawable, const QRect& rect);
    const unsigned char* grabPlain(uint32_t drawable, const QRect& rect);

    xcb_connection_t* const m_connection;
    bool m_shared;
    uint32_t m_segment = 0;
    void* m_memory = nullptr;
    size_t m_bytes = 0;
    void* m_reply = nullptr;
};
