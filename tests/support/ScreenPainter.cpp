#include "ScreenPainter.h"

#include <cstdlib>
#include <xcb/xcb.h>

ScreenPainter::ScreenPainter(const QByteArray& display)
    : m_connection(xcb_connect(display.constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection))
        qFatal("no display to paint on");
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_root = screen->root;
    m_depth = screen->root_depth;
    m_context = xcb_generate_id(m_connection);
    xcb_create_gc(m_connection, m_context, m_root, 0, nullptr);
}

ScreenPainter::~ScreenPainter()
{
    xcb_disconnect(m_connection);
}

void ScreenPainter::fill(const QRect& rect, const QColor& color)
{
    const uint32_t pixel = color.rgb() & 0xFFFFFFU;
    xcb_change_gc(m_connection, m_context, XCB_GC_FOREGROUND, &pixel);
    const xcb_rectangle_t area{int16_t(rect.x()), int16_t(rect.y()), uint16_t(rect.width()),
                               uint16_t(rect.height())};
    xcb_poly_fill_rectangle(m_connection, m_root, m_context, 1, &area);
    finish();
}

void ScreenPainter::draw(QPoint position, const QImage& image)
{
    constexpr int kRowsAtOnce = 64; // stays below the longest request
    const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < pixels.height(); y += kRowsAtOnce) {
        const int rows = qMin(kRowsAtOnce, pixels.height() - y);
        xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, m_context, uint16_t(pixels.width()),
                      uint16_t(rows), int16_t(position.x()), int16_t(position.y() + y), 0, m_depth,
                      uint32_t(pixels.bytesPerLine() * rows), pixels.constScanLine(y));
    }
    finish();
}

void ScreenPainter::finish()
{
    free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}
