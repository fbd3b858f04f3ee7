#pragma once

#include "widgets/SpokenControl.h"

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QRegion>
#include <QWidget>

/// A ring of hues around a square of saturation (to the right) and value (downwards). The arrow keys go about
/// in the square, Page Up and Page Down around the ring; with Ctrl in large steps.
class ColorWheel : public QWidget, public SpokenControl
{
    Q_OBJECT

public:
    explicit ColorWheel(QWidget* parent = nullptr);

    QColor color() const { return m_current; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::ColorChooser; }
    QString spokenValue() const override;

signals:
    /// The user picked a colour.
    void colorChanged(QColor color);

public slots:
    /// Shows a colour without a signal. A grey, which has no hue, keeps the present one.
    void setColor(QColor color);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void hueChanged(int hue);
    void svChanged(QColor newcolor);

private:
    QPointF center() const;
    QRectF squareRect() const;
    int hueAt(const QPoint& pos) const;
    QColor svColorAt(const QPoint& pos) const;
    void pickAt(const QPoint& pos);

    void rebuild();
    void drawWheelImage();
    void drawSquareImage();
    void composeWheel();
    void drawFocus(QPainter& painter) const;
    void drawHueMark(QPainter& painter) const;
    void drawSvMark(QPainter& painter) const;

    const QSize m_initSize{128, 128};
    // At device resolution.
    QImage m_wheelImage;
    QImage m_squareImage;
    QPixmap m_wheel;
    bool m_mouseDown = false;
    QPoint m_lastPos;
    int m_margin = 10;
    int m_wheelWidth = 0;
    QRegion m_wheelRegion;
    QRegion m_squareRegion;
    QColor m_current; ///< always in HSV form, which keeps the hue of black and grey
    bool m_inWheel = false;
    bool m_inSquare = false;
    int m_offsetX = 0;
    int m_offsetY = 0;
};
