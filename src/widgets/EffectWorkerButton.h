#pragma once

#include <QPixmap>
#include <QRadioButton>

/// A round button for an effect: the picture on a disc, the name below it. The mouse works on the disc's
/// radius around the widget's middle, never on the corners; Space, Enter and the arrow keys choose as well.
/// As with every button a single "&" in the text has to be doubled.
class EffectWorkerButton : public QRadioButton
{
    Q_OBJECT

public:
    explicit EffectWorkerButton(QWidget* parent = nullptr);

    /// The disc's size in pixels; the widget gets this width and the height of a line of text more.
    void setDiameter(int diameter);

    QSize sizeHint() const override { return minimumSize(); }

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool hitButton(const QPoint& pos) const override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// How a name is drawn so that it fits below the disc.
    struct Fit
    {
        QFont font;
        int flags = 0;
        QString text;
    };
    struct Fitted
    {
        QString text;
        QFont font;
        QSize size;
        Fit fit;
    };

    const QPixmap& picture();
    Fit fit(const QSize& strip) const;
    void drawText(QPainter& painter);

    int m_diameter = 0;
    // Scaled once: the sources are much larger than the disc.
    QPixmap m_picture;
    QString m_pictureKey; ///< what m_picture was made of and for
    Fitted m_fitted;
};
