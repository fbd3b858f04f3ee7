#include "effects/colorful/SFrmMoodShadow.h"

#include "effects/IColorStrapManager.h"
#include "effects/colorful/ComboBoxDelegate.h"
#include "effects/colorful/GradientImgComboBox.h"
#include "effects/colorful/GradientWidget.h"
#include "effects/colorful/strapColors.h"
#include "support/config/ConfigKeys.h"
#include "support/log/Loggers.h"

#include <QAbstractItemView>
#include <QDebug>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

namespace {

constexpr int kHeight = 180;
constexpr int kBoxHeight = 35;
constexpr int kMinBoxWidth = 176;
constexpr int kEditorHeight = 25;
constexpr int kStrapHeight = 65; // box and editor
constexpr int kButtonHeight = 30;
constexpr int kRowHeight = 26;
constexpr int kMargin = 18;
constexpr double kSpeedScale = 100.0;
constexpr double kRangeScale = 1000.0;

constexpr const char* kStrapKey = ConfigKeys::kCurrentStrap.key;
constexpr const char* kSpeedKey = ConfigKeys::kStrapSpeed.key;
constexpr const char* kRangeKey = ConfigKeys::kStrapRange.key;

constexpr char kNoManager[] = "The ColorStrapManager is empty";

/// The multiplication must not lose a step to rounding: 0.29 is 29 of 100.
int sliderValue(double share, double scale)
{
    constexpr double kRounding = 1e-6;
    return static_cast<int>(qBound(0.0, share, 1.0) * scale + kRounding);
}

void logUserOption(const QString& text)
{
    LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(text));
}

} // namespace

SFrmMoodShadow::SFrmMoodShadow(QWidget* parent)
    : WithProperties(parent)
    , m_colorStrapBox(new GradientImgComboBox(this))
    , m_comboBoxDelegate(new ComboBoxDelegate(this))
    , m_gradientEditor(new GradientWidget(this))
    , m_addBtn(new QPushButton(this))
    , m_rmBtn(new QPushButton(this))
    , m_speedLabel(new QLabel(this))
    , m_speedSlider(makeSlider("speedSlider", 0, 100, 1))
    , m_rangeLabel(new QLabel(this))
    , m_rangeSlider(makeSlider("rangeSlider", 1, 1000, 10))
{
    listProperties();
    setFixedHeight(kHeight);
    m_speedSlider->setValue(1);
    m_colorStrapBox->setObjectName(QStringLiteral("colorStrapBox"));
    m_colorStrapBox->setItemDelegate(m_comboBoxDelegate);
    m_gradientEditor->setObjectName(QStringLiteral("gradientEditor"));
    m_addBtn->setObjectName(QStringLiteral("addBtn"));
    m_rmBtn->setObjectName(QStringLiteral("rmBtn"));
    m_speedLabel->setBuddy(m_speedSlider);
    m_rangeLabel->setBuddy(m_rangeSlider);
    buildLayout();
    retranslate();
    fillBox(0);

    connect(m_colorStrapBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SFrmMoodShadow::onStrapChanged);
    connect(m_gradientEditor, &GradientWidget::keyColorChanged, this,
            &SFrmMoodShadow::onGradientKeyColorChanged);
    connect(m_addBtn, &QPushButton::clicked, this, &SFrmMoodShadow::onAddBtnClicked);
    connect(m_rmBtn, &QPushButton::clicked, this, &SFrmMoodShadow::onRmBtnClicked);
    connect(m_speedSlider, &QSlider::valueChanged, this, &SFrmMoodShadow::onSpeedSliderValueChanged);
    connect(m_rangeSlider, &QSlider::valueChanged, this, &SFrmMoodShadow::onRangeSliderValueChanged);
}

void SFrmMoodShadow::listProperties()
{
    const auto showIn = [](QSlider*& slider, double scale, const char* message) {
        return [&slider, scale, message](const QJsonValue& val) {
            const QSignalBlocker blocker(slider);
            slider->setValue(sliderValue(val.toDouble(), scale));
            qInfo() << message << val.toDouble();
        };
    };
    m_properties.add({{QStringLiteral("colorStrapManager"),
                       {},
                       [this](const QJsonValue& address) {
                           // NOLINTNEXTLINE(performance-no-int-to-ptr): it crosses the border of the pages as
                           // a number
                           setManager(reinterpret_cast<IColorStrapManager*>(
                               static_cast<quintptr>(address.toString().toULongLong())));
                       }},
                      {kStrapKey, [this] { return boxIndex(); },
                       [this](const QJsonValue& val) { setCurrentStrap(val.toInt(-1)); }},
                      {kSpeedKey, [this] { return m_speedSlider->value() / kSpeedScale; },
                       showIn(m_speedSlider, kSpeedScale, "Current speed has changed to")},
                      {kRangeKey, [this] { return m_rangeSlider->value() / kRangeScale; },
                       showIn(m_rangeSlider, kRangeScale, "Current range has changed to")}});
}

QSlider* SFrmMoodShadow::makeSlider(const char* name, int least, int most, int step)
{
    auto* slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(QLatin1String(name));
    slider->setRange(least, most);
    slider->setSingleStep(step);
    slider->setPageStep(10 * step);
    slider->setMinimumHeight(kRowHeight);
    return slider;
}

void SFrmMoodShadow::buildLayout()
{
    m_colorStrapBox->setMinimumSize(kMinBoxWidth, kBoxHeight);
    m_colorStrapBox->setFixedHeight(kBoxHeight);
    m_gradientEditor->setFixedHeight(kEditorHeight);

    // A handle stands under the place of its colour in the box, whose field ends before the arrow.
    auto* editor = new QHBoxLayout;
    editor->setContentsMargins(2, 0, 5, 0);
    editor->addWidget(m_gradientEditor);
    auto* strap = new QVBoxLayout;
    strap->setSpacing(kStrapHeight - kBoxHeight - kEditorHeight);
    strap->addWidget(m_colorStrapBox);
    strap->addLayout(editor);

    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(kStrapHeight - 2 * kButtonHeight);
    for (QPushButton* button : {m_addBtn, m_rmBtn}) {
        button->setFixedHeight(kButtonHeight);
        buttons->addWidget(button);
    }

    auto* straps = new QHBoxLayout;
    straps->setSpacing(12);
    straps->addLayout(strap, 1);
    straps->addLayout(buttons);

    auto* sliders = new QGridLayout;
    sliders->setHorizontalSpacing(12);
    sliders->setVerticalSpacing(10);
    sliders->addWidget(m_speedLabel, 0, 0);
    sliders->addWidget(m_speedSlider, 0, 1);
    sliders->addWidget(m_rangeLabel, 1, 0);
    sliders->addWidget(m_rangeSlider, 1, 1);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->addLayout(straps);
    rows->addStretch();
    rows->addLayout(sliders);
}

// --- the list ---

void SFrmMoodShadow::setManager(IColorStrapManager* manager)
{
    if (m_colorStrapManager != manager) {
        if (m_colorStrapManager)
            disconnect(m_colorStrapManager, nullptr, this, nullptr);
        m_colorStrapManager = manager;
        if (manager) {
            connect(manager, &IColorStrapManager::strapAdded, this, &SFrmMoodShadow::onListStrapAdded);
            connect(manager, &IColorStrapManager::strapRemoved, this, &SFrmMoodShadow::onListStrapRemoved);
            connect(manager, &IColorStrapManager::strapChanged, this, &SFrmMoodShadow::onListStrapChanged);
        }
    }
    if (isManagerThere())
        qInfo() << "Current number of strap count is" << manager->strapCount();
    fillBox(m_colorStrapBox->currentIndex());
    qInfo() << "The colorStrapBox size has changed to" << m_colorStrapBox->count();
    qInfo() << "The comboBoxDelegate size has changed to" << m_comboBoxDelegate->size();
}

bool SFrmMoodShadow::isManagerThere() const
{
    if (!m_colorStrapManager)
        qCritical(kNoManager);
    return !m_colorStrapManager.isNull();
}

void SFrmMoodShadow::fillBox(int current)
{
    const QSignalBlocker blocker(m_colorStrapBox);
    m_colorStrapBox->clear();
    m_comboBoxDelegate->clear();
    const int count = m_colorStrapManager ? m_colorStrapManager->strapCount() : 0;
    for (int i = 0; i < count; ++i) {
        const ColorStrap strap = m_colorStrapManager->strap(i);
        m_colorStrapBox->addItem(strap.name);
        m_comboBoxDelegate->append(strapStops(strap));
    }
    m_colorStrapBox->setCurrentIndex(qMin(qMax(0, current), count - 1));
    m_gradientEditor->setEnabled(count > 0);
    m_rmBtn->setEnabled(count > 1); // the last one stays
}

void SFrmMoodShadow::onListStrapAdded(int)
{
    fillBox(m_colorStrapBox->currentIndex());
}

/// The worker keeps its strap by the same rule, and stores it.
void SFrmMoodShadow::onListStrapRemoved(int i)
{
    const int current = m_colorStrapBox->currentIndex();
    fillBox(i < current ? current - 1 : current);
    if (i == current && m_colorStrapBox->currentIndex() >= 0)
        showStrap(m_colorStrapBox->currentIndex());
}

void SFrmMoodShadow::onListStrapChanged(int i)
{
    m_comboBoxDelegate->replace(i, strapStops(m_colorStrapManager->strap(i)));
    if (i == m_colorStrapBox->currentIndex())
        showStrap(i);
    m_colorStrapBox->view()->viewport()->update();
}

bool SFrmMoodShadow::isInBox(int i) const
{
    return i >= 0 && i < m_colorStrapBox->count();
}

QJsonValue SFrmMoodShadow::boxIndex() const
{
    const int index = m_colorStrapBox->currentIndex();
    if (m_colorStrapBox->count() == 0)
        qCritical("The current colorStrapBox dose not have any items");
    else if (index < 0)
        qCritical("No item is currently selected");
    return index < 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(index);
}

// --- the current strap ---

void SFrmMoodShadow::showStrap(int i)
{
    const ColorStrap strap = m_colorStrapManager->strap(i);
    QGradientStops keyColors;
    for (const KeyColor& key : strap.keyColors)
        keyColors.append({key.key, key.color});
    m_gradientEditor->setKeyColors(keyColors);
    m_gradientEditor->setEndsColor(strap.endsColor);
    const QSignalBlocker blocker(m_colorStrapBox);
    m_colorStrapBox->setCurrentIndex(i);
    m_colorStrapBox->update();
}

/// Told from outside.
void SFrmMoodShadow::setCurrentStrap(int i)
{
    if (!isInBox(i)) {
        qCritical() << "Invalied index of strap uuid:" << i;
    } else if (!m_colorStrapManager || !m_colorStrapManager->isValidStrapIndex(i)) {
        qCritical() << "Not found color strap" << i << "in ColorStrapManager";
    } else {
        showStrap(i);
        qInfo() << "Current strap index for comboBox has changed to" << i;
    }
}

/// Chosen here.
void SFrmMoodShadow::setCurrentColorStrapView(int i)
{
    if (!isInBox(i)) {
        qCritical() << "Invalied color strap index" << i;
    } else if (isManagerThere()) {
        if (!m_colorStrapManager->isValidStrapIndex(i)) {
            qCritical() << "Not found strap" << i;
            return;
        }
        showStrap(i);
        qInfo() << "Current color strap has changed to index:" << i;
    }
}

void SFrmMoodShadow::onStrapChanged(int i)
{
    logUserOption(QStringLiteral("Current strap changed to %1").arg(i));
    setCurrentColorStrapView(i);
    emit effectPropertyChanged(kStrapKey, i);
}

void SFrmMoodShadow::onAddBtnClicked()
{
    logUserOption(QStringLiteral("Strap add button clicked"));
    if (!isManagerThere())
        return;
    const int index = m_colorStrapManager->addDefaultStrap();
    setCurrentColorStrapView(index);
    qInfo() << "The new color strap has added" << index;
    emit effectPropertyChanged(kStrapKey, index);
}

void SFrmMoodShadow::onRmBtnClicked()
{
    logUserOption(QStringLiteral("Strap remove button clicked"));
    if (!isManagerThere())
        return;
    const int index = m_colorStrapBox->currentIndex();
    if (m_colorStrapBox->count() == 1) {
        qWarning("The last color strap cannot be removed");
        return;
    }
    if (index < 0) {
        qWarning("The current colorStrapBox dose not have any items");
        return;
    }
    m_colorStrapManager->removeStrap(index); // which moves box and workers on by one rule
    const int next = m_colorStrapBox->currentIndex();
    setCurrentColorStrapView(next);
    qInfo() << "The color strap" << index << "has been removed";
    emit effectPropertyChanged(kStrapKey, next);
}

void SFrmMoodShadow::onGradientKeyColorChanged()
{
    const int index = m_colorStrapBox->currentIndex();
    if (!isManagerThere() || !m_colorStrapManager->isValidStrapIndex(index))
        return;
    ColorStrap strap = m_colorStrapManager->strap(index);
    strap.endsColor = m_gradientEditor->endsColor();
    strap.keyColors = m_gradientEditor->keyColors();
    m_colorStrapManager->setStrap(index, strap); // which brings it to the box
    logUserOption(QStringLiteral("Key colors has changed"));
}

// --- the sliders ---

void SFrmMoodShadow::onSpeedSliderValueChanged(int v)
{
    emit effectPropertyChanged(kSpeedKey, v / kSpeedScale);
    logUserOption(QStringLiteral("Speed changed to %1").arg(v));
}

void SFrmMoodShadow::onRangeSliderValueChanged(int v)
{
    emit effectPropertyChanged(kRangeKey, v / kRangeScale);
    logUserOption(QStringLiteral("Range changed to %1").arg(v));
}

// --- texts ---

void SFrmMoodShadow::retranslate()
{
    m_addBtn->setText(tr("添加"));
    m_rmBtn->setText(tr("删除"));
    m_speedLabel->setText(tr("速度"));
    m_rangeLabel->setText(tr("范围"));
    m_colorStrapBox->setAccessibleName(tr("渐变"));
    m_addBtn->setToolTip(tr("添加新的渐变"));
    m_rmBtn->setToolTip(tr("删除当前渐变"));
}

void SFrmMoodShadow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    AbsWorkerWidget::changeEvent(event);
}
