#pragma once

#include "effects/IColorStrapManager.h"
#include "widgets/SpokenControl.h"

#include <QBrush>
#include <QMap>
#include <QPointer>
#include <QSharedPointer>
#include <QWidget>
#include <functional>

class GradientHandler;
class QColorDialog;
class QGraphicsScene;
class QGraphicsView;

/// Edits the colours of a gradient: one handle for each, which can be dragged, recoloured, deleted and added,
/// by mouse or keyboard. The gradient itself is shown elsewhere. Positions run from 0.0 to 1.0, from right to
/// left where the layout does. The last key colour cannot be deleted. Main thread.
///
/// What is set from outside is not reported, and closes an open colour dialog: its answer would be meant for
/// what was there before.
class GradientWidget : public QWidget, public SpokenControl
{
    Q_OBJECT

public:
    explicit GradientWidget(QWidget* parent = nullptr);

    /// The key colours alone, without the ends.
    void setKeyColors(const QGradientStops& keyColors);
    /// In no particular order.
    QVector<KeyColor> keyColors() const;
    void setEndsColor(const QColor& color);
    QColor endsColor() const { return m_endsColor; }
    /// Reported like a change by the user. The position is clamped to 0.0 to 1.0.
    void addKeyColor(const QColor& color, double pos);
    /// The whole gradient by position: an end at 0.0, the key colours, an end at 1.0.
    QGradientStops gradientStops() const;
    QAccessible::Role spokenRole() const override { return QAccessible::Slider; }
    /// Of the handle that the keys work on.
    QString spokenValue() const override;

signals:
    void keyColorChanged();

protected:
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void onEndsColorRequestUpdate();

private:
    using Handler = QSharedPointer<GradientHandler>;

    Handler makeHandler(const QColor& color, bool isMovable);
    /// The end when it is not, or no longer, the handle of a key colour.
    QMap<Handler, KeyColor>::iterator find(const GradientHandler* handler);
    void onColorRequestUpdate(GradientHandler* handler);
    void deleteKeyColor(const GradientHandler* handler);
    void askForNewColor(double pos);
    /// Opens the colour dialog, unless one is open, and returns at once.
    void askColor(const QColor& initial, QString (*title)(), const std::function<void(QColor)>& apply);
    void dismissDialog();

    /// By position, which is the order of the keyboard; the ends outermost.
    QVector<GradientHandler*> handlersInOrder() const;
    /// The handle that the keys mean.
    void setCurrent(GradientHandler* handler);
    double placeBesideCurrent() const;
    void layoutScene();
    void retranslate();
    void changed();

    QMap<Handler, KeyColor> m_keyHandlers;
    Handler m_leftHandler;
    Handler m_rightHandler;
    QColor m_endsColor = Qt::white;
    QGraphicsScene* m_scene = nullptr;
    QGraphicsView* m_view = nullptr;
    GradientHandler* m_current = nullptr; ///< always one of the handlers
    QPointer<QColorDialog> m_dialog;
    QString (*m_dialogTitle)() = nullptr;
};
