#include "effects/screenSync/layoutEditor/FrameItem.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

constexpr QColor kNoFrame(120, 120, 120);

} // namespace

FrameItem::FrameItem()
{
    setPen(Qt::NoPen);
    setAcceptedMouseButtons(Qt::NoButton);
    setFlag(ItemUsesExtendedStyleOption); // the part that shows is all that is scaled
}

void FrameItem::setFrame(const QImage& frame)
{
    // Opaque and in the paint engine's own order: scaling it is much faster.
    m_frame = frame.convertToFormat(QImage::Format_RGB32);
    update();
}

void FrameItem::setMirrored(bool mirrored)
{
    m_mirrored = mirrored;
    update();
}

void FrameItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget*)
{
    const QRectF target = rect();
    const QRectF exposed = option->exposedRect & target;
    if (m_frame.isNull() || target.isEmpty()) {
        painter->fillRect(exposed, kNoFrame);
        return;
    }
    // Whole pixels, with one around them for the smooth edges: the picture must not shift with what is
    // exposed.
    const double cellWidth = target.width() / m_frame.width();
    const double cellHeight = target.height() / m_frame.height();
    const QRectF cells((exposed.x() - target.x()) / cellWidth, (exposed.y() - target.y()) / cellHeight,
                       exposed.width() / cellWidth, exposed.height() / cellHeight);
    const QRect source = cells.toAlignedRect().adjusted(-1, -1, 1, 1) & m_frame.rect();
    const QRectF place(target.x() + source.x() * cellWidth, target.y() + source.y() * cellHeight,
                       source.width() * cellWidth, source.height() * cellHeight);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(place, m_mirrored ? m_frame.mirrored(true, false) : m_frame, source);
}
