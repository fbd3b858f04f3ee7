#include "effects/screenSync/layoutEditor/SSLOptWidget.h"

#include "effects/EffectNotice.h"
#include "effects/screenSync/layoutEditor/LayoutCommand.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"
#include "effects/screenSync/subModes/FullScreenMode.h"
#include "support/log/Loggers.h"
#include "ui_SSLOptWidget.h"

#include <QAction>
#include <QDebug>
#include <QEvent>
#include <QJsonArray>
#include <QJsonObject>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <algorithm>

namespace {

constexpr int kMaxLeds = 0xFFFF; ///< what the devices' frames can state
constexpr int kMaxSteps = 200;
constexpr char kLedMap[] = "LEDMap";
constexpr char kScreenSize[] = "screenSize";

void logUserOption(const QString& text)
{
    LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(text));
}

bool isSame(const LedMap& left, const LedMap& right)
{
    return left.screenSize == right.screenSize && left.points == right.points;
}

} // namespace

SSLOptWidget::SSLOptWidget(QWidget* parent)
    : WithProperties(parent)
    , m_ui(std::make_unique<Ui::SSLOptWidget>())
{
    m_ui->setupUi(this);
    m_layout.screenSize = QSize(m_ui->widthBox->value(), m_ui->heightBox->value());
    m_ui->strapEditor->setSceneSize(m_layout.screenSize);
    m_steps.setUndoLimit(kMaxSteps);
    listProperties();
    addUndoActions();
    for (QSpinBox* box : {m_ui->widthBox, m_ui->heightBox}) {
        box->installEventFilter(this);
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &SSLOptWidget::onScreenSizeChanged);
    }
    connect(m_ui->resetBtn, &QPushButton::clicked, this, &SSLOptWidget::onResetBtnClicked);
    const ScreenSyncEditScene* scene = m_ui->strapEditor->editScene();
    connect(scene, &ScreenSyncEditScene::ledItemPosChanged, this, &SSLOptWidget::onLedItemPosChanged);
    connect(scene, &ScreenSyncEditScene::ledItemsMoved, this, &SSLOptWidget::onLedItemsMoved);
}

SSLOptWidget::~SSLOptWidget() = default;

void SSLOptWidget::listProperties()
{
    // The canvas first: the map and the direction are shown on it.
    m_properties.add({
        {kScreenSize, [this] { return sizeProperty(); },
         [this](const QJsonValue& val) { setScreenSize(QSize(val["w"].toInt(), val["h"].toInt())); }},
        {"deviceDir",
         {},
         [this](const QJsonValue& val) { m_ui->strapEditor->editScene()->setDeviceDir(val.toInt()); }},
        {kLedMap, [this] { return m_layout.toProperty(); },
         [this](const QJsonValue& val) { setLedMap(val); }},
        {"effectObject", {}, [this](const QJsonValue& val) { setWorker(val.toString()); }},
    });
}

void SSLOptWidget::addUndoActions()
{
    QAction* undo = m_steps.createUndoAction(this);
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = m_steps.createRedoAction(this);
    redo->setShortcuts(
        {QKeySequence(QStringLiteral("Ctrl+Shift+Z")), QKeySequence(QStringLiteral("Ctrl+Y"))});
    for (QAction* action : {undo, redo}) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
    }
}

void SSLOptWidget::setLedMap(const QJsonValue& map)
{
    const QJsonArray leds = map.toArray();
    if (!map.isArray() || leds.size() > kMaxLeds) {
        qWarning() << "[SSLOptWidget]: The LED map is refused, its size:" << leds.size();
        return;
    }
    m_layout.points.clear();
    for (const QJsonValue& led : leds)
        m_layout.points.append(QPoint(led["x"].toInt(), led["y"].toInt()));
    m_ui->strapEditor->editScene()->setLEDItems(m_layout.points);
    if (!m_beforeReset || m_beforeReset->points.size() != m_layout.points.size())
        return forgetSteps();
    const LedMap before = *m_beforeReset;
    m_beforeReset.reset();
    remember(before);
}

void SSLOptWidget::setScreenSize(QSize size)
{
    if (!m_beforeReset)
        forgetSteps();
    {
        const QScopedValueRollback<bool> filling(m_isFilled, true);
        m_ui->widthBox->setValue(size.width());
        m_ui->heightBox->setValue(size.height());
    }
    // The worker takes smaller ones than the boxes offer. Where nobody hears what they made of it, it is so.
    const bool isSmaller = size != m_layout.screenSize && size == size.boundedTo(m_layout.screenSize);
    if (signalsBlocked() && isSmaller && !size.isEmpty()) {
        m_layout.resize(size);
        m_ui->strapEditor->setSceneSize(size);
    }
}

void SSLOptWidget::setWorker(const QString& address)
{
    FullScreenMode* worker = FullScreenMode::atAddress(address);
    if (!worker) {
        qWarning().noquote() << "[SSLOptWidget]: There is no such worker:" << address;
        return;
    }
    if (worker != m_worker)
        forgetSteps();
    m_worker = worker;
    m_link = std::make_unique<QObject>();
    connect(
        worker, &FullScreenMode::deviceDirChanged, m_link.get(), [this](int dir) { onDeviceDirChanged(dir); },
        Qt::QueuedConnection);
    // The picture goes when the strip becomes dark, behind the frames that wait.
    connect(
        worker, &FullScreenMode::effectPropertyChanged, m_link.get(),
        [this](const QString& key, const QJsonValue& val) {
            if (key == QLatin1String(EffectNotice::kKey) && !val.toString().isEmpty())
                onFrameTick({});
        },
        Qt::QueuedConnection);
    connect(worker, &QObject::destroyed, m_link.get(), [this] {
        m_frameLink.reset();
        onFrameTick({});
    });
    followFrames();
}

/// Only while somebody can see them.
void SSLOptWidget::followFrames()
{
    m_frameLink.reset();
    if (!m_worker || !isVisible())
        return;
    m_frameLink = std::make_unique<QObject>();
    connect(
        m_worker, &FullScreenMode::frameSnapshot, m_frameLink.get(),
        [this](const QImage& frame) { onFrameTick(frame); }, Qt::QueuedConnection);
}

void SSLOptWidget::showEvent(QShowEvent* event)
{
    AbsWorkerWidget::showEvent(event);
    followFrames();
}

void SSLOptWidget::hideEvent(QHideEvent* event)
{
    m_frameLink.reset();
    onFrameTick({}); // an old picture would be the first thing to be seen again
    AbsWorkerWidget::hideEvent(event);
}

void SSLOptWidget::resizeEvent(QResizeEvent* event)
{
    // The page may run on far below the window: the canvas stays where it shows.
    m_ui->strapEditor->setMaximumHeight(std::max(width(), m_ui->strapEditor->minimumHeight()));
    AbsWorkerWidget::resizeEvent(event);
}

void SSLOptWidget::onFrameTick(QImage frame)
{
    m_ui->strapEditor->setFrame(frame);
}

void SSLOptWidget::onDeviceDirChanged(int dir)
{
    setEffectProperty(QStringLiteral("deviceDir"), dir);
    logUserOption(QStringLiteral("The LED layout editor has responded to the device direction change"));
}

void SSLOptWidget::onLedItemPosChanged(int id, QPoint newPos)
{
    if (id < 0 || id >= m_layout.points.size())
        return;
    const LedMap before = m_layout;
    m_layout.points[id] = newPos;
    remember(before);
    logUserOption(
        QStringLiteral("led: %1 position changed to Point(%2, %3)").arg(id).arg(newPos.x()).arg(newPos.y()));
    emit effectPropertyChanged(QStringLiteral("LEDPos"), ledProperty(id));
}

void SSLOptWidget::onLedItemsMoved(const QVector<QPoint>& positions)
{
    const LedMap before = m_layout;
    m_layout.points = positions;
    remember(before);
    report(before);
}

void SSLOptWidget::onScreenSizeChanged(int)
{
    const LedMap before = m_layout;
    m_layout.resize(QSize(m_ui->widthBox->value(), m_ui->heightBox->value()));
    m_ui->strapEditor->setSceneSize(m_layout.screenSize);
    m_ui->strapEditor->editScene()->setPositions(m_layout.points);
    if (!m_isFilled) {
        remember(before);
        logUserOption(QStringLiteral("Screen size changed to Size(%1, %2)")
                          .arg(m_layout.screenSize.width())
                          .arg(m_layout.screenSize.height()));
    }
    emit effectPropertyChanged(kScreenSize, sizeProperty());
}

void SSLOptWidget::onResetBtnClicked()
{
    m_beforeReset = m_layout; // the worker answers later, with the size first
    logUserOption(QStringLiteral("LED layout has been reseted"));
    emit effectPropertyChanged(QStringLiteral("resetCmd"), QJsonValue());
}

QJsonObject SSLOptWidget::sizeProperty() const
{
    return {{"w", m_layout.screenSize.width()}, {"h", m_layout.screenSize.height()}};
}

QJsonObject SSLOptWidget::ledProperty(int id) const
{
    const QPoint point = m_layout.points[id];
    return {{"id", id}, {"x", point.x()}, {"y", point.y()}};
}

/// For undo and redo: as if the user had done it.
void SSLOptWidget::showLayout(const LedMap& layout)
{
    if (layout.points.size() != m_layout.points.size())
        return;
    const QScopedValueRollback<bool> replaying(m_isReplaying, true);
    const LedMap before = m_layout;
    m_layout = layout;
    {
        const QSignalBlocker width(m_ui->widthBox);
        const QSignalBlocker height(m_ui->heightBox);
        m_ui->widthBox->setValue(layout.screenSize.width());
        m_ui->heightBox->setValue(layout.screenSize.height());
    }
    if (layout.screenSize != before.screenSize)
        m_ui->strapEditor->setSceneSize(layout.screenSize);
    m_ui->strapEditor->editScene()->setPositions(layout.points);
    report(before);
}

/// Tells what is different now: the size, then the LEDs all at once, so that they are stored once.
void SSLOptWidget::report(const LedMap& before)
{
    LedMap known = before;
    if (m_layout.screenSize != before.screenSize) {
        emit effectPropertyChanged(kScreenSize, sizeProperty());
        known.resize(m_layout.screenSize); // as the worker does
    }
    QJsonArray moved;
    for (int id = 0; id < m_layout.points.size(); ++id) {
        if (m_layout.points[id] != known.points.value(id))
            moved.append(ledProperty(id));
    }
    if (!moved.isEmpty()) {
        logUserOption(QStringLiteral("leds: %1 positions changed").arg(moved.size()));
        emit effectPropertyChanged(kLedMap, moved);
    }
}

void SSLOptWidget::remember(const LedMap& before)
{
    if (!isSame(before, m_layout))
        m_steps.push(
            new LayoutCommand(before, m_layout, [this](const LedMap& layout) { showLayout(layout); }));
}

/// What came from outside is not the user's to take back.
void SSLOptWidget::forgetSteps()
{
    m_beforeReset.reset();
    if (!m_isReplaying)
        m_steps.clear();
}

bool SSLOptWidget::eventFilter(QObject* watched, QEvent* event)
{
    auto* box = qobject_cast<QSpinBox*>(watched);
    if (!box)
        return AbsWorkerWidget::eventFilter(watched, event);
    // Scrolling the page past a number must not change the canvas.
    if (event->type() == QEvent::Wheel && !box->hasFocus()) {
        event->ignore();
        return true;
    }
    // What is being typed is the field's own to take back, a step of the canvas is not.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isUndoing = key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo);
        return isUndoing && box->locale().toInt(box->cleanText()) == box->value();
    }
    return AbsWorkerWidget::eventFilter(watched, event);
}

void SSLOptWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    AbsWorkerWidget::changeEvent(event);
}
