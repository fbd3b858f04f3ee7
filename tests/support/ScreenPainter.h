#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QRect>

struct xcb_connection_t;

/// Paints on the root window of an X server, for captures to see. Each call returns when it is done.
class ScreenPainter
{
public:
    explicit ScreenPainter(const QByteArray& display);
    ~ScreenPainter();
    ScreenPainter(const ScreenPainter&) = delete;
    ScreenPainter& operator=(const ScreenPainter&) = delete;

    void fill(const QRect& rect, const QColor& color);
    void draw(QPoint position, const QImage& image);

private:
    void finish();

    xcb_connection_t* m_connection = nullptr;
    uint m_root = 0;
    uint m_context = 0;
    uchar m_depth = 0;
};
