#include "effects/screenSync/layoutEditor/ScreenSyncEditView.h"

#include "effects/screenSync/layoutEditor/FrameItem.h"
#include "effects/screenSync/layoutEditor/LEDItem.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

namespace {

constexpr double kWheelStep = 720.0; ///< angle units that enlarge by the canvas's own size
constexpr double kMinZoom = 0.5;
constexpr int kRoomPx = static_cast<int>(LEDItem::kSide) / 2 + 2; ///< for half a square beyond each edge

bool pans(Qt::MouseButton button)
{
    return button == Qt::MiddleButton || button == Qt::RightButton;
}

} // namespace

ScreenSyncEditView::ScreenSyncEditView(QWidget* parent)
    : QGraphicsView(parent)
    , m_editScene(new ScreenSyncEditScene(this))
{
    m_editScene->setSceneRect(0, 0, m_baseWidth, m_baseHeight);
    setScene(m_editScene);
    setLayoutDirection(Qt::LeftToRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setDragMode(RubberBandDrag);
    setOptimizationFlags(DontSavePainterState | DontAdjustForAntialiasing);
    setTransformationAnchor(AnchorViewCenter);
    const auto tell = [this] { tellValue(this); };
    connect(m_editScene, &QGraphicsScene::selectionChanged, this, tell);
    connect(m_editScene, &ScreenSyncEditScene::ledItemPosChanged, this, tell);
}

QString ScreenSyncEditView::spokenValue() const
{
    return m_editScene->selectionText();
}

void ScreenSyncEditView::setFrame(QImage frame)
{
    m_editScene->frameItem()->setFrame(frame);
}

void ScreenSyncEditView::setSceneSize(QSize size)
{
    m_editScene->setGridSize(size);
    m_zoom = 1.0;
    measureBase();
}

void ScreenSyncEditView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    measureBase();
}

/// The longer side of the canvas gets the whole view.
void ScreenSyncEditView::measureBase()
{
    const QSizeF canvas = m_editScene->gridSize();
    const double viewWidth = std::max(1, width());
    const double viewHeight = std::max(1, height());
    if (canvas.width() <= canvas.height()) {
        m_baseWidth = viewHeight / (canvas.height() / canvas.width());
        m_baseHeight = viewHeight;
    } else {
        m_baseWidth = viewWidth;
        m_baseHeight = viewWidth / (canvas.width() / canvas.height());
    }
    // Drawn so that all of it shows, in the other direction too, with room for the squares at the edges.
    const double scale = std::min((viewport()->width() - 2.0 * kRoomPx) / m_baseWidth,
                                  (viewport()->height() - 2.0 * kRoomPx) / m_baseHeight);
    if (scale > 0)
        setTransform(QTransform::fromScale(scale, scale));
    applyZoom();
}

void ScreenSyncEditView::applyZoom()
{
    m_editScene->setSceneRect({m_editScene->sceneRect().topLeft(), // as it stands
                               QSizeF(m_baseWidth * m_zoom, m_baseHeight * m_zoom)});
    // The squares at the edges can be reached as well.
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) {
        if (bar->minimum() < bar->maximum())
            bar->setRange(bar->minimum() - kRoomPx, bar->maximum() + kRoomPx);
    }
}

void ScreenSyncEditView::wheelEvent(QWheelEvent* event)
{
    const QPoint mouse = event->position().toPoint();
    const QPointF before = mapToScene(mouse);
    const double zoomBefore = m_zoom;
    m_zoom = std::max(kMinZoom, m_zoom + event->angleDelta().y() / kWheelStep);
    applyZoom();
    // What is under the mouse stays there.
    const QPoint shift = mapFromScene(before * (m_zoom / zoomBefore)) - mouse;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + shift.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + shift.y());
    event->accept();
}

void ScreenSyncEditView::mousePressEvent(QMouseEvent* event)
{
    if (!pans(event->button())) {
        QGraphicsView::mousePressEvent(event);
        return;
    }
    m_panButton = event->button();
    m_panStart = event->pos();
    // Exactly what centerOn would take for the middle: no jump at the first pixel.
    m_panAnchor =
        mapToScene(QPoint()) + QPointF(viewport()->width(), viewport()->height()) / (2.0 * transform().m11());
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void ScreenSyncEditView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panButton == Qt::NoButton) {
        QGraphicsView::mouseMoveEvent(event);
        return;
    }
    const QPointF moved = mapToScene(event->pos()) - mapToScene(m_panStart);
    centerOn(m_panAnchor - moved);
}

void ScreenSyncEditView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != m_panButton) {
        QGraphicsView::mouseReleaseEvent(event);
        return;
    }
    m_panButton = Qt::NoButton;
    viewport()->unsetCursor();
}
