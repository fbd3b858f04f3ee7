#include "ui/DeviceControlWidget.h"

#include "ui/pageValues.h"
#include "ui_DeviceControlWidget.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace {

constexpr QSize kSize(460, 600);      ///< always the same: nothing is to jump when another group is chosen
constexpr int kRoomAround = 60;       ///< that a small screen keeps for its bars
constexpr int kHeaderPadding = 28;    ///< as the style sheet says, and a little for rounding
constexpr int kMostHeaderWidth = 150; ///< a longer word has what it needs

QSize sizeForEveryScreen()
{
    QSize size = kSize;
    for (const QScreen* screen : QGuiApplication::screens())
        size.setHeight(qMin(size.height(), screen->availableSize().height() - kRoomAround));
    return size;
}

} // namespace

DeviceControlWidget::DeviceControlWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::DeviceControlWidget>())
{
    ui->setupUi(this);
    setFixedSize(sizeForEveryScreen());
    setAttribute(Qt::WA_NoMousePropagation); // a menu would take a click beside the controls for its own
    setFocusPolicy(Qt::TabFocus);            // else a menu would not hand the keyboard on
    nameParts();
    connect(ui->effectGroupView, &ChoiceGrid::chosen, this, &DeviceControlWidget::onEffectGroupClicked);
    connect(ui->effectView, &WorkerListView::currentWorkerChanged, this,
            &DeviceControlWidget::onCurEffectChanged);
    connect(ui->lightEnableBtn, &QRadioButton::toggled, this, &DeviceControlWidget::onEnableStatusChanged);
    connect(ui->brightSlider, &QSlider::valueChanged, this, &DeviceControlWidget::onBrightChanged);
}

DeviceControlWidget::~DeviceControlWidget() = default;

void DeviceControlWidget::setEffectGroups(const QMap<QString, EffectGroupModel>& groups,
                                          const QString& currentGroup)
{
    if (groups.keys() != m_groups.keys()) { // else the buttons, and the focus, stay
        m_groups = groups;
        ui->effectGroupView->setChoices(choices(groups), "GroupInformation");
    }
    ui->effectGroupView->setCurrent({});
    setCurrentGroup(currentGroup);
}

bool DeviceControlWidget::setCurrentGroup(const QString& id)
{
    if (!m_groups.contains(id))
        return false;
    ui->effectGroupView->setCurrent(id);
    return true;
}

void DeviceControlWidget::setWorkers(const QMap<QString, WorkerModel>& workers, const QString& currentWorker)
{
    const QWidget* before = ui->effectView->currentButton();
    ui->effectView->setWorkers(workers, currentWorker);
    if (ui->effectView->currentButton() != before) // else the user may be looking elsewhere
        revealCurrentWorker();
}

void DeviceControlWidget::setLightEnabled(bool enable)
{
    QRadioButton* button = enable ? ui->lightEnableBtn : ui->lightDisableBtn;
    button->setChecked(true);
    setFocusProxy(button); // where the keyboard begins
}

void DeviceControlWidget::setBrightness(float brightness)
{
    ui->brightSlider->setValue(toPercent(brightness));
}

void DeviceControlWidget::revealCurrentWorker()
{
    QTimer::singleShot(0, this, [this] { // the discs have their places by then
        if (QWidget* button = ui->effectView->currentButton())
            ui->scrollArea->ensureWidgetVisible(button);
    });
}

void DeviceControlWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    revealCurrentWorker();
}

void DeviceControlWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        nameParts();
    }
    QWidget::changeEvent(event);
}

/// For those who hear the panel instead of seeing it; and the two rows begin in one line.
void DeviceControlWidget::nameParts()
{
    ui->brightSlider->setAccessibleName(ui->brightLabel->text());
    ui->statusView->setAccessibleName(ui->statusLabel->text());
    ui->effectGroupView->setAccessibleName(ui->effectGroupLabel->text());
    ui->effectView->setAccessibleName(ui->effectLabel->text());
    int column = 0;
    for (QLabel* label : {ui->statusLabel, ui->brightLabel}) {
        label->ensurePolished();
        const int text = label->fontMetrics().horizontalAdvance(label->text()) + kHeaderPadding;
        column = qMax(column, qMax(qMin(text, kMostHeaderWidth), label->minimumSizeHint().width()));
    }
    for (QLabel* label : {ui->statusLabel, ui->brightLabel})
        label->setFixedWidth(column);
}

/// Round and round within the panel: a menu would go on to its next entry.
bool DeviceControlWidget::focusNextPrevChild(bool next)
{
    QWidget* const from = focusWidget() ? focusWidget() : this;
    QWidget* to = from;
    do {
        to = next ? to->nextInFocusChain() : to->previousInFocusChain();
    } while (to != from && !(isAncestorOf(to) && to->isVisibleTo(this) && to->isEnabled() &&
                             (to->focusPolicy() & Qt::TabFocus) != 0));
    to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void DeviceControlWidget::onEffectGroupClicked(const QString& id)
{
    emit effectGroupChanged(id);
}

void DeviceControlWidget::onBrightChanged(int percent)
{
    emit brightChanged(percent / 100.0);
}

void DeviceControlWidget::onEnableStatusChanged(bool enable)
{
    emit enableStatusChagned(enable);
}

void DeviceControlWidget::onCurEffectChanged(const QString& id)
{
    emit currentEffectChanged(id);
}
