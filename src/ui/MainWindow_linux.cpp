#include "ui/MainWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWindow>
#include <cstdlib>
#include <xcb/xcb.h>

namespace {

bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

Qt::CursorShape cursorShape(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

/// Hears the window's mouse before its widgets do, which is why no widget needs mouse tracking. The window
/// manager moves and resizes; where there is none, it is done by hand.
class WindowFrame : public QObject
{
public:
    explicit WindowFrame(MainWindow& window)
        : m_window(window)
    {
        window.winId(); // makes the handle
        window.windowHandle()->installEventFilter(this);
    }
    ~WindowFrame() override { showCursor({}); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            return onPress(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseMove:
            return onMove(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonRelease:
            return onRelease(*static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonDblClick:
            return onDoubleClick(*static_cast<QMouseEvent*>(event));
        case QEvent::Hide: {
            // The place is the user's from now on: shown again, the window manager is not to choose another.
            QWindow* handle = m_window.windowHandle();
            handle->setPosition(handle->position());
            showCursor({});
            break;
        }
        case QEvent::Leave:
        case QEvent::WindowBlocked:
            showCursor({});
            break;
        case QEvent::FocusIn:
            // A Wayland desktop does not tell that it has brought a minimised window back.
            if (isOnWayland() && m_window.isMinimized())
                m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
            break;
        default:
            break;
        }
        return false;
    }

private:
    enum class Grip {
        Idle,
        Pressed, ///< on the caption, not yet dragged
        ByHand,  ///< dragged without a window manager
        Done     ///< the rest of the press is nobody's; after a system move not even a release comes
    };

    bool onPress(const QMouseEvent& event)
    {
        m_grip = Grip::Idle;
        // An open menu takes every press, to close itself.
        if (event.button() != Qt::LeftButton || QApplication::activePopupWidget() != nullptr)
            return false;
        const WindowRegion region = m_window.regionAt(event.pos());
        if (region == WindowRegion::None)
            return false;
        m_edges = edgesOf(region);
        m_pressedAt = event.globalPos();
        m_startGeometry = m_window.geometry();
        m_grip = Grip::Pressed;
        if (m_edges)
            startDrag();
        return true;
    }

    bool onMove(const QMouseEvent& event)
    {
        if (!(event.buttons() & Qt::LeftButton))
            m_grip = Grip::Idle;
        if (m_grip == Grip::Idle) {
            if (event.buttons() == Qt::NoButton && QApplication::activePopupWidget() == nullptr)
                showCursor(edgesOf(m_window.regionAt(event.pos())));
            return false;
        }
        const QPoint distance = event.globalPos() - m_pressedAt;
        // A move begins with the drag, so that a double click remains one.
        if (m_grip == Grip::Pressed && distance.manhattanLength() >= QApplication::startDragDistance())
            startDrag();
        if (m_grip == Grip::ByHand)
            m_window.setGeometry(draggedGeometry(m_startGeometry, m_edges, distance, m_window.minimumSize()));
        return true;
    }

    bool onRelease(const QMouseEvent& event)
    {
        if (m_grip == Grip::Idle || event.button() != Qt::LeftButton)
            return false;
        m_grip = Grip::Idle;
        return true;
    }

    bool onDoubleClick(const QMouseEvent& event)
    {
        // The press that belongs to it came just before.
        if (m_grip == Grip::Idle || event.button() != Qt::LeftButton)
            return false;
        if (m_grip == Grip::Pressed) {
            m_grip = Grip::Done;
            m_window.setWindowState(m_window.windowState() ^ Qt::WindowMaximized);
        }
        return true;
    }

    void startDrag()
    {
        QWindow* handle = m_window.windowHandle();
        const bool isTaken = m_edges ? handle->startSystemResize(m_edges) : handle->startSystemMove();
        m_grip = isTaken || m_window.isMaximized() ? Grip::Done : Grip::ByHand;
    }

    /// No edges: whatever cursor the widgets have.
    void showCursor(Qt::Edges edges)
    {
        if (edges == m_cursorEdges)
            return;
        if (!edges)
            QGuiApplication::restoreOverrideCursor();
        else if (m_cursorEdges)
            QGuiApplication::changeOverrideCursor(cursorShape(edges));
        else
            QGuiApplication::setOverrideCursor(cursorShape(edges));
        m_cursorEdges = edges;
    }

    MainWindow& m_window;
    Grip m_grip = Grip::Idle;
    Qt::Edges m_edges;
    Qt::Edges m_cursorEdges;
    QPoint m_pressedAt;
    QRect m_startGeometry;
};

} // namespace

std::unique_ptr<QObject> MainWindow::makeFrame()
{
    return std::make_unique<WindowFrame>(*this);
}

bool MainWindow::canMinimise()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return isOnWayland();
    int number = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &number);
    bool isManaged = false;
    if (xcb_connection_has_error(connection) == 0) {
        auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
        for (; number > 0; --number)
            xcb_screen_next(&screen);
        xcb_get_window_attributes_reply_t* root = xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, screen.data->root), nullptr);
        isManaged = root && (root->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
        std::free(root);
    }
    xcb_disconnect(connection);
    return isManaged;
}

bool MainWindow::canBeRaised()
{
    return !isOnWayland();
}

// The frame hears the mouse through the toolkit here.
bool MainWindow::nativeEvent(const QByteArray& eventType, void* message, long* result)
{
    return QWidget::nativeEvent(eventType, message, result);
}
