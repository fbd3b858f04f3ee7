#include "widgets/SliderBar.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <cmath>

namespace {

constexpr int kTickMs = 10;
constexpr double kStepFactor = 1.4;

} // namespace

SliderBar::SliderBar(QWidget* parent)
    : QWidget(parent)
{
    m_timer.setInterval(kTickMs);
    connect(&m_timer, &QTimer::timeout, this, &SliderBar::slide);
}

// --- items ---

void SliderBar::clearItem()
{
    m_items.clear();
    m_itemsText.clear();
    m_currentIndex = -1;
    m_currentItem.clear();
    m_timer.stop();
    m_bar = QRectF();
    updateGeometry();
    update();
}

void SliderBar::setItems(QString items)
{
    m_itemsText = items;
    m_items.clear();
    for (const QString& name : items.split(u';', Qt::SkipEmptyParts))
        m_items.append({name.trimmed(), QRectF()});
    if (m_currentIndex >= m_items.size())
        m_currentIndex = -1;
    m_currentItem = m_currentIndex < 0 ? QString() : m_items.at(m_currentIndex).name;
    relayout();
    update();
}

void SliderBar::setCurrentIndex(int index)
{
    moveTo(index);
}

void SliderBar::setCurrentItem(QString item)
{
    moveTo(item);
}

void SliderBar::moveFirst()
{
    moveTo(0);
}

void SliderBar::moveLast()
{
    moveTo(m_items.size() - 1);
}

void SliderBar::movePrevious()
{
    moveTo(m_currentIndex - 1);
}

void SliderBar::moveNext()
{
    moveTo(m_currentIndex + 1);
}

void SliderBar::moveTo(int index)
{
    if (index >= 0 && index < m_items.size())
        moveTo(m_items.at(index).rect.center());
}

void SliderBar::moveTo(QString item)
{
    for (const Item& candidate : qAsConst(m_items)) {
        if (candidate.name == item) {
            moveTo(candidate.rect.center());
            return;
        }
    }
}

void SliderBar::moveTo(QPointF point)
{
    // Neighbours share an edge: the later one has it.
    int index = -1;
    for (int i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i).rect.contains(point))
            index = i;
    }
    if (index < 0)
        return;
    m_currentIndex = index;
    m_currentItem = m_items.at(index).name;
    m_target = m_items.at(index).rect;
    m_position = axis(m_bar);
    m_forward = axis(m_target) > m_position;
    m_step = initStep(std::abs(axis(m_target) - m_position));
    m_timer.start();
    update();
    tellValue(this);
    emit currentItemChanged(m_currentIndex, m_currentItem);
}

// --- motion ---

int SliderBar::initStep(double distance)
{
    int n = 1;
    if (distance >= 1) {
        for (n = 2; static_cast<double>(n) * n <= distance;)
            ++n;
    }
    return static_cast<int>(n * kStepFactor);
}

void SliderBar::slide()
{
    if (m_step > 1)
        --m_step;
    const double target = axis(m_target);
    m_position += m_forward ? m_step : -m_step;
    if (m_forward ? m_position >= target : m_position <= target) {
        m_timer.stop();
        m_position = target;
    }
    m_bar = m_horizontal ? QRectF(m_position, 0, m_target.width(), height())
                         : QRectF(0, m_position, width(), m_target.height());
    update();
}

/// Puts the highlight on the current item without a slide.
void SliderBar::placeBar()
{
    m_timer.stop();
    m_bar = m_currentIndex < 0 ? QRectF() : m_items.at(m_currentIndex).rect;
}

double SliderBar::itemLength(const Item& item) const
{
    return (m_horizontal ? fontMetrics().horizontalAdvance(item.name) : fontMetrics().height()) + m_space;
}

/// Gives each item its text's length plus the space, stretched so that all together fill the widget. A row
/// runs in the direction of the layout.
void SliderBar::layoutItems()
{
    double sum = 0;
    for (const Item& item : qAsConst(m_items))
        sum += itemLength(item);
    const double stretch = (m_horizontal ? width() : height()) / qMax(1.0, sum);
    double at = 0;
    for (Item& item : m_items) {
        const double length = itemLength(item) * stretch;
        const double from = isRightToLeft() ? width() - at - length : at;
        item.rect = m_horizontal ? QRectF(from, 0, length, height()) : QRectF(0, at, width(), length);
        at += length;
    }
}

void SliderBar::relayout()
{
    layoutItems();
    placeBar();
    updateGeometry();
}

// --- events ---

void SliderBar::resizeEvent(QResizeEvent*)
{
    layoutItems();
    if (m_currentItem.isEmpty())
        moveFirst();
    placeBar();
}

void SliderBar::changeEvent(QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::FontChange || type == QEvent::StyleChange || type == QEvent::LayoutDirectionChange) {
        relayout();
        update();
    }
    QWidget::changeEvent(event);
}

void SliderBar::mousePressEvent(QMouseEvent* event)
{
    moveTo(QPointF(event->pos()));
}

void SliderBar::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool isMirrored = m_horizontal && isRightToLeft();
    if (m_keyMove && (key == Qt::Key_Up || key == (isMirrored ? Qt::Key_Right : Qt::Key_Left)))
        movePrevious();
    else if (m_keyMove && (key == Qt::Key_Down || key == (isMirrored ? Qt::Key_Left : Qt::Key_Right)))
        moveNext();
    else
        QWidget::keyPressEvent(event);
}

// --- properties ---

template <typename T>
void SliderBar::assign(T& field, const T& value)
{
    field = value;
    update();
}

void SliderBar::setBgColorStart(const QColor& color)
{
    assign(m_bgColorStart, color);
}

void SliderBar::setBgColorEnd(const QColor& color)
{
    assign(m_bgColorEnd, color);
}

void SliderBar::setBarColorStart(const QColor& color)
{
    assign(m_barColorStart, color);
}

void SliderBar::setBarColorEnd(const QColor& color)
{
    assign(m_barColorEnd, color);
}

void SliderBar::setTextNormalColor(const QColor& color)
{
    assign(m_textNormalColor, color);
}

void SliderBar::setTextSelectColor(const QColor& color)
{
    assign(m_textSelectColor, color);
}

void SliderBar::setBgRadius(int radius)
{
    assign(m_bgRadius, radius);
}

void SliderBar::setBarRadius(int radius)
{
    assign(m_barRadius, radius);
}

void SliderBar::setSpace(int space)
{
    assign(m_space, space);
    relayout();
}

void SliderBar::setLineWidth(int width)
{
    assign(m_lineWidth, width);
}

void SliderBar::setLineColor(const QColor& color)
{
    assign(m_lineColor, color);
}

void SliderBar::setBarStyle(BarStyle style)
{
    assign(m_barStyle, style);
}

void SliderBar::setKeyMove(bool keyMove)
{
    m_keyMove = keyMove;
    setFocusPolicy(keyMove ? Qt::StrongFocus : Qt::NoFocus);
}

void SliderBar::setHorizontal(bool horizontal)
{
    assign(m_horizontal, horizontal);
    relayout();
}

void SliderBar::setFlat(bool flat)
{
    assign(m_flat, flat);
}
