#pragma once

#include <QRect>
#include <cstdint>

struct xcb_connection_t;

/// Lets the X server make pictures of a drawable smaller before they are read: most of a frame's cost is to
/// move its pixels from the server to here. Its pixels are means of neighbours. The connection must outlive
/// it.
class X11Reducer
{
public:
    /// The visual is that of the drawable.
    X11Reducer(xcb_connection_t* connection, uint32_t drawable, uint32_t visual, uint8_t depth);

    /// The size to read of an area that is scaled to `outputSize` afterwards: as many rows and columns for
    /// each of its pixels as a mean needs, of every four pixels in a row or column two at least looked at.
    /// The size of the area itself where nothing can be saved.
    static QSize sizeFor(QSize area, QSize outputSize);

    /// Draws an area of the drawable at a smaller size and returns the pixmap that holds it at its top left
    /// corner; 0 when the server cannot.
    uint32_t draw(const QRect& area, QSize size);

private:
    bool prepare();
    bool fits(QSize size);
    uint32_t formatOfVisual();

    xcb_connection_t* const m_connection;
    const uint32_t m_drawable;
    const uint32_t m_visual;
    const uint8_t m_depth;
    bool m_isTried = false;
    uint32_t m_format = 0; ///< 0: the server cannot
    uint32_t m_source = 0;
    uint32_t m_pixmap = 0;
    uint32_t m_target = 0; ///< the picture in the pixmap
    QSize m_pixmapSize;
    QRect m_area; ///< what the source's transformation is for, as is the size
    QSize m_size;
};
