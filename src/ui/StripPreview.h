#pragma once

#include "controllers/LV_RGB.h"
#include "ui/ImageWidget.h"

#include <QByteArray>
#include <QPointF>
#include <QRegion>
#include <QVector>

/// The picture of a product with the light of its LEDs along the edge; LEDs that stand in the middle take the
/// place of the picture. An unlit LED shows as a faint ring. Paints only where light is, without the painter:
/// it is meant to run beside games. Never mirrored: left is left in the room. Main
/// thread.
class StripPreview : public ImageWidget
{
    Q_OBJECT

public:
    explicit StripPreview(QWidget* parent = nullptr);

    void setImg(QImage img) override;
    /// Where the LEDs stand, (0, 0) top left to (1, 1); `aspect` is width by height of what they stand on,
    /// where the picture does not say it.
    void setPlaces(const QVector<QPointF>& places, double aspect);
    /// LED 0 first. LEDs without a colour are dark, colours without a place are not shown.
    void setColors(const QVector<LV_RGB>& colors);
    const QVector<QPointF>& places() const { return m_places; }
    const QVector<LV_RGB>& colors() const { return m_colors; }
    /// Whether any of it can be on the screen now: not on a hidden page, in a minimised window or scrolled
    /// away.
    bool isSeen() const;

signals:
    /// It may be seen again.
    void appeared();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    QRect targetRect() const override;

private:
    /// What one LED of full brightness adds to the canvas: a byte for each channel of each pixel.
    struct Glow
    {
        int side = 0; ///< pixels
        QVector<uchar> mask;
    };

    QSize pixelSize() const;
    QRectF frame() const;
    void forget();
    void build();
    void buildGlow(double spacing, double ratio);
    void drawUnlit();
    void light();

    QVector<QPointF> m_places;
    double m_aspect = 16.0 / 9;
    bool m_isFilled = false; ///< LEDs stand in the middle
    QVector<LV_RGB> m_colors;

    // For the present size, places and picture; empty while it is not seen. In pixels of the screen.
    QImage m_canvas;    ///< all that is shown
    QByteArray m_unlit; ///< what the canvas has without light, for each rectangle of m_lit row by row
    Glow m_glow;
    double m_ringRadius = 0;
    QVector<QPoint> m_corners; ///< top left of each LED's glow
    QRegion m_lit;             ///< what any glow covers
    QRegion m_litHere;         ///< the same in pixels of the widget
};
