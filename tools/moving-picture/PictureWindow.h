#pragma once

#include "Picture.h"

#include <QBackingStore>
#include <QElapsedTimer>
#include <QTimer>
#include <QWindow>

/// A bare window that shows a picture and knows when the display server has it.
class PictureWindow : public QWindow
{
    Q_OBJECT

public:
    explicit PictureWindow(std::shared_ptr<Picture> picture);

    /// Paints again at this pace; only a picture that moves needs it.
    void play(int framesPerSecond);
    /// Paints and comes back when the display server shows it. False while the window is not on the screen.
    bool paintNow();

signals:
    /// The window is on the screen for the first time, with its picture.
    void shown();

protected:
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void paint();

    std::shared_ptr<Picture> m_picture;
    QBackingStore m_store{this};
    QElapsedTimer m_clock;
    QTimer m_pace;
    bool m_wasShown = false;
};
