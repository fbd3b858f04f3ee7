#pragma once

#include <QBrush>
#include <QList>
#include <QStyledItemDelegate>

/// Paints the items of a combo box as gradients, one entry here for each item there, in the same order. An
/// item without an entry shows its text.
class ComboBoxDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void clear() { m_gradientStops.clear(); }
    void append(const QGradientStops& stops) { m_gradientStops.append(stops); }
    /// Changes nothing where there is no such entry.
    void replace(int i, const QGradientStops& stops);
    int size() const { return m_gradientStops.size(); }
    /// Empty where there is no such entry.
    QGradientStops gradientStops(int i) const { return m_gradientStops.value(i); }

    /// From the leading side to the trailing one, with the corners rounded by so many pixels.
    static void paintGradient(QPainter* painter, const QRect& rect, const QGradientStops& stops,
                              Qt::LayoutDirection direction, double radius);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QList<QGradientStops> m_gradientStops;
};
