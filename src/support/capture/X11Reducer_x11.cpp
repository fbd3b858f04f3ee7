#include "support/capture/X11Reducer.h"

#include <cstdlib>
#include <memory>
#include <xcb/render.h>
#include <xcb/xcb.h>

namespace {
constexpr int kEnoughRows = 8;    // for an output row
constexpr int kEnoughColumns = 4; // for an output column; each is the mean of two
// The server's bilinear filter looks at two pixels, however many there are.
constexpr int kStrongest = 4;
constexpr char kFilter[] = "bilinear";

/// By which even number a length can be divided that `count` means of at least `enough` are made of.
int divisor(int length, int count, int enough)
{
    const int even = 2 * (length / (2 * enough * qMax(1, count)));
    return qBound(1, even, kStrongest);
}

xcb_render_fixed_t toFixed(double value)
{
    return xcb_render_fixed_t(value * 65536.0);
}
} // namespace

X11Reducer::X11Reducer(xcb_connection_t* connection, uint32_t drawable, uint32_t visual, uint8_t depth)
    : m_connection(connection)
    , m_drawable(drawable)
    , m_visual(visual)
    , m_depth(depth)
{
}

QSize X11Reducer::sizeFor(QSize area, QSize outputSize)
{
    return {area.width() / divisor(area.width(), outputSize.width(), kEnoughColumns),
            area.height() / divisor(area.height(), outputSize.height(), kEnoughRows)};
}

uint32_t X11Reducer::draw(const QRect& area, QSize size)
{
    if (!m_isTried && !prepare())
        m_format = 0;
    m_isTried = true;
    if (!m_format || !fits(size))
        return 0;
    if (area != m_area || size != m_size) {
        xcb_render_transform_t transform{};
        transform.matrix11 = toFixed(double(area.width()) / size.width());
        transform.matrix13 = toFixed(area.x());
        transform.matrix22 = toFixed(double(area.height()) / size.height());
        transform.matrix23 = toFixed(area.y());
        transform.matrix33 = toFixed(1);
        xcb_render_set_picture_transform(m_connection, m_source, transform);
        m_area = area;
        m_size = size;
    }
    xcb_render_composite(m_connection, XCB_RENDER_PICT_OP_SRC, m_source, XCB_NONE, m_target, 0, 0, 0, 0, 0, 0,
                         uint16_t(size.width()), uint16_t(size.height()));
    return m_pixmap;
}

/// Pictures of the drawable with its windows, if the server knows the extension and the filter.
bool X11Reducer::prepare()
{
    const auto* extension = xcb_get_extension_data(m_connection, &xcb_render_id);
    if (!extension || !extension->present)
        return false;
    m_format = formatOfVisual();
    if (!m_format)
        return false;
    m_source = xcb_generate_id(m_connection);
    const uint32_t withWindows[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    const xcb_void_cookie_t cookies[] = {
        xcb_render_create_picture_checked(m_connection, m_source, m_drawable, m_format,
                                          XCB_RENDER_CP_SUBWINDOW_MODE, withWindows),
        xcb_render_set_picture_filter_checked(m_connection, m_source, sizeof kFilter - 1, kFilter, 0,
                                              nullptr)};
    bool isDone = true;
    for (const auto& cookie : cookies) {
        xcb_generic_error_t* error = xcb_request_check(m_connection, cookie);
        isDone = isDone && !error;
        free(error);
    }
    return isDone;
}

/// Sees to a pixmap of at least that size.
bool X11Reducer::fits(QSize size)
{
    const QSize wanted = m_pixmapSize.expandedTo(size);
    if (wanted == m_pixmapSize)
        return true;
    if (m_pixmap) {
        xcb_render_free_picture(m_connection, m_target);
        xcb_free_pixmap(m_connection, m_pixmap);
    }
    m_pixmap = xcb_generate_id(m_connection);
    m_target = xcb_generate_id(m_connection);
    const auto pixmap = xcb_create_pixmap_checked(m_connection, m_depth, m_pixmap, m_drawable,
                                                  uint16_t(wanted.width()), uint16_t(wanted.height()));
    const auto picture =
        xcb_render_create_picture_checked(m_connection, m_target, m_pixmap, m_format, 0, nullptr);
    bool isDone = true;
    for (const auto& cookie : {pixmap, picture}) {
        xcb_generic_error_t* error = xcb_request_check(m_connection, cookie);
        isDone = isDone && !error;
        free(error);
    }
    if (isDone)
        m_pixmapSize = wanted;
    else
        m_format = 0; // no memory for it; whole pictures are read
    return isDone;
}

uint32_t X11Reducer::formatOfVisual()
{
    const std::unique_ptr<xcb_render_query_pict_formats_reply_t, decltype(&free)> reply(
        xcb_render_query_pict_formats_reply(m_connection, xcb_render_query_pict_formats(m_connection),
                                            nullptr),
        &free);
    if (!reply)
        return 0;
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get()); screen.rem;
         xcb_render_pictscreen_next(&screen)) {
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem;
             xcb_render_pictdepth_next(&depth)) {
            for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem;
                 xcb_render_pictvisual_next(&visual)) {
                if (visual.data->visual == m_visual)
                    return visual.data->format;
            }
        }
    }
    return 0;
}
