#pragma once

#include <QFont>
#include <QGraphicsRectItem>

class ScreenSyncEditScene;

/// One LED of the layout editor: a square with its number, which counts from 1, to be dragged to another
/// cell. The scene moves it, together with what is selected beside it. Lives in a ScreenSyncEditScene.
class LEDItem : public QGraphicsRectItem
{
public:
    static constexpr double kSide = 30.0; ///< scene units

    explicit LEDItem(int id);

    int id() const { return m_id; } ///< from 0
    QPoint gridPos() const { return m_gridPos; }
    /// Centres the square on this cell of the canvas.
    void setLEDPos(QPoint cell);
    /// Where it stands when nobody drags it.
    QPointF homePos() const;

    /// Its size and, around its centre, that of what can be grabbed; scene units.
    void setSide(double side, double grabSide);

    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;

private:
    ScreenSyncEditScene* editScene() const;
    void fitFont();

    int m_id;
    QPoint m_gridPos;
    double m_grabSide = kSide;
    QString m_number;
    QFont m_font;
    double m_fontSide = 0; ///< of the square that the font was made for
    bool m_isReadable = true;
};
