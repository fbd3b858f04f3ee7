#pragma once

#include "controllers/LV_RGB.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// A picture for a true-colour terminal. A character cell holds two pixels, one above the other, or a
/// character.
class TerminalCanvas
{
public:
    TerminalCanvas(int columns, int rows);

    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    /// Pixels are as wide as cells and half as high, so they are about square.
    int width() const { return m_columns; }
    int height() const { return 2 * m_rows; }

    void fill(LV_RGB color);
    /// Pixels outside are ignored.
    void setPixel(int x, int y, LV_RGB color);
    /// Plain ASCII over the pixels, in cells; what does not fit is cut.
    void text(int column, int row, const QString& text, LV_RGB color);

    /// The escape sequences that bring a terminal from `shown` to this picture; `shown` then holds what the
    /// terminal shows. Start with an empty one on a cleared screen.
    QByteArray render(QVector<QByteArray>& shown) const;

private:
    struct Cell
    {
        LV_RGB top, bottom;
        char16_t character = 0;
        LV_RGB ink;
    };
    QByteArray renderRow(int row) const;

    int m_columns, m_rows;
    QVector<Cell> m_cells;
};
