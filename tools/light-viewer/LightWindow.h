#pragma once

#include "controllers/LV_RGB.h"

#include <QWidget>

/// The lights in a dark window: a bright dot each, in a halo that runs into its neighbours'.
class LightWindow : public QWidget
{
    Q_OBJECT

public:
    LightWindow();

    void show(const QVector<LV_RGB>& colors);
    using QWidget::show;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF gridArea() const;
    QPointF centreOf(int led, const QRectF& area) const;
    void paintSockets(QPainter& painter, const QRectF& area);
    void paintHalo(QPainter& painter, const QRectF& area);
    void paintDots(QPainter& painter, const QRectF& area);

    QVector<LV_RGB> m_colors;
};
