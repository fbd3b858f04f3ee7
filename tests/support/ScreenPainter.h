#pragma once

#include <QColor>
#include <QImage>
#include <cstdlib>
#include <xcb/xcb.h>

/// Paints on the root window of an X server, for captures to see. Each call returns when it is done.
class ScreenPainter
{
public:
    explicit ScreenPainter(const QByteArray& display)
        : m_connection(xcb_connect(display.constData(), nullptr))
        , m_context(xcb_generate_id(m_connection))
    {
        if (xcb_connection_has_error(m_connection))
            qFatal("no display to paint on");
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        xcb_create_gc(m_connection, m_context, m_screen->root, 0, nullptr);
    }
    ~ScreenPainter() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY(ScreenPainter)

    void fill(const QRect& rect, const QColor& color)
    {
        const uint32_t pixel = color.rgb() & 0xFFFFFFU;
        xcb_change_gc(m_connection, m_context, XCB_GC_FOREGROUND, &pixel);
        const xcb_rectangle_t area{int16_t(rect.x()), int16_t(rect.y()), uint16_t(rect.width()),
                                   uint16_t(rect.height())};
        xcb_poly_fill_rectangle(m_connection, m_screen->root, m_context, 1, &area);
        finish();
    }
    void draw(QPoint position, const QImage& image)
    {
        constexpr int kRowsAtOnce = 64; // stays below the longest request
        const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < pixels.height(); y += kRowsAtOnce) {
            const int rows = qMin(kRowsAtOnce, pixels.height() - y);
            xcb_put_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, m_context,
                          uint16_t(pixels.width()), uint16_t(rows), int16_t(position.x()),
                          int16_t(position.y() + y), 0, m_screen->root_depth,
                          uint32_t(pixels.bytesPerLine() * rows), pixels.constScanLine(y));
        }
        finish();
    }

private:
    void finish()
    {
        free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    xcb_connection_t* m_connection;
    xcb_gcontext_t m_context;
    const xcb_screen_t* m_screen = nullptr;
};
