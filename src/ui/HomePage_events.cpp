// What the user does to the device buttons and the first picture box.
#include "ui/HomePage.h"

#include "ui/DeviceButton.h"
#include "ui_HomePage.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>

namespace {

bool isReturn(const QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Focus that comes back by itself: the window's turn, or a menu that closes.
bool isPassing(const QEvent* event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

bool isByKeyboard(const QEvent* event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent*>(event)->reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

} // namespace

QLineEdit* HomePage::nameEditOf(const QToolButton* button)
{
    return button->property("nameEdit").value<QLineEdit*>();
}

QToolButton* HomePage::configButtonOf(const QToolButton* button)
{
    return button->property("configBtn").value<QToolButton*>();
}

bool HomePage::eventFilter(QObject* watched, QEvent* event)
{
    const QString role = watched->property("role").toString();
    if (role == QLatin1String("deviceButton")) {
        if (auto* button = qobject_cast<DeviceButton*>(watched))
            return deviceButtonEvent(button, event);
    } else if (role == QLatin1String("deviceButtonNameEdit")) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched))
            return nameEditEvent(edit, event);
    } else if (role == QLatin1String("deviceButtonConfig")) {
        if (auto* config = qobject_cast<QToolButton*>(watched))
            return configButtonEvent(config, event);
    } else if (watched == ui->ADBox1 && event->type() == QEvent::MouseButtonPress && !m_adBox1Url.isEmpty()) {
        openADBox1Url();
    } else if (watched == ui->controllerButtonScrollArea && event->type() == QEvent::Resize) {
        fitColumns();
    }
    return QWidget::eventFilter(watched, event);
}

bool HomePage::deviceButtonEvent(DeviceButton* button, QEvent* event)
{
    QToolButton* config = configButtonOf(button);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        return nameStripEvent(button, static_cast<QMouseEvent*>(event));
    case QEvent::Enter:
        if (isAdjustable(button))
            showConfigButton(button);
        return false;
    case QEvent::Leave:
        if (isAdjustable(button) && !config->property("keptByFocus").toBool())
            config->hide();
        return false;
    case QEvent::FocusIn:
        if (isAdjustable(button) && isByKeyboard(event)) {
            config->setProperty("keptByFocus", true);
            showConfigButton(button);
        }
        return false;
    case QEvent::FocusOut:
        if (!isPassing(event))
            hideUnfocusedConfigButton(button);
        return false;
    case QEvent::KeyPress:
        if (!nameEditOf(button)->isHidden()) { // what its editor has no use for comes up here
            event->ignore();
            return true;
        }
        return moveInGrid(button, static_cast<QKeyEvent*>(event)->key());
    default:
        return false;
    }
}

bool HomePage::isAdjustable(const DeviceButton* button) const
{
    const auto device = m_devices.constFind(button->property("controllerId").toString());
    return device != m_devices.constEnd() && device->flag;
}

bool HomePage::nameStripEvent(DeviceButton* button, const QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !button->nameStrip().contains(event->pos()))
        return false;
    const bool press = event->type() == QEvent::MouseButtonPress;
    button->setProperty("isLeftButtonPress", press);
    if (!press) {
        button->setDown(false); // if it was pressed above the strip
        beginRename(button);
    }
    return true;
}

void HomePage::beginRename(DeviceButton* button)
{
    QLineEdit* edit = nameEditOf(button);
    edit->setText(button->text());
    edit->show();
    edit->setFocus(Qt::OtherFocusReason);
}

bool HomePage::nameEditEvent(QLineEdit* edit, QEvent* event)
{
    if (isReturn(event)) {
        // Focus goes to the button, not to whatever comes next; losing it ends the edit already.
        if (edit->hasFocus())
            edit->parentWidget()->setFocus(Qt::OtherFocusReason);
        endRename(edit);
        return true;
    }
    // The editor's own menu takes the focus only for a while, and pastes afterwards.
    const bool menu = event->type() == QEvent::FocusOut &&
                      static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason;
    if (event->type() != QEvent::FocusOut || menu)
        return false;
    endRename(edit);
    return true;
}

/// Runs twice where hiding the editor takes the focus from it: then the second time finds no difference.
void HomePage::endRename(QLineEdit* edit)
{
    edit->hide();
    auto* button = qobject_cast<DeviceButton*>(edit->parentWidget());
    const QString name = edit->text();
    if (!button || name == button->text())
        return;
    button->setName(name);
    const QString id = button->property("controllerId").toString();
    order(id, [this, id, name] {
        // The page may have been filled meanwhile, with the old name.
        qobject_cast<DeviceButton*>(m_devices.value(id).button.data())->setName(name);
        emit controllerNameChanged(id, name);
    });
}

bool HomePage::configButtonEvent(QToolButton* config, QEvent* event)
{
    auto* button = qobject_cast<DeviceButton*>(config->parentWidget());
    if (isReturn(event)) {
        config->click();
        return true;
    }
    if (button && event->type() == QEvent::FocusOut && !isPassing(event))
        hideUnfocusedConfigButton(button);
    return false;
}

void HomePage::showConfigButton(DeviceButton* button)
{
    QToolButton* config = configButtonOf(button);
    const QRect corner(button->width() - config->width() - 1, 0, config->width(), config->height());
    config->move(QStyle::visualRect(layoutDirection(), button->rect(), corner).topLeft());
    config->show();
    config->raise();
}

/// The focus has gone already, so what has it now tells whether the settings button is still wanted.
void HomePage::hideUnfocusedConfigButton(DeviceButton* button)
{
    QToolButton* config = configButtonOf(button);
    if (button->hasFocus() || config->hasFocus())
        return;
    config->setProperty("keptByFocus", false);
    if (!button->underMouse())
        config->hide();
}

/// Arrow keys go by rows and columns; without this every one of them would go to the next widget.
bool HomePage::moveInGrid(const DeviceButton* button, int key)
{
    int step = 0;
    switch (key) {
    case Qt::Key_Up:
        step = -m_columns;
        break;
    case Qt::Key_Down:
        step = m_columns;
        break;
    case Qt::Key_Left:
        step = isRightToLeft() ? 1 : -1;
        break;
    case Qt::Key_Right:
        step = isRightToLeft() ? -1 : 1;
        break;
    default:
        return false;
    }
    const QStringList ids = m_devices.keys();
    const int target = ids.indexOf(button->property("controllerId").toString()) + step;
    if (target < 0 || target >= ids.size())
        return true;
    QToolButton* next = m_devices.value(ids.at(target)).button.data();
    next->setFocus(step < 0 ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    ui->controllerButtonScrollArea->ensureWidgetVisible(next, 0, kMargin);
    return true;
}
