#pragma once

#include <QGraphicsRectItem>
#include <QImage>

/// The picture under the LEDs, as large as its rectangle; grey without one. Takes no mouse events.
class FrameItem : public QGraphicsRectItem
{
public:
    FrameItem();

    /// Costs no more than a repaint that is due: of frames that come faster than that the last one shows.
    void setFrame(const QImage& frame);
    /// Frames of a device that runs the other way come flipped; shown mirrored they are the screen as it is.
    void setMirrored(bool mirrored);

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QImage m_frame;
    bool m_mirrored = false;
};
