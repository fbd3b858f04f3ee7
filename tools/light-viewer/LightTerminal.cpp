#include "LightTerminal.h"

#include "LightGrid.h"

#include <algorithm>

namespace {
constexpr LV_RGB kGround{9, 10, 13};
constexpr LV_RGB kInk{95, 100, 112};
constexpr int kSampledLeds = 8;
constexpr int kLineMs = 1000;
} // namespace

LightTerminal::LightTerminal()
{
    if (Terminal::isOutput())
        m_terminal = std::make_unique<Terminal>();
}

void LightTerminal::show(const QVector<LV_RGB>& colors)
{
    const QString count = QStringLiteral("%1 LEDs").arg(colors.size());
    if (m_terminal) {
        fit(colors.size());
        m_canvas.fill(kGround);
        m_glow->paint(colors, kGround, m_canvas);
        m_canvas.text((m_canvas.columns() - count.size()) / 2, m_canvas.rows() - 1, count, kInk);
        Terminal::write(m_canvas.render(m_shown));
        return;
    }
    if (m_sinceLine.isValid() && m_sinceLine.elapsed() < kLineMs)
        return;
    m_sinceLine.start();
    QByteArray line = count.toUtf8();
    const int sampled = std::min(colors.size(), kSampledLeds);
    for (int i = 0; i < sampled; ++i) {
        const LV_RGB& color = colors[i * colors.size() / sampled];
        line += " #" + QByteArray(reinterpret_cast<const char*>(&color), 3).toHex();
    }
    Terminal::write(line + '\n');
}

void LightTerminal::fit(int leds)
{
    const QSize cells = Terminal::size();
    if (cells == QSize(m_canvas.columns(), m_canvas.rows()) && leds == m_leds)
        return;
    m_leds = leds;
    m_canvas = TerminalCanvas(cells.width(), cells.height());
    m_shown.clear();

    const LightGrid grid = LightGrid::of(leds);
    const double pitch = std::min(double(m_canvas.width()) / (grid.columns + 1),
                                  double(m_canvas.height() - 2) / (grid.rows + 1));
    const double left = (m_canvas.width() - pitch * (grid.columns - 1)) / 2;
    const double top = (m_canvas.height() - 2 - pitch * (grid.rows - 1)) / 2;
    QVector<QPointF> places;
    for (int i = 0; i < leds; ++i) {
        const QPoint cell = grid.cellOf(i);
        places.append({left + pitch * cell.x(), top + pitch * cell.y()});
    }
    m_glow = std::make_unique<GlowPicture>(m_canvas.width(), m_canvas.height(), places,
                                           std::max(0.32 * pitch, 0.8), QRectF());
}
