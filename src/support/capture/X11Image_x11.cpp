#include "support/capture/X11Image.h"

#include <QDebug>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace {
constexpr uint32_t kAllPlanes = ~0U;

size_t bytesOf(const QRect& rect)
{
    return size_t(rect.width()) * size_t(rect.height()) * 4;
}
} // namespace

X11Image::X11Image(xcb_connection_t* connection, bool shared)
    : m_connection(connection)
    , m_shared(shared)
{
}

X11Image::~X11Image()
{
    dropSegment();
    free(m_reply);
}

const unsigned char* X11Image::grab(uint32_t drawable, const QRect& rect)
{
    if (m_shared && !ensureSegment(bytesOf(rect))) {
        qWarning() << "[DeskDuplManager]: The display shares no memory, frames are copied";
        m_shared = false;
    }
    return m_shared ? grabShared(drawable, rect) : grabPlain(drawable, rect);
}

bool X11Image::ensureSegment(size_t bytes)
{
    if (m_memory && m_bytes >= bytes)
        return true;
    dropSegment();
    const int file = memfd_create("lumivar-capture", MFD_CLOEXEC);
    if (file < 0)
        return false;
    void* memory = MAP_FAILED;
    if (ftruncate(file, off_t(bytes)) == 0)
        memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) {
        close(file);
        return false;
    }
    const uint32_t segment = xcb_generate_id(m_connection);
    // The request takes the descriptor over.
    xcb_generic_error_t* error =
        xcb_request_check(m_connection, xcb_shm_attach_fd_checked(m_connection, segment, file, 0));
    if (error || xcb_connection_has_error(m_connection)) {
        free(error);
        munmap(memory, bytes);
        return false;
    }
    m_segment = segment;
    m_memory = memory;
    m_bytes = bytes;
    return true;
}

void X11Image::dropSegment()
{
    if (!m_memory)
        return;
    xcb_shm_detach(m_connection, m_segment);
    munmap(m_memory, m_bytes);
    m_memory = nullptr;
}

const unsigned char* X11Image::grabShared(uint32_t drawable, const QRect& rect)
{
    const auto cookie = xcb_shm_get_image(m_connection, drawable, int16_t(rect.x()), int16_t(rect.y()),
                                          uint16_t(rect.width()), uint16_t(rect.height()), kAllPlanes,
                                          XCB_IMAGE_FORMAT_Z_PIXMAP, m_segment, 0);
    xcb_generic_error_t* error = nullptr;
    xcb_shm_get_image_reply_t* reply = xcb_shm_get_image_reply(m_connection, cookie, &error);
    const bool complete = reply && reply->size >= bytesOf(rect);
    free(reply);
    free(error);
    return complete ? static_cast<const unsigned char*>(m_memory) : nullptr;
}

const unsigned char* X11Image::grabPlain(uint32_t drawable, const QRect& rect)
{
    free(m_reply);
    xcb_generic_error_t* error = nullptr;
    const auto cookie =
        xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, int16_t(rect.x()), int16_t(rect.y()),
                      uint16_t(rect.width()), uint16_t(rect.height()), kAllPlanes);
    xcb_get_image_reply_t* reply = xcb_get_image_reply(m_connection, cookie, &error);
    m_reply = reply;
    free(error);
    if (!reply || size_t(xcb_get_image_data_length(reply)) < bytesOf(rect))
        return nullptr;
    return xcb_get_image_data(reply);
}
