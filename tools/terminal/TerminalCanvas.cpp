#include "TerminalCanvas.h"

#include <algorithm>

namespace {

const QByteArray kReset = QByteArrayLiteral("\x1b[0m");
const QByteArray kUpperHalf = QByteArrayLiteral("\u2580");
const QByteArray kBlank = QByteArrayLiteral(" ");

QByteArray colorCode(const char* ground, LV_RGB color)
{
    return QByteArray(ground) + "8;2;" + QByteArray::number(color.red) + ';' +
           QByteArray::number(color.green) + ';' + QByteArray::number(color.blue);
}

} // namespace

TerminalCanvas::TerminalCanvas(int columns, int rows)
    : m_columns(std::max(columns, 1))
    , m_rows(std::max(rows, 1))
    , m_cells(m_columns * m_rows)
{
}

void TerminalCanvas::fill(LV_RGB color)
{
    m_cells.fill({color, color, 0, {}});
}

void TerminalCanvas::setPixel(int x, int y, LV_RGB color)
{
    if (x < 0 || x >= width() || y < 0 || y >= height())
        return;
    Cell& cell = m_cells[y / 2 * m_columns + x];
    (y % 2 == 0 ? cell.top : cell.bottom) = color;
}

void TerminalCanvas::text(int column, int row, const QString& text, LV_RGB color)
{
    if (row < 0 || row >= m_rows)
        return;
    for (const QChar c : text) {
        if (column >= 0 && column < m_columns) {
            m_cells[row * m_columns + column].character = c.unicode();
            m_cells[row * m_columns + column].ink = color;
        }
        ++column;
    }
}

QByteArray TerminalCanvas::render(QVector<QByteArray>& shown) const
{
    shown.resize(m_rows);
    QByteArray out;
    for (int row = 0; row < m_rows; ++row) {
        const QByteArray line = renderRow(row);
        if (line == shown[row])
            continue;
        out += "\x1b[" + QByteArray::number(row + 1) + ";1H" + line;
        shown[row] = line;
    }
    return out;
}

QByteArray TerminalCanvas::renderRow(int row) const
{
    QByteArray out = kReset;
    QByteArray style;
    for (int column = 0; column < m_columns; ++column) {
        const Cell& cell = m_cells[row * m_columns + column];
        const bool isText = cell.character != 0;
        const bool isSplit = !isText && cell.top != cell.bottom;
        QByteArray wanted = colorCode("4", cell.bottom);
        if (isText || isSplit)
            wanted += ';' + colorCode("3", isText ? cell.ink : cell.top);
        if (wanted != style)
            out += "\x1b[" + wanted + 'm';
        style = wanted;
        out += isText ? QString(QChar(cell.character)).toUtf8() : isSplit ? kUpperHalf : kBlank;
    }
    return out + kReset;
}
