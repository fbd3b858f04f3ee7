#pragma once

#include <QAbstractNativeEventFilter>
#include <QDialog>

class PopupKeyWatch;

/// Frameless base of every dialog: looks like the main window and is dragged by its header.
class BaseDialog : public QDialog, public QAbstractNativeEventFilter
{
    Q_OBJECT
    Q_PROPERTY(int headerSize READ headerSize WRITE setHeaderSize NOTIFY headerSizeChanged)

public:
    explicit BaseDialog(QWidget* parent = nullptr);
    ~BaseDialog() override;

    /// Height of the header in device-independent pixels.
    int headerSize() const { return m_headerSize; }
    void setHeaderSize(int headerSize);

    /// Whether a point (offset from the window's top left) drags the window: the header without the square
    /// at its end, where the close button lies: on the right, or mirrored on the left. All in the same kind
    /// of pixels.
    static bool isCaption(QPoint offset, int width, double headerSize, Qt::LayoutDirection direction);

signals:
    void headerSizeChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

private:
    int m_headerSize = 30;
    bool m_dragging = false; ///< moved by hand, because the window system did not take the move over
    QPoint m_dragOffset;
    PopupKeyWatch* m_keys;
};
