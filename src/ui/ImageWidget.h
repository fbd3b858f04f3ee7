#pragma once

#include <QImage>
#include <QWidget>

/// Shows one picture, fitted inside the widget and centred.
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

private:
    QImage m_image;
};
