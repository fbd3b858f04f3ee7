#include "effects/colorful/ComboBoxDelegate.h"

#include <QPainter>

namespace {

constexpr int kItemHeight = 28;
constexpr int kMargin = 1;
constexpr int kMark = 2; // the frame around the item that the mouse or the keys are on
const QColor kGround(0x2b, 0x2b, 0x2b);

} // namespace

void ComboBoxDelegate::replace(int i, const QGradientStops& stops)
{
    if (i >= 0 && i < m_gradientStops.size())
        m_gradientStops[i] = stops;
}

void ComboBoxDelegate::paintGradient(QPainter* painter, const QRect& rect, const QGradientStops& stops,
                                     Qt::LayoutDirection direction, double radius)
{
    const bool isMirrored = direction == Qt::RightToLeft;
    const QRectF field(rect);
    QLinearGradient gradient(isMirrored ? field.right() : field.left(), 0,
                             isMirrored ? field.left() : field.right(), 0);
    for (const QGradientStop& stop : stops)
        gradient.setColorAt(stop.first, stop.second);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    painter->drawRoundedRect(field, radius, radius);
    painter->restore();
}

void ComboBoxDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    const QGradientStops stops = gradientStops(index.row());
    if (stops.isEmpty())
        return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    QRect field = item.rect;
    painter->fillRect(field, kGround);
    if (item.state & QStyle::State_Selected) {
        painter->fillRect(field, item.palette.highlight());
        field.adjust(kMark, kMark, -kMark, -kMark);
        painter->fillRect(field, kGround); // sets the frame off from a gradient of its own colour
    }
    field.adjust(kMargin, kMargin, -kMargin, -kMargin);
    paintGradient(painter, field, stops, item.direction, 0);
}

QSize ComboBoxDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {QStyledItemDelegate::sizeHint(option, index).width(), kItemHeight};
}
