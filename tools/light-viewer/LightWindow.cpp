#include "LightWindow.h"

#include "LightGrid.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int kMarginPx = 48;
constexpr int kHaloSteps = 4; // pixels of the halo's picture from LED to LED
const QColor kGround(11, 12, 16);
const QColor kUnlit(26, 28, 35);
const QColor kInk(110, 116, 130);

QColor lit(LV_RGB color, double factor = 1)
{
    const auto channel = [factor](int value) { return std::min(static_cast<int>(value * factor), 255); };
    return {channel(color.red), channel(color.green), channel(color.blue)};
}

} // namespace

LightWindow::LightWindow()
{
    setWindowTitle(QStringLiteral("light-viewer"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    resize(1040, 540);
}

void LightWindow::show(const QVector<LV_RGB>& colors)
{
    m_colors = colors;
    update();
}

void LightWindow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), kGround);
    painter.setPen(kInk);
    if (m_colors.isEmpty()) {
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("waiting for light"));
        return;
    }
    const QRectF area = gridArea();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    paintSockets(painter, area);
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    paintHalo(painter, area);
    paintDots(painter, area);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(kInk);
    painter.drawText(rect().adjusted(0, 0, 0, -12), Qt::AlignHCenter | Qt::AlignBottom,
                     QStringLiteral("%1 LEDs").arg(m_colors.size()));
}

/// The cells of all LEDs, square, in the middle of the window.
QRectF LightWindow::gridArea() const
{
    const LightGrid grid = LightGrid::of(m_colors.size());
    const double cell = std::min(double(width() - 2 * kMarginPx) / grid.columns,
                                 double(height() - 2 * kMarginPx) / grid.rows);
    const QSizeF size(cell * grid.columns, cell * grid.rows);
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QPointF LightWindow::centreOf(int led, const QRectF& area) const
{
    const LightGrid grid = LightGrid::of(m_colors.size());
    return area.topLeft() + (QPointF(grid.cellOf(led)) + QPointF(0.5, 0.5)) * (area.width() / grid.columns);
}

/// What an unlit LED looks like.
void LightWindow::paintSockets(QPainter& painter, const QRectF& area)
{
    const double radius = 0.26 * area.width() / LightGrid::of(m_colors.size()).columns;
    painter.setBrush(kUnlit);
    for (int i = 0; i < m_colors.size(); ++i)
        painter.drawEllipse(centreOf(i, area), radius, radius);
}

/// A picture with a pixel a LED, scaled up twice, is as soft as a blur and much cheaper.
void LightWindow::paintHalo(QPainter& painter, const QRectF& area)
{
    const LightGrid grid = LightGrid::of(m_colors.size());
    QImage pixels(grid.columns + 4, grid.rows + 4, QImage::Format_RGB32);
    pixels.fill(Qt::black);
    for (int i = 0; i < m_colors.size(); ++i)
        pixels.setPixelColor(grid.cellOf(i) + QPoint(2, 2), lit(m_colors[i], 0.5));
    const QImage soft =
        pixels.scaled(pixels.size() * kHaloSteps, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const double cell = area.width() / grid.columns;
    painter.drawImage(area.adjusted(-2 * cell, -2 * cell, 2 * cell, 2 * cell), soft);
}

void LightWindow::paintDots(QPainter& painter, const QRectF& area)
{
    const double cell = area.width() / LightGrid::of(m_colors.size()).columns;
    for (int i = 0; i < m_colors.size(); ++i) {
        const QPointF centre = centreOf(i, area);
        const LV_RGB color = m_colors[i];
        if (color == LV_RGB{})
            continue;
        QRadialGradient glow(centre, 0.38 * cell);
        glow.setColorAt(0, lit(color, 1.5));
        glow.setColorAt(0.5, lit(color));
        glow.setColorAt(1, Qt::black); // adds nothing
        painter.setBrush(glow);
        painter.drawEllipse(centre, 0.38 * cell, 0.38 * cell);
    }
}
