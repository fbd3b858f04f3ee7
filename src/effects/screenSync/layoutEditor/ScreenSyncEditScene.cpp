#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"

#include "effects/screenSync/layoutEditor/FrameItem.h"
#include "effects/screenSync/layoutEditor/LEDItem.h"
#include "effects/screenSync/layoutEditor/LedSpacing.h"

#include <QDebug>
#include <QGraphicsSceneHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double kCrowdedSide = 0.9; ///< of the distance to the nearest LED: none covers another
constexpr int kFarStep = 5;          ///< cells that an arrow key with Shift moves

QPoint arrowOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

ScreenSyncEditScene::ScreenSyncEditScene(QObject* parent)
    : QGraphicsScene(parent)
    , m_frameItem(new FrameItem)
{
    addItem(m_frameItem);
    connect(this, &QGraphicsScene::sceneRectChanged, this, &ScreenSyncEditScene::onSceneRectChanged);
}

QSizeF ScreenSyncEditScene::cellSize() const
{
    return {sceneRect().width() / m_gridSize.width(), sceneRect().height() / m_gridSize.height()};
}

void ScreenSyncEditScene::setLEDItems(const QVector<QPoint>& positions)
{
    qDeleteAll(m_ledItems);
    m_ledItems.clear();
    m_droppedId = -1;
    m_positions = positions;
    if (positions.isEmpty())
        setDeviceDir(0);
    for (int id = 0; id < positions.size(); ++id) {
        m_ledItems.append(new LEDItem(id));
        addItem(m_ledItems.last());
    }
    placeAll();
}

void ScreenSyncEditScene::setPositions(const QVector<QPoint>& positions)
{
    Q_ASSERT(positions.size() == m_ledItems.size());
    m_positions = positions;
    placeAll();
}

void ScreenSyncEditScene::setGridSize(QSize size)
{
    m_gridSize = size.expandedTo(QSize(1, 1));
    placeAll();
}

void ScreenSyncEditScene::setDeviceDir(int dir)
{
    if (dir == m_deviceDir)
        return;
    m_deviceDir = dir;
    m_frameItem->setMirrored(dir == 1);
    placeAll();
}

void ScreenSyncEditScene::setShowGrid(bool show)
{
    m_showGrid = show;
    update();
}

void ScreenSyncEditScene::onSceneRectChanged(QRectF rect)
{
    m_frameItem->setRect(rect);
    placeAll();
}

QPoint ScreenSyncEditScene::mirrored(QPoint cell) const
{
    return m_deviceDir == 1 ? QPoint(m_gridSize.width() - 1 - cell.x(), cell.y()) : cell;
}

/// A LED outside the canvas shows the nearest pixel, so there it stands.
QPoint ScreenSyncEditScene::shownCell(QPoint position) const
{
    return mirrored({std::clamp(position.x(), 0, m_gridSize.width() - 1),
                     std::clamp(position.y(), 0, m_gridSize.height() - 1)});
}

void ScreenSyncEditScene::placeAll()
{
    for (LEDItem* item : qAsConst(m_ledItems))
        item->setLEDPos(shownCell(m_positions[item->id()]));
    sizeAll();
}

void ScreenSyncEditScene::sizeAll()
{
    const double cell = std::min(cellSize().width(), cellSize().height());
    if (cell <= 0)
        return;
    QVector<QPoint> cells;
    for (const LEDItem* item : qAsConst(m_ledItems))
        cells.append(item->gridPos());
    const int limit = static_cast<int>(std::ceil(LEDItem::kSide / kCrowdedSide / cell));
    const QVector<int> distances = distancesToNearest(cells, m_gridSize, limit);
    for (LEDItem* item : qAsConst(m_ledItems)) {
        const double distance = distances[item->id()] * cell;
        item->setSide(std::min(LEDItem::kSide, kCrowdedSide * distance), std::min(LEDItem::kSide, distance));
        item->setPos(item->homePos());
    }
}

QVector<LEDItem*> ScreenSyncEditScene::selectedLEDs() const
{
    QVector<LEDItem*> selected;
    for (LEDItem* item : m_ledItems) {
        if (item->isSelected())
            selected.append(item);
    }
    return selected;
}

QVector<LEDItem*> ScreenSyncEditScene::movedWith(const LEDItem& held) const
{
    QVector<LEDItem*> moved = selectedLEDs();
    if (!held.isSelected())
        moved.append(m_ledItems[held.id()]);
    return moved;
}

void ScreenSyncEditScene::drag(const LEDItem& held, QPointF by)
{
    // As far as the centres of all of them stay on the canvas.
    const QVector<LEDItem*> moved = movedWith(held);
    const QRectF room = sceneRect();
    for (const LEDItem* item : moved) {
        const QPointF centre = item->homePos() + item->rect().center();
        by.setX(std::clamp(by.x(), room.left() - centre.x(), room.right() - centre.x()));
        by.setY(std::clamp(by.y(), room.top() - centre.y(), room.bottom() - centre.y()));
    }
    for (LEDItem* item : moved)
        item->setPos(item->homePos() + by);
}

void ScreenSyncEditScene::drop(const LEDItem& held)
{
    m_droppedId = held.id();
}

void ScreenSyncEditScene::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseReleaseEvent(event);
    // Only now: whoever hears of it may set other LEDs.
    const int id = std::exchange(m_droppedId, -1);
    if (id >= 0)
        finishDrop(id);
}

void ScreenSyncEditScene::finishDrop(int id)
{
    const LEDItem& held = *m_ledItems[id];
    const QSizeF cell = cellSize();
    const QPointF centre = held.pos() + held.rect().center();
    const auto cellOf = [](double at, double extent, double cellExtent, int cells) {
        return std::clamp(static_cast<int>(std::clamp(at, 0.0, extent) / cellExtent), 0, cells - 1);
    };
    const QPoint dropped(cellOf(centre.x(), sceneRect().width(), cell.width(), m_gridSize.width()),
                         cellOf(centre.y(), sceneRect().height(), cell.height(), m_gridSize.height()));
    const QVector<LEDItem*> moved = movedWith(held);
    const bool hasMoved = moveBy(moved, dropped - held.gridPos());
    if (moved.size() == 1)
        notifyLEDItemPosChanged(id);
    else if (hasMoved)
        emit ledItemsMoved(m_positions);
}

/// As far as all of them stay on the canvas.
bool ScreenSyncEditScene::moveBy(const QVector<LEDItem*>& items, QPoint cells)
{
    for (const LEDItem* item : items) {
        const QPoint from = item->gridPos();
        cells.setX(std::clamp(cells.x(), -from.x(), m_gridSize.width() - 1 - from.x()));
        cells.setY(std::clamp(cells.y(), -from.y(), m_gridSize.height() - 1 - from.y()));
    }
    if (!cells.isNull()) {
        for (const LEDItem* item : items)
            m_positions[item->id()] = mirrored(item->gridPos() + cells);
    }
    placeAll();
    return !cells.isNull();
}

void ScreenSyncEditScene::notifyLEDItemPosChanged(int id)
{
    if (id < 0 || id >= m_ledItems.size()) {
        qWarning().noquote() << "[ScreenSyncEditScene]: The id" << id << "is out of range";
        return;
    }
    emit ledItemPosChanged(id, mirrored(m_ledItems[id]->gridPos()));
}

QString ScreenSyncEditScene::selectionText() const
{
    const QVector<LEDItem*> selected = selectedLEDs();
    QStringList numbers;
    for (const LEDItem* item : selected)
        numbers.append(QString::number(item->id() + 1));
    if (numbers.isEmpty())
        return {};
    QString text = QStringLiteral("LED ") + numbers.join(QStringLiteral(", "));
    if (selected.size() > 1)
        return text;
    const QPoint cell = selected.first()->gridPos();
    return QStringLiteral("%1 (%2, %3)").arg(text).arg(cell.x()).arg(cell.y());
}

/// From the outermost of those selected; round and round.
void ScreenSyncEditScene::selectNeighbour(const QVector<LEDItem*>& selected, int step)
{
    const int count = m_ledItems.size();
    if (count == 0)
        return;
    int id = step > 0 ? -1 : count;
    if (!selected.isEmpty())
        id = step > 0 ? selected.last()->id() : selected.first()->id();
    LEDItem* next = m_ledItems[(id + step + count) % count];
    clearSelection();
    next->setSelected(true);
    next->ensureVisible();
}

void ScreenSyncEditScene::keyPressEvent(QKeyEvent* event)
{
    const QVector<LEDItem*> selected = selectedLEDs();
    const QPoint arrow = arrowOf(event->key());
    if (event->matches(QKeySequence::SelectAll)) {
        for (LEDItem* item : qAsConst(m_ledItems))
            item->setSelected(true);
    } else if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
        selectNeighbour(selected, event->key() == Qt::Key_PageDown ? 1 : -1);
    } else if (event->key() == Qt::Key_Escape && !selected.isEmpty()) {
        clearSelection();
    } else if (!arrow.isNull() && !selected.isEmpty()) {
        const bool isFar = event->modifiers().testFlag(Qt::ShiftModifier);
        if (!moveBy(selected, arrow * (isFar ? kFarStep : 1)))
            return;
        if (selected.size() == 1)
            notifyLEDItemPosChanged(selected.first()->id());
        else
            emit ledItemsMoved(m_positions);
    } else {
        QGraphicsScene::keyPressEvent(event);
    }
}

/// The numbers of the LEDs there: small squares show none, and of several on one cell only one is seen.
void ScreenSyncEditScene::helpEvent(QGraphicsSceneHelpEvent* event)
{
    const auto* pointed = dynamic_cast<LEDItem*>(itemAt(event->scenePos(), {}));
    QStringList numbers;
    for (const LEDItem* item : qAsConst(m_ledItems)) {
        if (pointed && item->gridPos() == pointed->gridPos())
            numbers.append(QString::number(item->id() + 1));
    }
    QToolTip::showText(event->screenPos(),
                       pointed ? QStringLiteral("LED ") + numbers.join(QStringLiteral(", ")) : QString(),
                       event->widget());
}

void ScreenSyncEditScene::drawBackground(QPainter* painter, const QRectF& rect)
{
    QGraphicsScene::drawBackground(painter, rect);
    if (!m_showGrid)
        return;
    const QRect area = sceneRect().toRect();
    const double cellWidth = (area.width() + 1.0) / m_gridSize.width();
    const double cellHeight = (area.height() + 1.0) / m_gridSize.height();
    painter->setPen(m_gridColor);
    for (int i = 1; i < m_gridSize.width(); ++i) {
        const double x = area.x() + i * cellWidth;
        painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    for (int i = 1; i < m_gridSize.height(); ++i) {
        const double y = area.y() + i * cellHeight;
        painter->drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
}
