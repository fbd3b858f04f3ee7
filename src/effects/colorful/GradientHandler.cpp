#include "effects/colorful/GradientHandler.h"

#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

constexpr double kSize = 20.0;
constexpr double kMiddle = kSize * 0.5;
const QColor kEdge(190, 190, 190); // or dark colours would be lost on the dark ground
const QColor kHoverEdge(255, 255, 255);
const QColor kFocus(255, 217, 8);
constexpr double kEdgeWidth = 4.0; // its inner part is covered

} // namespace

GradientHandler::GradientHandler(const QColor& color, QObject* parent)
    : QObject(parent)
    , m_color(color)
{
    setFlag(ItemIsMovable);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    retranslate();
}

void GradientHandler::setColor(const QColor& color)
{
    m_color = color;
    update();
}

void GradientHandler::setPosition(double p)
{
    m_position = qBound(0.0, p, 1.0);
    if (scene())
        setX(m_position * scene()->width() - kMiddle);
}

void GradientHandler::moveTo(double p)
{
    const double before = m_position;
    setPosition(p);
    if (m_position != before)
        emit posChanged(m_position);
}

void GradientHandler::setMarked(bool marked)
{
    m_isMarked = marked;
    if (isMovable()) // the ends never lie on top, or they would hide what can be dragged
        setZValue(marked ? 1.0 : 0.0);
    update();
}

QString GradientHandler::description() const
{
    if (!isMovable())
        return tr("两端颜色 %1").arg(m_color.name());
    return tr("颜色 %1，位置 %2%").arg(m_color.name()).arg(qRound(m_position * 100));
}

void GradientHandler::retranslate()
{
    setToolTip(isMovable() ? tr("拖动可移动，双击可修改颜色，右键可删除") : tr("双击可修改两端的颜色"));
    setCursor(isMovable() ? Qt::SizeHorCursor : Qt::PointingHandCursor);
}

void GradientHandler::showMenu(const QPoint& screenPos, QWidget* parent)
{
    // Without a loop of its own: the gradient may change and this handle go while the menu is open.
    auto* menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &QObject::destroyed, menu, &QWidget::close);
    menu->addAction(tr("修改"), this, &GradientHandler::requestChangeColor);
    if (isMovable())
        menu->addAction(tr("删除"), this, &GradientHandler::requestDelete)->setEnabled(m_isDeletable);
    menu->popup(screenPos);
}

QRectF GradientHandler::boundingRect() const
{
    return {0, 0, kSize, kSize};
}

void GradientHandler::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const QPolygonF triangle({{4, 12}, {10, 0}, {16, 12}});
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor edge = option->state.testFlag(QStyle::State_MouseOver) ? kHoverEdge : kEdge;
    painter->setPen(
        QPen(m_isMarked ? kFocus : edge, kEdgeWidth, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter->drawPolygon(triangle);
    if (m_isMarked)
        painter->fillRect(QRectF(3, 16, 14, 3), kFocus);
    painter->setPen(m_color);
    painter->setBrush(m_color);
    painter->drawPolygon(triangle);
}

void GradientHandler::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsItem::mousePressEvent(event);
    event->accept(); // the ends too: a press on a handle is none on the bar under it
    emit pressed();
}

void GradientHandler::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (!isMovable())
        return;
    const double oldY = y();
    QGraphicsItem::mouseMoveEvent(event);
    setY(oldY);
    moveTo((x() + kMiddle) / scene()->width());
}

void GradientHandler::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*)
{
    emit requestChangeColor();
}

void GradientHandler::contextMenuEvent(QGraphicsSceneContextMenuEvent* event)
{
    emit pressed();
    showMenu(event->screenPos(), event->widget());
}
