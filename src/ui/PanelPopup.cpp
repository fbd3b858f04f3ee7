#include "ui/PanelPopup.h"

#include "ui/DeviceControlWidget.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace {

constexpr int kGrabMs = 50;

int placeBesideAlong(int anchor, int length, int from, int end)
{
    const int start = anchor + length <= end ? anchor : anchor - length;
    return qMax(from, qMin(start, end - length));
}

bool isOnWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

PanelPopup::PanelPopup()
    // A popup of Wayland's belongs to a window and to a press in it; the press was in the desktop's menu.
    : QWidget(nullptr, (isOnWayland() ? Qt::Dialog : Qt::Popup) | Qt::FramelessWindowHint)
    , m_header(new QLabel(this))
    , m_panel(new DeviceControlWidget(this))
{
    setProperty("class", "PanelPopup");
    setAttribute(Qt::WA_StyledBackground);
    m_header->setProperty("class", "PanelTitle");
    m_header->setTextFormat(Qt::PlainText);
    m_header->setIndent(0);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(1, 1, 1, 1); // the border
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_panel);
    m_grabbing.setSingleShot(true);
    connect(&m_grabbing, &QTimer::timeout, this, &PanelPopup::grabInput);
}

void PanelPopup::setTitle(const QString& title)
{
    setWindowTitle(title);
    // A label goes by the direction of its text; this one stands where the panel's other headers stand.
    m_header->setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter |
                           (isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft));
    m_header->clear();
    m_header->ensurePolished();
    const int room = m_panel->width() - m_header->sizeHint().width();
    QString line = title;
    line.replace(u'\n', u' ');
    m_header->setText(m_header->fontMetrics().elidedText(line, Qt::ElideMiddle, room));
}

void PanelPopup::showAt(const QPoint& anchor)
{
    const QScreen* screen = QGuiApplication::screenAt(anchor);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (isOnWayland())
        setFixedSize(sizeHint()); // or it might be tiled
    else
        adjustSize();
    move(placeBeside(anchor, size(), screen->availableGeometry()));
    show();
    m_panel->setFocus(Qt::PopupFocusReason);
    // On X11 alone another program's menu keeps them from a popup; elsewhere each attempt is a line in the
    // log.
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        grabInput();
}

QPoint PanelPopup::placeBeside(const QPoint& anchor, const QSize& size, const QRect& workArea)
{
    return {placeBesideAlong(anchor.x(), size.width(), workArea.left(), workArea.left() + workArea.width()),
            placeBesideAlong(anchor.y(), size.height(), workArea.top(), workArea.top() + workArea.height())};
}

/// The desktop's menu, from which the order came, may still hold pointer and keyboard when this shows.
/// Without them a click elsewhere would never be heard of.
void PanelPopup::grabInput()
{
    if (!isVisible())
        return;
    m_hasKeys = m_hasKeys || windowHandle()->setKeyboardGrabEnabled(true);
    windowHandle()->setMouseGrabEnabled(true);
    // The toolkit takes a refused pointer for a held one, and a menu may let it go after the keys.
    if (!m_hasKeys || m_pointerGrabsLeft-- > 0)
        m_grabbing.start(kGrabMs);
}

void PanelPopup::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

bool PanelPopup::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate)
        close(); // where popups are windows like others
    if (event->type() == QEvent::LayoutDirectionChange)
        setTitle(windowTitle());
    return QWidget::event(event);
}
