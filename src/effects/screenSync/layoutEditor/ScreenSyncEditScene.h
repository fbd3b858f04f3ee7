#pragma once

#include <QColor>
#include <QGraphicsScene>
#include <QSize>
#include <QVector>

class FrameItem;
class LEDItem;

/// The canvas of the layout editor: a frame under one square per LED. Its positions are those of the worker's
/// map; while the device runs the other way everything is shown mirrored. Several LEDs that are selected move
/// together and keep their shape. Main thread.
class ScreenSyncEditScene : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit ScreenSyncEditScene(QObject* parent = nullptr);

    FrameItem* frameItem() const { return m_frameItem; }
    QSize gridSize() const { return m_gridSize; }
    /// Scene units.
    QSizeF cellSize() const;

    /// One new LED for each position, none of them selected; without any the direction becomes 0.
    void setLEDItems(const QVector<QPoint>& positions);
    /// Moves the present LEDs; of as many as there are.
    void setPositions(const QVector<QPoint>& positions);
    /// The canvas in cells.
    void setGridSize(QSize size);
    /// 1: mirrored.
    void setDeviceDir(int dir);
    void setShowGrid(bool show);
    /// "LED " and the numbers of those selected, of a single one its cell as well.
    QString selectionText() const;

    /// For the LEDs: one is dragged by so much from where it was grabbed, one was let go.
    void drag(const LEDItem& held, QPointF by);
    void drop(const LEDItem& held);

signals:
    /// The user moved one LED, or let it go where it was: its position in the map.
    void ledItemPosChanged(int id, QPoint newPos);
    /// The user moved several at once: the positions of all LEDs.
    void ledItemsMoved(QVector<QPoint> positions);

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void helpEvent(QGraphicsSceneHelpEvent* event) override;

private slots:
    void onSceneRectChanged(QRectF rect);

private:
    QVector<LEDItem*> selectedLEDs() const;
    QVector<LEDItem*> movedWith(const LEDItem& held) const;
    QPoint mirrored(QPoint cell) const;
    QPoint shownCell(QPoint position) const;
    void placeAll();
    void sizeAll();
    void finishDrop(int id);
    void selectNeighbour(const QVector<LEDItem*>& selected, int step);
    bool moveBy(const QVector<LEDItem*>& items, QPoint cells);
    void notifyLEDItemPosChanged(int id);

    QSize m_gridSize{31, 17};
    QColor m_gridColor = QColor::fromRgba(0xFF00FF00);
    bool m_showGrid = false;
    FrameItem* m_frameItem;
    QVector<LEDItem*> m_ledItems; ///< index = LED number
    QVector<QPoint> m_positions;  ///< of the map, index = LED number; may lie outside the canvas
    int m_deviceDir = 0;
    int m_droppedId = -1; ///< let go by the mouse event that is being handled
};
