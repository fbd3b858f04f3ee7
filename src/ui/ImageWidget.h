#pragma once

#include <QImage>
#include <QPixmap>
#include <QRectF>
#include <QWidget>

class QPainter;

/// Shows one picture, fitted inside the widget and centred. Main thread.
class ImageWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ImageWidget(QWidget* parent = nullptr);

    /// A null picture leaves the widget empty.
    virtual void setImg(QImage img);

protected:
    void paintEvent(QPaintEvent* event) override;
    const QImage& image() const { return m_image; }
    /// Where the whole picture (not null) goes, in logical pixels of the widget; may reach beyond it.
    virtual QRect targetRect() const;
    /// Draws the picture where it goes, unless there is none.
    void drawPicture(QPainter& painter);

private:
    void scalePicture(const QRect& target, const QRect& shown);

    QImage m_image;
    QPixmap m_scaled; ///< what is shown of the picture, for m_scaledTarget inside m_scaledSize
    QRect m_scaledTarget;
    QSize m_scaledSize;
};
