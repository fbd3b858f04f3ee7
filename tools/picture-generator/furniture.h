#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QVector>

class QPainter;

// Dark furniture for the scenes. A `foot` is the middle of the bottom edge.

/// A dark room; below `floor` there is a desk, 0 for none.
QImage roomGround(const QSize& size, double floor);
void drawMonitorBody(QPainter& painter, const QRectF& rect, double foot);
void drawPanel(QPainter& painter, const QRectF& rect);
void drawShelf(QPainter& painter, const QRectF& rect);
void drawPlant(QPainter& painter, const QPointF& foot, double scale);
void drawSpeaker(QPainter& painter, const QPointF& foot, double scale);
void drawBooks(QPainter& painter, const QPointF& foot);
void drawKeyboard(QPainter& painter, const QRectF& rect);
void drawMouse(QPainter& painter, const QPointF& middle);
/// A mountain ridge through the points with soft tops.
void drawRidge(QPainter& painter, const QVector<QPointF>& points, const QColor& color);
