#include "widgets/StackLayout.h"

#include <QWidget>

namespace {

/// Counts for a parent that is not on the screen yet as well, so that sizes are right before it appears.
bool isShown(QLayoutItem* item)
{
    return item->widget() != nullptr && !item->widget()->isHidden();
}

/// A text that wraps needs the more height the narrower it is.
int heightOf(const QLayoutItem* item, int width)
{
    return item->hasHeightForWidth() && width > 0 ? item->heightForWidth(width) : item->sizeHint().height();
}

/// Inner layouts renew their hints by posted events only; whoever asks for the whole needs them at once.
void renewHints(const QWidget* widget)
{
    const auto children = widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children) {
        if (!child->isWindow())
            renewHints(child);
    }
    if (widget->layout())
        widget->layout()->activate();
}

QSize withMargins(const QSize& size, const QMargins& margins)
{
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

} // namespace

StackLayout::StackLayout(QWidget* parent)
    : QLayout(parent)
{
}

StackLayout::~StackLayout()
{
    qDeleteAll(m_items);
}

void StackLayout::addItem(QLayoutItem* item)
{
    m_items.append(item);
}

QLayoutItem* StackLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem* StackLayout::takeAt(int index)
{
    return index < 0 || index >= m_items.size() ? nullptr : m_items.takeAt(index);
}

int StackLayout::heightForWidth(int width) const
{
    return stack(QRect(0, 0, width, -1), false);
}

QSize StackLayout::sizeHint() const
{
    int width = -1;
    int height = 0;
    for (QLayoutItem* item : m_items) {
        if (!isShown(item))
            continue;
        renewHints(item->widget());
        width = qMax(width, item->sizeHint().width());
        height += heightOf(item, geometry().width());
    }
    return withMargins(QSize(width, height), contentsMargins());
}

QSize StackLayout::minimumSize() const
{
    int width = -1;
    int height = 0;
    for (QLayoutItem* item : m_items) {
        width = qMax(width, item->minimumSize().width());
        height += item->minimumSize().height();
    }
    return withMargins(QSize(width, height), contentsMargins());
}

void StackLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    stack(rect, true);
}

int StackLayout::stack(const QRect& rect, bool move) const
{
    int y = rect.top();
    for (QLayoutItem* item : m_items) {
        if (!isShown(item))
            continue;
        if (move)
            item->setGeometry(QRect(rect.left(), y, rect.width(), heightOf(item, rect.width())));
        y += item->geometry().height() + spacing() + kLine;
    }
    return y - rect.top();
}
