#pragma once

#include "widgets/SpokenControl.h"

#include <QColor>
#include <QRectF>
#include <QTimer>
#include <QVector>
#include <QWidget>

/// A row (or column) of named items with a highlight that slides to the chosen one.
class SliderBar : public QWidget, public SpokenControl
{
    Q_OBJECT
    Q_PROPERTY(QColor bgColorStart READ bgColorStart WRITE setBgColorStart)
    Q_PROPERTY(QColor bgColorEnd READ bgColorEnd WRITE setBgColorEnd)
    Q_PROPERTY(QColor barColorStart READ barColorStart WRITE setBarColorStart)
    Q_PROPERTY(QColor barColorEnd READ barColorEnd WRITE setBarColorEnd)
    Q_PROPERTY(QColor textNormalColor READ textNormalColor WRITE setTextNormalColor)
    Q_PROPERTY(QColor textSelectColor READ textSelectColor WRITE setTextSelectColor)
    Q_PROPERTY(QString items READ items WRITE setItems)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex)
    Q_PROPERTY(QString currentItem READ currentItem WRITE setCurrentItem)
    Q_PROPERTY(int bgRadius READ bgRadius WRITE setBgRadius)
    Q_PROPERTY(int barRadius READ barRadius WRITE setBarRadius)
    Q_PROPERTY(int space READ space WRITE setSpace)
    Q_PROPERTY(int lineWidth READ lineWidth WRITE setLineWidth)
    Q_PROPERTY(QColor lineColor READ lineColor WRITE setLineColor)
    Q_PROPERTY(BarStyle barStyle READ barStyle WRITE setBarStyle)
    Q_PROPERTY(bool keyMove READ keyMove WRITE setKeyMove)
    Q_PROPERTY(bool horizontal READ horizontal WRITE setHorizontal)
    Q_PROPERTY(bool flat READ flat WRITE setFlat)

public:
    enum BarStyle {
        BarStyle_Rect = 0, ///< the bar's colours alone
        BarStyle_Line = 1, ///< with a line along the lower edge (the right one when vertical)
    };
    Q_ENUM(BarStyle)

    explicit SliderBar(QWidget* parent = nullptr);

    QColor bgColorStart() const { return m_bgColorStart; }
    QColor bgColorEnd() const { return m_bgColorEnd; }
    QColor barColorStart() const { return m_barColorStart; }
    QColor barColorEnd() const { return m_barColorEnd; }
    QColor textNormalColor() const { return m_textNormalColor; }
    QColor textSelectColor() const { return m_textSelectColor; }
    QString items() const { return m_itemsText; }
    int currentIndex() const { return m_currentIndex; }
    QString currentItem() const { return m_currentItem; }
    int bgRadius() const { return m_bgRadius; }
    int barRadius() const { return m_barRadius; }
    int space() const { return m_space; }
    int lineWidth() const { return m_lineWidth; }
    QColor lineColor() const { return m_lineColor; }
    BarStyle barStyle() const { return m_barStyle; }
    bool keyMove() const { return m_keyMove; }
    bool horizontal() const { return m_horizontal; }
    bool flat() const { return m_flat; }

    void setBgColorStart(const QColor& color);
    void setBgColorEnd(const QColor& color);
    void setBarColorStart(const QColor& color);
    void setBarColorEnd(const QColor& color);
    void setTextNormalColor(const QColor& color);
    void setTextSelectColor(const QColor& color);
    void setBgRadius(int radius);
    void setBarRadius(int radius);
    /// Pixels added to each item's text.
    void setSpace(int space);
    void setLineWidth(int width);
    void setLineColor(const QColor& color);
    void setBarStyle(BarStyle style);
    /// Lets the arrow keys move the highlight, and the bar take the focus for that.
    void setKeyMove(bool keyMove);
    void setHorizontal(bool horizontal);
    void setFlat(bool flat);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QAccessible::Role spokenRole() const override { return QAccessible::PageTabList; }
    QString spokenValue() const override { return m_currentItem; }

    /// The first step in pixels of a move over a distance: the steps fall by one until they are one.
    static int initStep(double distance);

signals:
    /// Emitted at once, before the highlight has moved.
    void currentItemChanged(int index, QString item);

public slots:
    void clearItem();
    /// Names separated by ";". A list of the same length keeps the place, so that texts can be translated.
    void setItems(QString items);
    void setCurrentIndex(int index);
    void setCurrentItem(QString item);
    void moveFirst();
    void moveLast();
    void movePrevious();
    void moveNext();
    void moveTo(int index);
    void moveTo(QString item);
    void moveTo(QPointF point);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void slide();

private:
    struct Item
    {
        QString name;
        QRectF rect;
    };

    template <typename T>
    void assign(T& field, const T& value);
    double itemLength(const Item& item) const;
    void layoutItems();
    void placeBar();
    void relayout();
    double axis(const QRectF& rect) const { return m_horizontal ? rect.x() : rect.y(); }

    void drawBackground(QPainter& painter);
    void drawBar(QPainter& painter);
    void drawTexts(QPainter& painter);
    void drawFocus(QPainter& painter);

    QColor m_bgColorStart{121, 121, 121};
    QColor m_bgColorEnd{78, 78, 78};
    QColor m_barColorStart{46, 132, 243};
    QColor m_barColorEnd{39, 110, 203};
    QColor m_textNormalColor{230, 230, 230};
    QColor m_textSelectColor{255, 255, 255};
    QString m_itemsText;
    int m_currentIndex = -1;
    QString m_currentItem;
    int m_bgRadius = 0;
    int m_barRadius = 0;
    int m_space = 25;
    int m_lineWidth = 3;
    QColor m_lineColor{255, 107, 107};
    BarStyle m_barStyle = BarStyle_Rect;
    bool m_keyMove = false;
    bool m_horizontal = true;
    bool m_flat = false;

    QVector<Item> m_items;
    QRectF m_bar;
    QRectF m_target;
    double m_position = 0.0; ///< of the moving bar, on the axis of the items
    int m_step = 0;
    bool m_forward = true;
    QTimer m_timer;
};
