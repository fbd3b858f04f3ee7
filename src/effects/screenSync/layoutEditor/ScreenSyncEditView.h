#pragma once

#include "widgets/SpokenControl.h"

#include <QGraphicsView>
#include <QImage>
#include <QPoint>
#include <QPointF>
#include <QSize>

class ScreenSyncEditScene;

/// Shows the canvas of the layout editor, all of it at first. The wheel zooms, the middle and the right mouse
/// button pan; the left one works on the LEDs, as
/// do Page Up and Page Down, which select one, and the arrow keys. The canvas is a thing of the real world:
/// it is not mirrored with the language.
class ScreenSyncEditView : public QGraphicsView, public SpokenControl
{
    Q_OBJECT

public:
    explicit ScreenSyncEditView(QWidget* parent = nullptr);

    ScreenSyncEditScene* editScene() const { return m_editScene; }
    QAccessible::Role spokenRole() const override { return QAccessible::Canvas; }
    /// Which LEDs are selected, and where the only one is.
    QString spokenValue() const override;

public slots:
    /// A null image: there is none.
    void setFrame(QImage frame);
    /// The canvas in cells. Shows all of it again.
    void setSceneSize(QSize size);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void measureBase();
    void applyZoom();

    ScreenSyncEditScene* m_editScene;
    double m_baseWidth = 120.0; ///< scene units without zoom
    double m_baseHeight = 67.0;
    double m_zoom = 1.0;
    Qt::MouseButton m_panButton = Qt::NoButton; ///< while panning
    QPointF m_panAnchor;                        ///< scene point in the middle when the pan began
    QPoint m_panStart;                          ///< of the mouse
};
