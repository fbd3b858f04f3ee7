#include "ui/ControlPage.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/pageValues.h"
#include "ui_ControlPage.h"
#include "widgets/EffectWorkerButton.h"
#include "widgets/LineWrappedRadioButton.h"
#include "widgets/StackLayout.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>

namespace {

constexpr int kWorkerDiameter = 100;
constexpr int kMinPictureHeight = 200;
constexpr int kMinPictureWidth = 280; ///< from here on the headers stand beside their controls
constexpr int kControlsWidth = 440;   ///< four effects side by side
constexpr int kHeaderHeight = 30;     ///< of one that stands above
constexpr int kMaxHeaderWidth = 156;  ///< of one that stands beside; a longer word has what it needs
constexpr int kHeaderPadding = 28;    ///< as the style sheet says, and a little for rounding

bool isControlModeViewEnabled()
{
    return ConfigurationManager::instance()
        ->appConfig(ConfigKeys::kEnableMultiDeviceControlView.key)
        .toBool(ConfigKeys::kEnableMultiDeviceControlView.fallback);
}

} // namespace

ControlPage::ControlPage(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::ControlPage>())
{
    ui->setupUi(this);
    connectForm();
    stackRegions();
    ui->devControlModeRegion->setVisible(isControlModeViewEnabled());
    ui->modelImageHeader->installEventFilter(this);
    for (QWidget* area : {ui->optAreaWidget, ui->scrollAreaWidgetContents_3})
        area->installEventFilter(this);
    ui->otherOptRegion->hide();
}

ControlPage::~ControlPage() = default;

void ControlPage::connectForm()
{
    connect(ui->installDirectionLTRButton, &QRadioButton::toggled, this,
            &ControlPage::onInstallDirRadioBtnChanged);
    connect(ui->LEDEnableButton, &QRadioButton::toggled, this, &ControlPage::onLEDSwitchBtnChanged);
    connect(ui->brightnessSlider, &QSlider::valueChanged, this, &ControlPage::onBrightnessChanged);
    connect(ui->wallColorButton, &QPushButton::clicked, this, &ControlPage::wallColorsOrdered);
    connect(ui->noticeButton, &QPushButton::clicked, this, &ControlPage::noticeActionClicked);
    connect(ui->singleDevControlCheckBox, &QRadioButton::clicked, this, &ControlPage::onDevCtlModeChanged);
    connect(ui->multDevControlCheckBox, &QRadioButton::clicked, this, &ControlPage::onDevCtlModeChanged);
    connect(ui->workGroupContainer, &ChoiceGrid::chosen, this, [this](const QString& id) {
        m_currentGroup = id;
        emit workGoupChanged(id);
    });
    connect(ui->workerContainer, &ChoiceGrid::chosen, this, [this](const QString& id) {
        emit workerChanged(id);
        if (m_workers.contains(id)) // the receiver may have set other effects
            setCurrentWorker(id);
    });
}

void ControlPage::stackRegions()
{
    delete ui->optAreaWidget->layout();
    m_regions = new StackLayout(ui->optAreaWidget);
    m_regions->setSpacing(0);
    for (QWidget* region : std::initializer_list<QWidget*>{
             ui->devControlModeRegion, ui->devDirRegion, ui->workGroupRegion, ui->statusRegion,
             ui->brightnessRegion, ui->otherOptRegion, ui->noticeRegion, ui->workersRegion})
        m_regions->addWidget(region);
}

int ControlPage::dir() const
{
    return ui->installDirectionLTRButton->isChecked() ? 0 : 1;
}

bool ControlPage::isLightEnabled() const
{
    return ui->LEDEnableButton->isChecked();
}

float ControlPage::brightness() const
{
    return static_cast<float>(ui->brightnessSlider->value()) / 100.0f;
}

void ControlPage::setDir(int dir)
{
    const QSignalBlocker blocker(this);
    (dir != 0 ? ui->installDirectionRTLButton : ui->installDirectionLTRButton)->click();
    update();
}

void ControlPage::setEnable(bool enable)
{
    const QSignalBlocker blocker(this);
    (enable ? ui->LEDEnableButton : ui->LEDDisableButton)->click();
    update();
}

void ControlPage::setSingleDevCtrlMode(bool enable)
{
    if (enable == m_singleDevCtrlMode)
        return;
    const QSignalBlocker blocker(this);
    m_singleDevCtrlMode = enable;
    (enable ? ui->singleDevControlCheckBox : ui->multDevControlCheckBox)->click();
    update();
}

void ControlPage::setBrightness(float brightness)
{
    const QSignalBlocker blocker(this);
    ui->brightnessSlider->setValue(toPercent(brightness));
    update();
}

void ControlPage::setWorkGroups(QMap<QString, WorkGroupModel> groups, QString currentGroup)
{
    m_groups = groups;
    ui->workGroupContainer->setChoices(choices(groups), "GroupInformation");
    for (auto group = m_groups.begin(); group != m_groups.end(); ++group)
        group->button = ui->workGroupContainer->button(group.key()).staticCast<LineWrappedRadioButton>();
    chainTabOrder();
    setCurrentGroup(currentGroup);
    remeasure();
}

void ControlPage::setCurrentGroup(QString groupId)
{
    if (!m_groups.contains(groupId))
        return;
    m_currentGroup = groupId;
    ui->workGroupContainer->setCurrent(groupId);
}

void ControlPage::setWorkers(QMap<QString, WorkerModel> workers, QString currentWorker)
{
    m_workers = workers;
    ui->workerContainer->setChoices(choices(workers), "EffectNames", kWorkerDiameter);
    for (auto worker = m_workers.begin(); worker != m_workers.end(); ++worker)
        worker->button = ui->workerContainer->button(worker.key()).staticCast<EffectWorkerButton>();
    chainTabOrder();
    if (!currentWorker.isEmpty())
        setCurrentWorker(currentWorker);
    else if (!m_workers.contains(m_currentWorker))
        dropOptionWidgets(); // of an effect that is no longer there
    // Whoever fills the options may have set other effects meanwhile.
    ui->workersRegion->setVisible(m_workers.size() != 1);
    remeasure();
}

void ControlPage::setControllerName(QString name)
{
    if (name == m_controllerName)
        return;
    m_controllerName = name;
    showControllerName();
}

void ControlPage::showControllerName()
{
    // The user's own text: one line, never markup, never wider than the column.
    QString line = m_controllerName;
    line.replace(u'\n', u' ');
    QLabel* header = ui->modelImageHeader;
    // A label goes by the direction of its text; this one stands where the other headers stand.
    header->setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter |
                         (isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft));
    const QString shown =
        header->fontMetrics().elidedText(line, Qt::ElideMiddle, header->contentsRect().width());
    header->setText(shown);
    header->setToolTip(shown == line ? QString()
                                     : QStringLiteral("<qt>%1</qt>").arg(m_controllerName.toHtmlEscaped()));
}

void ControlPage::setControllerId(QString id)
{
    m_controllerId = id;
    // A page that is opened begins at its top, or once it is filled where the chosen effect shows. What a
    // large option widget stands there for counts more.
    ui->scrollArea->verticalScrollBar()->setValue(0);
    QTimer::singleShot(0, this, [this] {
        const auto chosen = ui->workerContainer->button(m_currentWorker);
        if (chosen && chosen->isVisible() && ui->lOperateWidConatiner->count() == 1)
            ui->scrollArea->ensureWidgetVisible(chosen.data(), 0, 0);
    });
}

void ControlPage::onInstallDirRadioBtnChanged(bool dir)
{
    emit dirChanged(dir ? 0 : 1);
}

void ControlPage::onLEDSwitchBtnChanged(bool enable)
{
    emit enableChanged(enable);
}

void ControlPage::onBrightnessChanged(int value)
{
    emit brightnessChanged(static_cast<float>(value) / 100.0f);
}

void ControlPage::onDevCtlModeChanged()
{
    m_singleDevCtrlMode = ui->singleDevControlCheckBox->isChecked();
    emit controlModeChanged(m_singleDevCtrlMode);
}

void ControlPage::setControlModeVisible(bool visible)
{
    ui->devControlModeRegion->setVisible(visible);
    remeasure();
}

void ControlPage::setNotice(QString text, QString action)
{
    ui->noticeLabel->setText(text);
    ui->noticeButton->setText(action);
    ui->noticeButton->setHidden(action.isEmpty());
    ui->noticeRegion->setHidden(text.isEmpty());
    remeasure();
}

void ControlPage::toggleControlModeView()
{
    const bool enabled = !isControlModeViewEnabled();
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kEnableMultiDeviceControlView.key, enabled);
    setControlModeVisible(enabled);
    if (!enabled && ui->multDevControlCheckBox->isChecked())
        ui->singleDevControlCheckBox->click(); // nobody could see any more that all devices follow
}

QList<ControlPage::Region> ControlPage::regions() const
{
    QList<Region> result;
    for (int i = 0; i < m_regions->count(); ++i) {
        QWidget* widget = m_regions->itemAt(i)->widget();
        auto* layout = static_cast<QBoxLayout*>(widget->layout());
        if (widget != ui->noticeRegion) // which has no header
            result.append({widget, layout, static_cast<QLabel*>(layout->itemAt(0)->widget()),
                           layout->itemAt(1)->widget()});
    }
    return result;
}

/// Beside their controls the headers form a column; above them where the picture, or the large options in its
/// place, would have no room left.
void ControlPage::placeHeaders(int pageWidth)
{
    int column = 0;
    for (const Region& region : regions()) {
        region.header->ensurePolished();
        const int text = region.header->fontMetrics().horizontalAdvance(region.header->text());
        const int longestWord = region.header->minimumSizeHint().width();
        column = qMax(column, qMax(qMin(text + kHeaderPadding, kMaxHeaderWidth), longestWord));
    }
    const int right = qMax(kMinPictureWidth, ui->modelImage->minimumSizeHint().width());
    const bool beside = pageWidth >= column + kControlsWidth + ui->columnsLayout->spacing() + right;
    for (const Region& region : regions()) {
        region.layout->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
        region.header->setMinimumSize(beside ? column : 0, beside ? 0 : kHeaderHeight);
        region.header->setMaximumWidth(beside ? column : QWIDGETSIZE_MAX);
        region.widget->setMinimumHeight(region.header->minimumHeight() + region.body->minimumHeight());
    }
    const QMargins unused = m_regions->contentsMargins();
    const int needed = m_regions->minimumSize().width() - unused.left() - unused.right();
    ui->optAreaWidget->setMinimumWidth(qMax((beside ? column : 0) + kControlsWidth, needed));
}

void ControlPage::remeasure()
{
    const QMargins margins = m_regions->contentsMargins();
    const int width = ui->scrollArea->width() - margins.left() - margins.right();
    placeHeaders(width);

    const int height = m_regions->sizeHint().height();
    // A large option widget may need more than a small window has: it is scrolled to, not laid over the rest.
    ui->scrollAreaWidgetContents_3->setFixedSize(qMax(width, ui->columnsLayout->minimumSize().width()),
                                                 height);
    // The horizontal bar on purpose: the vertical one comes and goes by itself.
    ui->scrollArea->setHorizontalScrollBarPolicy(height >= ui->scrollArea->height() ? Qt::ScrollBarAsNeeded
                                                                                    : Qt::ScrollBarAlwaysOff);
    // The height counts the stack's margins, which it uses for its lines only: both columns end together.
    ui->modelImageLayout->setContentsMargins(0, 0, 0, qMax(0, height - m_regions->heightForWidth(width)));
    // The picture in the middle of what shows at first, not of a column that runs on below the window.
    const QMargins frame = ui->lOperateWidRegion->layout()->contentsMargins();
    const int around = ui->modelImageHeader->sizeHint().height() + frame.top() + frame.bottom();
    ui->productImgWid->setMaximumHeight(qMax(kMinPictureHeight, ui->scrollArea->height() - around));
}

void ControlPage::chainTabOrder()
{
    // From top to bottom; buttons and options that came later would stand behind everything else.
    QWidget* last = nullptr;
    const auto append = [this, &last](const QWidget* parent) {
        const auto widgets = parent->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            const bool isElsewhere = widget->window() != window(); // the list of a combo box
            if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() || isElsewhere)
                continue;
            if (last)
                setTabOrder(last, widget);
            last = widget;
            widget->installEventFilter(this);
        }
    };
    for (int i = 0; i < m_regions->count(); ++i)
        append(m_regions->itemAt(i)->widget());
    append(ui->lOperateWidConatiner->currentWidget());
}

bool ControlPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->modelImageHeader) {
        if (event->type() == QEvent::Resize)
            showControllerName();
        else if (event->type() == QEvent::MouseButtonPress &&
                 static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            toggleControlModeView();
    } else if (watched == ui->optAreaWidget || watched == ui->scrollAreaWidgetContents_3) {
        // A region needs another size: texts were wrapped, the font or an option widget has changed.
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
            remeasure();
    } else if (event->type() == QEvent::FocusIn) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            ui->scrollArea->ensureWidgetVisible(static_cast<QWidget*>(watched));
    }
    return QWidget::eventFilter(watched, event);
}

void ControlPage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    remeasure();
}

void ControlPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    remeasure();
}

void ControlPage::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LayoutDirectionChange)
        showControllerName();
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        remeasure();
    }
    QWidget::changeEvent(event);
}
