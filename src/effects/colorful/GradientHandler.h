#pragma once

#include <QColor>
#include <QGraphicsItem>
#include <QObject>

/// The handle of one colour of a gradient: a triangle whose tip stands at the colour's place. A handle of an
/// end of the gradient lacks the flag ItemIsMovable: it can neither be moved nor deleted. Main thread.
class GradientHandler : public QObject, public QGraphicsItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    explicit GradientHandler(const QColor& color, QObject* parent = nullptr);

    void setColor(const QColor& color);
    QColor color() const { return m_color; }
    /// Clamped to 0.0 to 1.0. Emits nothing.
    void setPosition(double p);
    double position() const { return m_position; }
    /// As the user does: emits posChanged() where that changes the position.
    void moveTo(double p);

    bool isMovable() const { return flags().testFlag(ItemIsMovable); }
    void setDeletable(bool deletable) { m_isDeletable = deletable; }
    /// Marks it as the one that has the keyboard.
    void setMarked(bool marked);
    /// For those who do not see it: colour and place.
    QString description() const;
    void retranslate();
    /// What can be done with the handle, at a point of the screen. Returns at once; the parent owns the menu.
    void showMenu(const QPoint& screenPos, QWidget* parent);

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    void posChanged(double pos);
    void requestChangeColor();
    void requestDelete();
    /// The mouse took it.
    void pressed();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;

private:
    QColor m_color;
    double m_position = 0.0;
    bool m_isDeletable = true;
    bool m_isMarked = false;
};
