#include "effects/screenSync/layoutEditor/LEDItem.h"

#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"

#include <QCursor>
#include <QFontMetricsF>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <algorithm>

namespace {

constexpr QColor kEdge(0, 164, 237, 255);
constexpr QColor kFill(0, 155, 224, 196);
constexpr QColor kText(239, 239, 239, 255);
// What is selected stands out in the accent of the style.
constexpr QColor kSelectedEdge(255, 255, 255, 255);
constexpr QColor kSelectedFill(255, 217, 8, 235);
constexpr QColor kSelectedText(34, 34, 34, 255);

constexpr double kPenWidth = 2.0;
constexpr double kFontPt = 20.0;
constexpr double kLongNumberFontPt = 15.0; ///< of more than two digits
constexpr double kReadablePt = 4.0;
constexpr double kSmallSide = 15.0; ///< below it the edge is thin,
constexpr double kTinySide = 8.0;   ///< below it there is none

} // namespace

LEDItem::LEDItem(int id)
    : QGraphicsRectItem(0, 0, kSide, kSide)
    , m_id(id)
    , m_number(QString::number(id + 1))
{
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
    setCursor(Qt::OpenHandCursor);
    setCacheMode(DeviceCoordinateCache); // painted when it changes, not with every frame
    setPen(QPen(kEdge, kPenWidth));
}

ScreenSyncEditScene* LEDItem::editScene() const
{
    return static_cast<ScreenSyncEditScene*>(scene());
}

QPointF LEDItem::homePos() const
{
    const QSizeF cell = editScene()->cellSize();
    return {m_gridPos.x() * cell.width() + cell.width() * 0.5 - rect().width() * 0.5,
            m_gridPos.y() * cell.height() + cell.height() * 0.5 - rect().height() * 0.5};
}

void LEDItem::setLEDPos(QPoint cell)
{
    m_gridPos = cell;
    setPos(homePos());
}

void LEDItem::setSide(double side, double grabSide)
{
    m_grabSide = grabSide;
    if (qFuzzyCompare(side, rect().width()))
        return;
    setRect(0, 0, side, side);
    setPen(QPen(kEdge, side < kSmallSide ? 1.0 : kPenWidth));
}

/// As large as its number of digits allows, and not wider than the square.
void LEDItem::fitFont()
{
    m_fontSide = rect().width();
    double points = (m_number.size() > 2 ? kLongNumberFontPt : kFontPt) * m_fontSide / kSide;
    m_font.setPointSizeF(points);
    const double width = QFontMetricsF(m_font).horizontalAdvance(m_number);
    points *= std::min(1.0, (m_fontSide - pen().widthF()) / width);
    m_font.setPointSizeF(points);
    m_isReadable = points >= kReadablePt;
}

QPainterPath LEDItem::shape() const
{
    QPainterPath path;
    const double inset = (rect().width() - m_grabSide) * 0.5;
    path.addRect(rect().adjusted(inset, inset, -inset, -inset));
    return path;
}

void LEDItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    if (m_fontSide != rect().width())
        fitFont();
    const bool isSelected = option->state.testFlag(QStyle::State_Selected);
    painter->save();
    if (rect().width() >= kTinySide) {
        painter->setPen(QPen(isSelected ? kSelectedEdge : kEdge, pen().widthF()));
        painter->drawRect(rect());
    }
    painter->fillRect(rect(), isSelected ? kSelectedFill : kFill);
    if (m_isReadable) {
        painter->setPen(isSelected ? kSelectedText : kText);
        painter->setFont(m_font);
        painter->drawText(rect(), Qt::AlignCenter | Qt::TextDontClip, m_number);
    }
    painter->restore();
}

QVariant LEDItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemSelectedHasChanged)
        setZValue(value.toBool() ? 1 : 0);
    return QGraphicsRectItem::itemChange(change, value);
}

void LEDItem::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        editScene()->drag(*this, event->scenePos() - event->buttonDownScenePos(Qt::LeftButton));
}

void LEDItem::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsRectItem::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton)
        editScene()->drop(*this);
}
