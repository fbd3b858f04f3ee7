#pragma once

#include <QLayout>
#include <QVector>

/// Widgets one below the other at full width, each as high as its size hint, a text that wraps as high
/// as it needs; hidden ones take no room.
/// The contents margins count for the hints only: the items begin at the rectangle's own edge.
class StackLayout : public QLayout
{
    Q_OBJECT

public:
    /// Pixels below each item, where the ground shows through, on top of the spacing.
    static constexpr int kLine = 1;

    explicit StackLayout(QWidget* parent = nullptr);
    ~StackLayout() override;

    void addItem(QLayoutItem* item) override;
    /// Null outside the range.
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    int count() const override { return m_items.size(); }
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    /// The height that the items take up as they lie now.
    int heightForWidth(int width) const override;
    /// As the items want it now: what their own layouts still have to be told of is counted in.
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    int stack(const QRect& rect, bool move) const;

    QVector<QLayoutItem*> m_items;
};
