#include "effects/colorful/GradientWidget.h"

#include "effects/colorful/GradientHandler.h"

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

namespace {

const QColor kGround(41, 41, 41);
constexpr int kViewHeight = 25;
constexpr int kViewMargin = 20; // at the end of the bar, under the arrow of the box that shows the gradient
constexpr int kPressHeight = 35;
constexpr double kSmallStep = 0.01;
constexpr double kLargeStep = 0.1;

QString addTitle()
{
    return QCoreApplication::translate("MoodShadow", "选择颜色");
}

QString changeTitle()
{
    return GradientWidget::tr("选择颜色");
}

/// Gone for the user at once. It may be dropped by whoever hears of its own move, so the object itself stays
/// until it has come back from there.
void retire(GradientHandler* handler)
{
    if (handler->scene())
        handler->scene()->removeItem(handler);
    handler->blockSignals(true); // its menu may still be open
    handler->deleteLater();
}

bool isSame(const QGradientStops& a, const QGradientStops& b)
{
    return std::is_permutation(
        a.begin(), a.end(), b.begin(), b.end(), [](const QGradientStop& left, const QGradientStop& right) {
            return left.first == right.first && left.second.rgb() == right.second.rgb();
        });
}

} // namespace

GradientWidget::GradientWidget(QWidget* parent)
    : QWidget(parent)
    , m_view(new QGraphicsView(this))
{
    m_scene = new QGraphicsScene(m_view);
    m_scene->setBackgroundBrush(kGround);
    m_view->setScene(m_scene);
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setLayoutDirection(Qt::LeftToRight); // mirrored as a whole instead
    m_view->setFocusPolicy(Qt::NoFocus);         // the keyboard is this widget's
    m_view->viewport()->setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);

    m_leftHandler = makeHandler(m_endsColor, false);
    m_rightHandler = makeHandler(m_endsColor, false);
    m_rightHandler->setPosition(1.0);
    for (const Handler& end : {m_leftHandler, m_rightHandler}) {
        connect(end.data(), &GradientHandler::requestChangeColor, this,
                &GradientWidget::onEndsColorRequestUpdate);
    }
    m_current = m_leftHandler.data();
    layoutScene();
    retranslate();
}

GradientWidget::Handler GradientWidget::makeHandler(const QColor& color, bool isMovable)
{
    Handler handler(new GradientHandler(color), retire);
    handler->setFlag(QGraphicsItem::ItemIsMovable, isMovable);
    handler->setZValue(isMovable ? 0.0 : -1.0);
    handler->retranslate();
    m_scene->addItem(handler.data());
    connect(handler.data(), &GradientHandler::pressed, this,
            [this, pressed = handler.data()] { setCurrent(pressed); });
    return handler;
}

// --- the colours ---

void GradientWidget::setKeyColors(const QGradientStops& keyColors)
{
    dismissDialog();
    if (isSame(keyColors, gradientStops().mid(1, m_keyHandlers.size())))
        return; // whoever hears of a change may set it again: a handle that is being dragged stays

    const QSignalBlocker blocker(this);
    const int at = handlersInOrder().indexOf(m_current);
    setCurrent(m_leftHandler.data());
    m_keyHandlers.clear();
    for (const QGradientStop& stop : keyColors)
        addKeyColor(stop.second, stop.first);
    setCurrent(handlersInOrder().value(at, m_rightHandler.data()));
    update();
}

QVector<KeyColor> GradientWidget::keyColors() const
{
    return m_keyHandlers.values().toVector();
}

void GradientWidget::setEndsColor(const QColor& color)
{
    dismissDialog();
    m_endsColor = color;
    m_leftHandler->setColor(color);
    m_rightHandler->setColor(color);
    update();
}

void GradientWidget::addKeyColor(const QColor& color, double pos)
{
    const Handler handler = makeHandler(color, true);
    handler->setPosition(pos);
    m_keyHandlers.insert(handler, {handler->position(), color});
    // By its address: a strong reference would keep the handler alive in its own connections.
    GradientHandler* const key = handler.data();
    connect(key, &GradientHandler::posChanged, this, [this, key](double p) {
        find(key)->key = p;
        changed();
    });
    connect(key, &GradientHandler::requestChangeColor, this, [this, key] { onColorRequestUpdate(key); });
    connect(key, &GradientHandler::requestDelete, this, [this, key] { deleteKeyColor(key); });
    setCurrent(key);
    changed();
}

QMap<GradientWidget::Handler, KeyColor>::iterator GradientWidget::find(const GradientHandler* handler)
{
    auto entry = m_keyHandlers.begin();
    while (entry != m_keyHandlers.end() && entry.key() != handler)
        ++entry;
    return entry;
}

QGradientStops GradientWidget::gradientStops() const
{
    QGradientStops stops;
    for (const GradientHandler* handler : handlersInOrder())
        stops.append({handler->position(), handler->color()});
    return stops;
}

void GradientWidget::onColorRequestUpdate(GradientHandler* handler)
{
    askColor(handler->color(), changeTitle, [this, handler](const QColor& color) {
        const auto entry = find(handler);
        if (entry == m_keyHandlers.end())
            return;
        handler->setColor(color);
        entry->color = color;
        changed();
    });
}

void GradientWidget::onEndsColorRequestUpdate()
{
    askColor(m_endsColor, changeTitle, [this](const QColor& color) {
        setEndsColor(color);
        changed();
    });
}

void GradientWidget::deleteKeyColor(const GradientHandler* handler)
{
    if (m_keyHandlers.size() < 2)
        return; // a gradient without key colours is none
    dismissDialog();
    if (m_current == handler) {
        const auto handlers = handlersInOrder();
        const int at = handlers.indexOf(m_current);
        const bool isLast = !handlers.at(at + 1)->isMovable();
        setCurrent(handlers.at(isLast ? at - 1 : at + 1));
    }
    m_keyHandlers.erase(find(handler));
    changed();
}

void GradientWidget::changed()
{
    for (GradientHandler* handler : handlersInOrder())
        handler->setDeletable(m_keyHandlers.size() > 1);
    setAccessibleName(m_current->description());
    update();
    emit keyColorChanged();
}

// --- the colour dialog ---

void GradientWidget::askForNewColor(double pos)
{
    askColor(Qt::white, addTitle, [this, pos](const QColor& color) { addKeyColor(color, pos); });
}

void GradientWidget::askColor(const QColor& initial, QString (*title)(),
                              const std::function<void(QColor)>& apply)
{
    if (m_dialog)
        return;
    // Owned and without a loop of its own: the dialog goes with this widget, and nobody has to ask afterwards
    // what is still there.
    m_dialog = new QColorDialog(initial, this);
    m_dialogTitle = title;
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setWindowTitle(title());
    connect(m_dialog, &QDialog::finished, this, [this] { m_dialog.clear(); });
    connect(m_dialog, &QColorDialog::colorSelected, this, [apply](const QColor& color) {
        if (color.isValid())
            apply(color);
    });
    m_dialog->open();
}

void GradientWidget::dismissDialog()
{
    if (!m_dialog)
        return;
    m_dialog->disconnect(this);
    m_dialog->reject();
    m_dialog.clear();
}

// --- keyboard ---

QString GradientWidget::spokenValue() const
{
    return QStringLiteral("%1%").arg(qRound(m_current->position() * 100));
}

QVector<GradientHandler*> GradientWidget::handlersInOrder() const
{
    QVector<GradientHandler*> handlers;
    for (auto each = m_keyHandlers.keyBegin(); each != m_keyHandlers.keyEnd(); ++each)
        handlers.append(each->data());
    std::stable_sort(
        handlers.begin(), handlers.end(),
        [](const GradientHandler* a, const GradientHandler* b) { return a->position() < b->position(); });
    handlers.prepend(m_leftHandler.data());
    handlers.append(m_rightHandler.data());
    return handlers;
}

void GradientWidget::setCurrent(GradientHandler* handler)
{
    m_current->setMarked(false);
    m_current = handler;
    m_current->setMarked(hasFocus());
    setAccessibleName(m_current->description());
}

void GradientWidget::focusInEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::TabFocusReason)
        m_current = m_leftHandler.data();
    else if (event->reason() == Qt::BacktabFocusReason)
        m_current = m_rightHandler.data();
    setCurrent(m_current);
    QWidget::focusInEvent(event);
}

void GradientWidget::focusOutEvent(QFocusEvent* event)
{
    m_current->setMarked(false);
    QWidget::focusOutEvent(event);
}

bool GradientWidget::focusNextPrevChild(bool next)
{
    const auto handlers = handlersInOrder();
    const int to = handlers.indexOf(m_current) + (next ? 1 : -1);
    if (to < 0 || to >= handlers.size())
        return QWidget::focusNextPrevChild(next);
    setCurrent(handlers.at(to));
    return true;
}

double GradientWidget::placeBesideCurrent() const
{
    const auto handlers = handlersInOrder();
    const int at = qMin(handlers.indexOf(m_current), handlers.size() - 2);
    return (handlers.at(at)->position() + handlers.at(at + 1)->position()) / 2;
}

void GradientWidget::keyPressEvent(QKeyEvent* event)
{
    const double step = event->modifiers().testFlag(Qt::ControlModifier) ? kLargeStep : kSmallStep;
    const double toTheRight = isRightToLeft() ? -step : step;
    const auto moveTo = [this](double pos) {
        if (m_current->isMovable())
            m_current->moveTo(pos);
    };
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(m_current->position() - toTheRight);
    case Qt::Key_Right:
        return moveTo(m_current->position() + toTheRight);
    case Qt::Key_PageDown:
        return moveTo(m_current->position() - kLargeStep);
    case Qt::Key_PageUp:
        return moveTo(m_current->position() + kLargeStep);
    case Qt::Key_Home:
        return moveTo(0.0);
    case Qt::Key_End:
        return moveTo(1.0);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        emit m_current->requestChangeColor();
        return;
    case Qt::Key_Insert:
        return askForNewColor(placeBesideCurrent());
    case Qt::Key_Delete:
        emit m_current->requestDelete(); // nobody listens to the ends
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

// --- mouse, place and paint ---

void GradientWidget::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    if (event->button() != Qt::LeftButton || event->y() >= kPressHeight)
        return;
    event->accept();
    const double fromLeft = double(event->x()) / width();
    askForNewColor(isRightToLeft() ? 1.0 - fromLeft : fromLeft);
}

void GradientWidget::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard)
        return QWidget::contextMenuEvent(event);
    const QPoint at = m_view->mapFromScene(m_current->sceneBoundingRect().center());
    m_current->showMenu(m_view->viewport()->mapToGlobal(at), this);
}

void GradientWidget::layoutScene()
{
    const int viewWidth = qMax(1, width() - kViewMargin);
    m_scene->setSceneRect(0, 0, viewWidth + 1, kViewHeight);
    m_view->setFixedSize(viewWidth, kViewHeight);
    m_view->move(isRightToLeft() ? width() - viewWidth : 0, 0);
    m_view->setTransform(QTransform::fromScale(isRightToLeft() ? -1 : 1, 1));
    m_view->setSceneRect(0, 0, viewWidth, kViewHeight); // nothing to scroll
    for (GradientHandler* handler : handlersInOrder())
        handler->setPosition(handler->position());
    m_view->update();
    m_scene->update();
}

void GradientWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutScene();
}

void GradientWidget::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), kGround);
}

void GradientWidget::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous())
        dismissDialog();
    QWidget::hideEvent(event);
}

void GradientWidget::retranslate()
{
    const QString keys = tr("Tab 键切换颜色，方向键移动，回车键修改，Insert 键添加，Delete 键删除");
    setToolTip(tr("单击可添加颜色") + u'\n' + keys);
    setAccessibleDescription(keys);
    for (GradientHandler* handler : handlersInOrder())
        handler->retranslate();
    setAccessibleName(m_current->description());
    if (m_dialog)
        m_dialog->setWindowTitle(m_dialogTitle());
}

void GradientWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::LayoutDirectionChange)
        layoutScene();
    QWidget::changeEvent(event);
}
