#include "support/capture/X11Grabber.h"

#include "support/capture/X11ChangeWatch.h"
#include "support/capture/X11Image.h"
#include "support/capture/X11Reducer.h"

#include <QDebug>
#include <cstdlib>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace {
template <typename T>
struct Free
{
    void operator()(T* reply) const { free(reply); }
};
template <typename T>
std::unique_ptr<T, Free<T>> owned(T* reply)
{
    return std::unique_ptr<T, Free<T>>(reply);
}

bool isAtLeast(uint32_t major, uint32_t minor, uint32_t wantedMajor, uint32_t wantedMinor)
{
    return major > wantedMajor || (major == wantedMajor && minor >= wantedMinor);
}

/// The byte of a 32-bit pixel that the mask selects; -1 unless it is exactly one.
int byteOf(uint32_t mask, bool bigEndian)
{
    for (int byte = 0; byte < 4; ++byte) {
        if (mask == 0xFFU << (8 * byte))
            return bigEndian ? 3 - byte : byte;
    }
    return -1;
}

const xcb_visualtype_t* rootVisual(const xcb_screen_t* screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem; xcb_depth_next(&depth)) {
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual)) {
            if (visual.data->visual_id == screen->root_visual)
                return visual.data;
        }
    }
    return nullptr;
}

int bitsPerPixel(const xcb_setup_t* setup, int depth)
{
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem; xcb_format_next(&format)) {
        if (format.data->depth == depth)
            return format.data->bits_per_pixel;
    }
    return 0;
}
} // namespace

X11Grabber::X11Grabber(QByteArray display)
    : m_display(std::move(display))
    , m_wakeFile(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
}

X11Grabber::~X11Grabber()
{
    X11Grabber::close();
    ::close(m_wakeFile);
}

bool X11Grabber::open()
{
    int screenNumber = 0;
    m_connection = xcb_connect(m_display.constData(), &screenNumber);
    m_abortFile = xcb_get_file_descriptor(m_connection);
    if (!isOpen())
        return false;
    if (!readFormat(screenNumber)) {
        close();
        return false;
    }
    openExtensions();
    return isOpen();
}

void X11Grabber::close()
{
    if (!m_connection)
        return;
    m_watch.reset();
    m_reducer.reset();
    m_image.reset();
    m_abortFile = -1;
    xcb_disconnect(m_connection);
    m_connection = nullptr;
    m_randrEvent = -1;
    m_hasMonitors = false;
}

bool X11Grabber::isOpen() const
{
    return m_connection && !xcb_connection_has_error(m_connection);
}

bool X11Grabber::readFormat(int screenNumber)
{
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    auto screen = xcb_setup_roots_iterator(setup);
    for (; screen.rem > 1 && screenNumber > 0; --screenNumber)
        xcb_screen_next(&screen);
    m_root = screen.data->root;
    const xcb_visualtype_t* visual = rootVisual(screen.data);
    const int depth = screen.data->root_depth;
    if (!visual || bitsPerPixel(setup, depth) != 32) {
        refuse(QStringLiteral("a depth of %1 bits").arg(depth));
        return false;
    }
    const bool bigEndian = setup->image_byte_order == XCB_IMAGE_ORDER_MSB_FIRST;
    m_format.redByte = byteOf(visual->red_mask, bigEndian);
    m_format.greenByte = byteOf(visual->green_mask, bigEndian);
    m_format.blueByte = byteOf(visual->blue_mask, bigEndian);
    if (m_format.redByte < 0 || m_format.greenByte < 0 || m_format.blueByte < 0) {
        refuse(QStringLiteral("colours of other than 8 bits"));
        return false;
    }
    m_reducer = std::make_unique<X11Reducer>(m_connection, m_root, visual->visual_id, uint8_t(depth));
    return true;
}

void X11Grabber::openExtensions()
{
    xcb_prefetch_extension_data(m_connection, &xcb_shm_id);
    xcb_prefetch_extension_data(m_connection, &xcb_render_id);
    xcb_prefetch_extension_data(m_connection, &xcb_randr_id);
    xcb_prefetch_extension_data(m_connection, &xcb_damage_id);

    m_image = std::make_unique<X11Image>(m_connection, hasSharedMemory());
    m_watch = std::make_unique<X11ChangeWatch>(m_connection, m_root);
    const auto* randr = xcb_get_extension_data(m_connection, &xcb_randr_id);
    if (!randr || !randr->present)
        return;
    const auto version = owned(
        xcb_randr_query_version_reply(m_connection, xcb_randr_query_version(m_connection, 1, 5), nullptr));
    m_hasMonitors = version && isAtLeast(version->major_version, version->minor_version, 1, 5);
    m_randrEvent = randr->first_event;
    xcb_randr_select_input(m_connection, m_root,
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    xcb_flush(m_connection);
}

bool X11Grabber::hasSharedMemory()
{
    const auto* extension = xcb_get_extension_data(m_connection, &xcb_shm_id);
    if (!extension || !extension->present)
        return false;
    const auto version =
        owned(xcb_shm_query_version_reply(m_connection, xcb_shm_query_version(m_connection), nullptr));
    return version && isAtLeast(version->major_version, version->minor_version, 1, 2);
}

CaptureSources X11Grabber::sources()
{
    m_sourcesChanged = false;
    if (const auto root =
            owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_root), nullptr)))
        m_rootSize = QSize(root->width, root->height);
    if (m_hasMonitors)
        return monitors();
    const QString name = QStringLiteral("screen");
    return {CaptureSource{name, name, QRect(QPoint(), m_rootSize), true}};
}

CaptureSources X11Grabber::monitors()
{
    const auto reply = owned(
        xcb_randr_get_monitors_reply(m_connection, xcb_randr_get_monitors(m_connection, m_root, 1), nullptr));
    if (!reply)
        return {};
    CaptureSources sources;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(reply.get()); it.rem;
         xcb_randr_monitor_info_next(&it)) {
        const xcb_randr_monitor_info_t& info = *it.data;
        const QString name = atomName(info.name);
        const CaptureSource source{name, name, QRect(info.x, info.y, info.width, info.height),
                                   info.primary != 0};
        if (name.isEmpty() || source.geometry.isEmpty())
            continue;
        if (source.primary)
            sources.prepend(source);
        else
            sources.append(source);
    }
    return sources;
}

bool X11Grabber::takeSourcesChanged()
{
    if (!isOpen())
        return false;
    readEvents();
    m_pictureChanged = false;
    m_watch->rest();
    return std::exchange(m_sourcesChanged, false);
}

bool X11Grabber::tellsOfChange(const CaptureSource& source)
{
    return m_watch->tellsOfChange(source.id);
}

ScreenGrabber::Result X11Grabber::grab(const CaptureSource& source, QSize outputSize, bool force,
                                       cv::Mat& frame)
{
    readEvents();
    if (!force && m_watch->isUnchanged(source.id))
        return Result::Unchanged;
    const QRect rect = source.geometry & QRect(QPoint(), m_rootSize);
    if (rect.isEmpty())
        return Result::Failed;
    m_watch->beforeGrab(source.id);
    SourcePixels view = m_format;
    view.size = X11Reducer::sizeFor(rect.size(), outputSize);
    const uint32_t reduced = view.size == rect.size() ? 0 : m_reducer->draw(rect, view.size);
    if (!reduced)
        view.size = rect.size();
    view.data = reduced ? m_image->grab(reduced, QRect(QPoint(), view.size)) : m_image->grab(m_root, rect);
    if (!view.data) { // the screen became smaller, or the server is gone
        m_sourcesChanged = true;
        return Result::Failed;
    }
    readEvents();
    if (reduced &&
        m_sourcesChanged) // the screen may have become smaller: beyond its edge all was drawn black
        return Result::Failed;
    view.stride = qint64(view.size.width()) * 4;
    frame = scaleFrame(view, outputSize);
    m_watch->afterGrab(source.id, frame);
    return Result::Frame;
}

void X11Grabber::wait(std::chrono::microseconds time)
{
    if (isOpen()) {
        xcb_flush(m_connection);
        readEvents();
        if (m_sourcesChanged || m_pictureChanged)
            return;
    }
    pollfd files[2] = {{m_wakeFile, POLLIN, 0}, {-1, POLLIN, 0}};
    if (isOpen())
        files[1].fd = xcb_get_file_descriptor(m_connection);
    const timespec timeout{time_t(time.count() / 1000000), long(time.count() % 1000000) * 1000};
    ppoll(files, 2, &timeout, nullptr);
    uint64_t count = 0;
    [[maybe_unused]] const auto size = read(m_wakeFile, &count, sizeof count);
}

void X11Grabber::wake()
{
    const uint64_t one = 1;
    [[maybe_unused]] const auto size = write(m_wakeFile, &one, sizeof one);
}

void X11Grabber::abort()
{
    const int file = m_abortFile;
    if (file >= 0)
        shutdown(file, SHUT_RDWR);
}

void X11Grabber::readEvents()
{
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
        const int type = event->response_type & 0x7F;
        if (m_randrEvent >= 0 && (type == m_randrEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                  type == m_randrEvent + XCB_RANDR_NOTIFY))
            m_sourcesChanged = true;
        m_pictureChanged = m_watch->handleEvent(type, event->full_sequence) || m_pictureChanged;
    }
}

QString X11Grabber::atomName(uint32_t atom)
{
    const auto reply =
        owned(xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!reply)
        return QString();
    return QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
}

void X11Grabber::refuse(const QString& reason)
{
    if (m_refused == reason)
        return;
    m_refused = reason;
    qWarning().noquote() << "[DeskDuplManager]: Cannot capture a display with" << reason;
}
