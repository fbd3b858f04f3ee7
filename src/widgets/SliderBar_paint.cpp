// How SliderBar looks.
#include "widgets/SliderBar.h"

#include <QLinearGradient>
#include <QPainter>
#include <cmath>

namespace {

constexpr int kPadding = 8; // around a text, pixels

QLinearGradient downwards(const QRectF& rect, const QColor& start, const QColor& end)
{
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0.0, start);
    gradient.setColorAt(1.0, end);
    return gradient;
}

} // namespace

QSize SliderBar::sizeHint() const
{
    double length = 0;
    int widest = 0;
    for (const Item& item : m_items) {
        length += itemLength(item);
        widest = qMax(widest, fontMetrics().horizontalAdvance(item.name));
    }
    const int along = static_cast<int>(std::ceil(length));
    return m_horizontal ? QSize(along, fontMetrics().height() + 2 * kPadding)
                        : QSize(widest + 2 * kPadding, along);
}

QSize SliderBar::minimumSizeHint() const
{
    // Wide enough that no text is cut.
    return m_horizontal ? sizeHint() : QSize(sizeHint().width(), m_items.size() * fontMetrics().height());
}

void SliderBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawBackground(painter);
    drawBar(painter);
    drawTexts(painter);
    if (hasFocus())
        drawFocus(painter);
}

void SliderBar::drawBackground(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(downwards(rect(), m_bgColorStart, m_bgColorEnd));
    painter.drawRoundedRect(rect(), m_bgRadius, m_bgRadius);
}

void SliderBar::drawBar(QPainter& painter)
{
    if (m_bar.isEmpty())
        return;
    const int radius = m_flat ? 0 : m_barRadius;
    painter.setPen(Qt::NoPen);
    painter.setBrush(downwards(m_bar, m_barColorStart, m_barColorEnd));
    painter.drawRoundedRect(m_bar, radius, radius);
    if (m_barStyle != BarStyle_Line)
        return;
    QRectF line = m_bar;
    if (m_horizontal)
        line.setTop(line.bottom() - m_lineWidth);
    else
        line.setLeft(line.right() - m_lineWidth);
    painter.fillRect(line, m_lineColor);
}

void SliderBar::drawTexts(QPainter& painter)
{
    for (int i = 0; i < m_items.size(); ++i) {
        painter.setPen(i == m_currentIndex ? m_textSelectColor : m_textNormalColor);
        painter.drawText(m_items.at(i).rect, Qt::AlignCenter, m_items.at(i).name);
    }
}

void SliderBar::drawFocus(QPainter& painter)
{
    if (m_currentIndex < 0)
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_lineColor, 1));
    const int radius = m_flat ? 0 : m_barRadius;
    painter.drawRoundedRect(m_items.at(m_currentIndex).rect.adjusted(1.5, 1.5, -1.5, -1.5), radius, radius);
}
