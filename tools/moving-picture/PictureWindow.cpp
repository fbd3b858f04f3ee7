#include "PictureWindow.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>

PictureWindow::PictureWindow(std::shared_ptr<Picture> picture)
    : m_picture(std::move(picture))
{
    setTitle(QStringLiteral("moving-picture"));
    setFlags(Qt::Window | Qt::FramelessWindowHint);
    m_clock.start();
    connect(&m_pace, &QTimer::timeout, this, &PictureWindow::paint);
}

void PictureWindow::play(int framesPerSecond)
{
    m_pace.setTimerType(Qt::PreciseTimer);
    m_pace.start(1000 / framesPerSecond);
}

bool PictureWindow::paintNow()
{
    if (!isExposed())
        return false;
    paint();
    QGuiApplication::sync();
    return true;
}

void PictureWindow::exposeEvent(QExposeEvent* /*event*/)
{
    if (!isExposed())
        return;
    paint();
    if (!m_wasShown) {
        m_wasShown = true;
        QMetaObject::invokeMethod(this, &PictureWindow::shown, Qt::QueuedConnection);
    }
}

void PictureWindow::resizeEvent(QResizeEvent* event)
{
    m_store.resize(event->size());
    paint();
}

void PictureWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Q)
        QGuiApplication::quit();
}

void PictureWindow::paint()
{
    if (!isExposed())
        return;
    const QRect area(QPoint(0, 0), size());
    if (m_store.size() != area.size())
        m_store.resize(area.size());
    m_store.beginPaint(area);
    {
        QPainter painter(m_store.paintDevice());
        m_picture->paint(painter, area, static_cast<double>(m_clock.elapsed()) / 1000);
    }
    m_store.endPaint();
    m_store.flush(area);
}
