#pragma once

#include "Color.h"

#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QVector>

class Glow;
class QPainter;

/// Draws one product lit up on a dark ground. Where its LEDs are comes from its map; what it is, from the
/// fourth character of its code: N matrix, R ring, B light bar, S desk strip, any other a monitor strip.
class ProductScene
{
public:
    /// `leds`: places on a canvas of 1.0 by 1.0, in the order of the strip.
    ProductScene(const QString& model, const QVector<QPointF>& leds, double canvasAspect);

    QImage draw(const QSize& size) const;

private:
    QImage drawMonitor(const QSize& size) const;
    QImage drawMatrix(const QSize& size) const;
    QImage drawRing(const QSize& size) const;
    QImage drawDesk(const QSize& size) const;

    Color ledColor(int led) const;
    QRectF canvasRect(const QSize& size, double share, double middle) const;
    QImage screenContent(const QSize& size) const;
    void lightUp(Glow& glow, const QRectF& canvas, double sigma, double strength) const;

    QString m_model;
    QVector<QPointF> m_leds;
    double m_canvasAspect;
    QVector<Color> m_palette;
};
