#include "ui/BaseDialog.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWindow>

/// Under some Wayland desktops an open list closes with the first half of Escape, and its dialog gets the
/// second.
class PopupKeyWatch : public QObject
{
public:
    explicit PopupKeyWatch(QObject* parent)
        : QObject(parent)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ShortcutOverride && watched->isWindowType())
            isOfPopup = QApplication::activePopupWidget() != nullptr;
        return false;
    }

    bool isOfPopup = false; ///< the key that is being pressed
};

BaseDialog::BaseDialog(QWidget* parent)
    // A dialog by its type as well: window managers keep it above its window then, also when another dialog
    // of that window takes the focus.
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_keys(new PopupKeyWatch(this))
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

BaseDialog::~BaseDialog()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void BaseDialog::setHeaderSize(int headerSize)
{
    if (m_headerSize == headerSize)
        return;
    m_headerSize = headerSize;
    emit headerSizeChanged();
}

bool BaseDialog::isCaption(QPoint offset, int width, double headerSize, Qt::LayoutDirection direction)
{
    const int fromStart = direction == Qt::RightToLeft ? width - 1 - offset.x() : offset.x();
    return offset.y() < headerSize && fromStart < width - headerSize;
}

void BaseDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || !m_keys->isOfPopup)
        QDialog::keyPressEvent(event);
}

void BaseDialog::paintEvent(QPaintEvent*)
{
    // Without this a style sheet's background does not show on a subclass.
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void BaseDialog::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton ||
        !isCaption(event->pos(), width(), m_headerSize, layoutDirection()))
        return QDialog::mousePressEvent(event);
    if (windowHandle() && windowHandle()->startSystemMove())
        return;
    m_dragging = true;
    m_dragOffset = event->globalPos() - frameGeometry().topLeft();
}

void BaseDialog::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging)
        return QDialog::mouseMoveEvent(event);
    move(event->globalPos() - m_dragOffset);
}

void BaseDialog::mouseReleaseEvent(QMouseEvent* event)
{
    m_dragging = false;
    QDialog::mouseReleaseEvent(event);
}
