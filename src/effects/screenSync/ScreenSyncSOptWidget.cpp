#include "effects/screenSync/ScreenSyncSOptWidget.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/log/Loggers.h"
#include "ui_ScreenSyncSOptWidget.h"

#include <QDebug>
#include <QEvent>
#include <QJsonArray>
#include <QJsonObject>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <algorithm>
#include <cmath>
#include <functional>

namespace {

constexpr char kBlur[] = "blur";
constexpr char kSaturation[] = "saturation";
constexpr char kInputSource[] = "inputSource";
constexpr char kWipeDarkSide[] = "wipeDarkSide";
constexpr char kBorderMode[] = "borderMode";
constexpr char kSmoothing[] = "smoothing";
constexpr char kSaturationGate[] = "saturationGate";
constexpr char kFrameInterval[] = "frameInterval";
constexpr char kEnbAdjust[] = "enbBlurAndSaturationAdjust";
constexpr const char* kAdvancedMode = ConfigKeys::kScreenSyncAdvancedMode.key;

/// What the widget's height reckons with for a row. In the form it has 28, taken from the bottom margin and,
/// row by row, from the spacing.
constexpr int kRowHeight = 20;

/// What the choices stand for, in the order of the form.
constexpr const char* kBorderModes[] = {"stable", "classic"};
constexpr const char* kSmoothings[] = {"off", "responsive", "calm"};
constexpr int kFrameIntervalsMs[] = {ConfigKeys::kFrameIntervalOfLine, 80, 50, 33, 20};

template <typename Values>
void setChoices(QComboBox* box, const Values& values)
{
    int idx = 0;
    for (const char* value : values)
        box->setItemData(idx++, QLatin1String(value));
}

/// A worker keeps what the slider gave in single precision.
double strengthOf(int value)
{
    return static_cast<double>(static_cast<float>(value) / 100.0f);
}

void showStrength(QSlider* slider, const QJsonValue& strength)
{
    // Without it 0.29, a little less in single precision, would be shown as 28.
    constexpr double kRounding = 1e-4;
    const double value = strength.toDouble(NAN) * 100.0;
    if (std::isnan(value))
        return;
    const QSignalBlocker blocker(slider);
    slider->setValue(static_cast<int>(qBound(0.0, value + kRounding, 100.0)));
}

QJsonValue advancedMode()
{
    return ConfigurationManager::instance()->appConfig(kAdvancedMode);
}

template <typename Value>
void logUserOption(const char* what, const Value& value)
{
    LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(QLatin1String(what) + QStringLiteral("%1").arg(value)));
}

} // namespace

ScreenSyncSOptWidget::ScreenSyncSOptWidget(QWidget* parent)
    : WithProperties(parent)
    , m_ui(std::make_unique<Ui::ScreenSyncSOptWidget>())
{
    qRegisterMetaType<qintptr>("qintptr");
    m_ui->setupUi(this);
    setChoices(m_ui->borderModeComboBox, kBorderModes);
    setChoices(m_ui->smoothingComboBox, kSmoothings);
    listLookRows();
    listProperties();
    connectForm();
    connectLookRows();
    explainRows();
    followWipeDarkSide();
    updateRows();
}

ScreenSyncSOptWidget::~ScreenSyncSOptWidget() = default;

void ScreenSyncSOptWidget::listLookRows()
{
    m_lookRows = {{kBorderMode, m_ui->borderModeLabel, m_ui->borderModeComboBox},
                  {kSmoothing, m_ui->smoothingLabel, m_ui->smoothingComboBox},
                  {kSaturationGate, m_ui->saturationGateLabel, m_ui->saturationGateSlider},
                  {kFrameInterval, m_ui->frameRateLabel, m_ui->frameRateComboBox}};
}

/// Not told, it is none of the widget's properties.
QJsonValue ScreenSyncSOptWidget::ifTold(const QString& key, const QVariant& value) const
{
    return m_told.contains(key) ? QJsonValue::fromVariant(value) : QJsonValue(QJsonValue::Undefined);
}

EffectProperty ScreenSyncSOptWidget::choiceOf(const QString& key, QComboBox* box)
{
    return {key, [=] { return ifTold(key, box->currentData()); },
            [=](const QJsonValue& val) {
                const int idx = box->findData(val.toVariant());
                if (idx < 0)
                    return;
                const QSignalBlocker blocker(box);
                box->setCurrentIndex(idx);
                m_told.insert(key);
            }};
}

void ScreenSyncSOptWidget::listProperties()
{
    m_properties.add({
        {kBlur, [this] { return m_ui->blurStrengthSlider->value() / 100.0; },
         [this](const QJsonValue& val) { showStrength(m_ui->blurStrengthSlider, val); }},
        {kSaturation, [this] { return m_ui->saturationStrengthSlider->value() / 100.0; },
         [this](const QJsonValue& val) { showStrength(m_ui->saturationStrengthSlider, val); }},
        {"captures", {}, [this](const QJsonValue& val) { showCaptures(val); }},
        {kInputSource, [this] { return m_captures.value(m_ui->comboBox->currentIndex()); },
         [this](const QJsonValue& val) { showSource(val.toString()); }},
        {kWipeDarkSide, [this] { return m_ui->wipeDarkSideCBX->isChecked(); },
         [this](const QJsonValue& val) {
             const QSignalBlocker blocker(m_ui->wipeDarkSideCBX);
             m_ui->wipeDarkSideCBX->setChecked(val.toBool(m_ui->wipeDarkSideCBX->isChecked()));
             followWipeDarkSide();
         }},
        choiceOf(kBorderMode, m_ui->borderModeComboBox),
        choiceOf(kSmoothing, m_ui->smoothingComboBox),
        {kSaturationGate, [this] { return ifTold(kSaturationGate, m_ui->saturationGateSlider->value()); },
         [this](const QJsonValue& val) {
             const int levels = val.toInt(-1);
             if (levels < 0 || levels > m_ui->saturationGateSlider->maximum())
                 return;
             const QSignalBlocker blocker(m_ui->saturationGateSlider);
             m_ui->saturationGateSlider->setValue(levels);
             m_told.insert(kSaturationGate);
         }},
        {kFrameInterval, [this] { return ifTold(kFrameInterval, m_ui->frameRateComboBox->currentData()); },
         [this](const QJsonValue& val) {
             const int ms = val.toInt();
             if (ms != ConfigKeys::kFrameIntervalOfLine && ms <= 0)
                 return;
             showFrameInterval(ms);
             m_told.insert(kFrameInterval);
         }},
        {"enbWipeDarkSizeFunc",
         {},
         [this](const QJsonValue& val) {
             m_enbWipeDarkSide = val.toBool(m_enbWipeDarkSide);
             updateRows();
         }},
        {kEnbAdjust,
         {},
         [this](const QJsonValue& val) {
             m_enbAdjust = val.toBool(m_enbAdjust);
             updateRows();
         }},
    });
}

void ScreenSyncSOptWidget::connectForm()
{
    connect(m_ui->comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ScreenSyncSOptWidget::onComboBoxChanged);
    // A stand-in is current without being the user's choice: choosing it changes no index.
    connect(m_ui->comboBox, QOverload<int>::of(&QComboBox::activated), this,
            &ScreenSyncSOptWidget::onComboBoxChanged);
    connect(m_ui->wipeDarkSideCBX, &QCheckBox::toggled, this,
            &ScreenSyncSOptWidget::onWipeDarkSideCBXChanged);
    connect(m_ui->blurStrengthSlider, &QSlider::valueChanged, this, &ScreenSyncSOptWidget::onBlurChanged);
    connect(m_ui->saturationStrengthSlider, &QSlider::valueChanged, this,
            &ScreenSyncSOptWidget::onSaturationChanged);

    const auto* config = ConfigurationManager::instance();
    connect(
        config, &ConfigurationManager::appConfigChanged, this,
        [this](const QString& key) {
            if (key == QLatin1String(kAdvancedMode))
                setEffectProperty(kEnbAdjust,
                                  advancedMode().toBool(ConfigKeys::kScreenSyncAdvancedMode.fallback));
        },
        Qt::QueuedConnection);
    connect(config, &ConfigurationManager::appConfigObjSaved, this, &ScreenSyncSOptWidget::followAdvancedMode,
            Qt::QueuedConnection);
}

void ScreenSyncSOptWidget::connectLookRows()
{
    const auto follow = [this](QComboBox* box, const char* key, const char* what) {
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [=] {
            logUserOption(what, box->currentData().toString());
            emit effectPropertyChanged(key, QJsonValue::fromVariant(box->currentData()));
        });
    };
    follow(m_ui->borderModeComboBox, kBorderMode, "Border mode changed to ");
    follow(m_ui->smoothingComboBox, kSmoothing, "Smoothing changed to ");
    follow(m_ui->frameRateComboBox, kFrameInterval, "Frame interval changed to ");
    connect(m_ui->saturationGateSlider, &QSlider::valueChanged, this, [this](int value) {
        logUserOption("Saturation gate changed to ", value);
        emit effectPropertyChanged(kSaturationGate, value);
    });
}

void ScreenSyncSOptWidget::explainRows()
{
    const QMap<QString, QString> texts{
        {kBorderMode, tr("如何识别画面的黑边。稳定：边缘持续变黑后才去掉，不受字幕、淡入淡出和闪光影响。"
                         "经典：逐帧判断，适合需要立即去掉黑边时。")},
        {kSmoothing, tr("让颜色的变化更柔和。灵敏：抹平闪烁，大的变化立即跟上。平缓：所有变化都慢慢过渡，"
                        "适合灯光太跳时。关：每一帧都原样显示。")},
        {kSaturationGate, tr("避免接近灰色的画面变成鲜艳的颜色。灯光在灰色或暗的场景中乱跳时调大，"
                             "浅色显得发灰时调小，最小为关闭。")},
        {kFrameInterval,
         tr("每秒读取屏幕画面的次数。自动：与灯带能接收的一样快。需要减轻处理器负担时可以调低。")}};
    for (const LookRow& row : qAsConst(m_lookRows)) {
        const QString& text = texts[row.key];
        // Rich text is wrapped.
        for (QWidget* each : std::initializer_list<QWidget*>{row.label, row.control})
            each->setToolTip(QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()));
        row.control->setAccessibleDescription(text);
    }
}

/// One that is not among the usual ones gets an entry of its own.
void ScreenSyncSOptWidget::showFrameInterval(int ms)
{
    QList<int> intervals(std::begin(kFrameIntervalsMs), std::end(kFrameIntervalsMs));
    if (!intervals.contains(ms))
        intervals.insert(std::upper_bound(intervals.begin() + 1, intervals.end(), ms, std::greater<>()), ms);

    QComboBox* box = m_ui->frameRateComboBox;
    const QSignalBlocker blocker(box);
    box->clear();
    for (const int each : qAsConst(intervals))
        box->addItem(QString(), each);
    nameFrameRates();
    box->setCurrentIndex(intervals.indexOf(ms));
    // That of all effects may be one that a screen effect cannot be set to.
    const auto& fixed = ConfigKeys::kFixedFrameIntervalMs;
    const bool isChoosable =
        ms == ConfigKeys::kFrameIntervalOfLine || (ms >= fixed.least && ms <= fixed.most);
    qobject_cast<QStandardItemModel*>(box->model())->item(box->currentIndex())->setEnabled(isChoosable);
}

void ScreenSyncSOptWidget::nameFrameRates()
{
    QComboBox* box = m_ui->frameRateComboBox;
    for (int i = 0; i < box->count(); ++i) {
        const int ms = box->itemData(i).toInt();
        const double rate = ms == 33 ? 30.0 : 1000.0 / ms; // milliseconds are whole, the usual rate is too
        box->setItemText(i, ms == ConfigKeys::kFrameIntervalOfLine ? tr("自动")
                                                                   : tr("每秒 %1 次").arg(rate, 0, 'g', 3));
    }
}

/// How edges are found is of no use while they stay.
void ScreenSyncSOptWidget::followWipeDarkSide()
{
    for (QWidget* each : std::initializer_list<QWidget*>{m_ui->borderModeLabel, m_ui->borderModeComboBox})
        each->setEnabled(m_ui->wipeDarkSideCBX->isChecked());
}

QJsonValue ScreenSyncSOptWidget::effectProperty(const QString& key)
{
    QJsonValue value = WithProperties::effectProperty(key);
    if (!key.isEmpty())
        return value;
    QJsonObject all = value.toObject();
    all[QLatin1String(kBlur)] = (m_ui->blurStrengthSlider->value() - 100) / 100.0; // settled, nobody reads it
    return all;
}

void ScreenSyncSOptWidget::setEffectProperty(const QString& key, const QJsonValue& val)
{
    const QSet<QString> before = m_told;
    if (key.isEmpty() && val.isObject())
        m_told.clear(); // of another worker, perhaps
    WithProperties::setEffectProperty(key, val);
    if (m_told != before)
        updateRows();
    if (key.isEmpty())
        followAdvancedMode();
}

/// A worker tells of the mode as it was when it was made; the rows follow the settings, also on a page that
/// is opened after a change.
void ScreenSyncSOptWidget::followAdvancedMode()
{
    setEffectProperty(kEnbAdjust, advancedMode()); // one that was never set changes nothing
}

void ScreenSyncSOptWidget::showCaptures(const QJsonValue& list)
{
    // Blocked: the first item becomes the current one by itself, and nobody has chosen it.
    const QSignalBlocker blocker(m_ui->comboBox);
    const QString current = m_captures.value(m_ui->comboBox->currentIndex());
    m_ui->comboBox->clear();
    m_captures.clear();
    const QJsonArray captures = list.toArray();
    for (const QJsonValue& capture : captures) {
        m_captures.append(capture["index"].toString());
        m_ui->comboBox->addItem(capture["desc"].toString());
    }
    m_ui->comboBox->setCurrentIndex(m_captures.indexOf(current));
    updateRows();
}

void ScreenSyncSOptWidget::showSource(const QString& id)
{
    m_chosenId.clear();
    const int idx = m_captures.indexOf(id);
    if (idx < 0)
        qWarning().noquote() << "Not found this capture index" << id << "in input sources comboBox";
    if (idx < 0 && !id.isEmpty())
        return;
    const QSignalBlocker blocker(m_ui->comboBox);
    m_ui->comboBox->setCurrentIndex(idx); // none where the worker has none
}

void ScreenSyncSOptWidget::updateRows()
{
    m_showSources = m_captures.size() > 1;
    for (QWidget* each : std::initializer_list<QWidget*>{m_ui->inputSourcesLabel, m_ui->comboBox})
        each->setVisible(m_showSources);
    for (QWidget* each :
         std::initializer_list<QWidget*>{m_ui->blurLabel, m_ui->blurStrengthSlider, m_ui->saturationLabel,
                                         m_ui->saturationStrengthSlider})
        each->setVisible(m_enbAdjust);
    for (QWidget* each : std::initializer_list<QWidget*>{m_ui->wipeDarkSideLabel, m_ui->wipeDarkSideCBX})
        each->setVisible(m_enbWipeDarkSide);

    int rows = (m_showSources ? 1 : 0) + (m_enbAdjust ? 2 : 0) + (m_enbWipeDarkSide ? 1 : 0);
    for (const LookRow& row : qAsConst(m_lookRows)) {
        const bool isOfUse = m_enbWipeDarkSide || row.control != m_ui->borderModeComboBox;
        const bool isShown = m_enbAdjust && m_told.contains(row.key) && isOfUse;
        row.label->setVisible(isShown);
        row.control->setVisible(isShown);
        rows += isShown ? 1 : 0;
    }
    if (rows == 0) {
        hide();
        emit visibleStatusChanged(false);
        return;
    }
    if (isHidden()) {
        show();
        emit visibleStatusChanged(true);
    }
    QGridLayout* grid = m_ui->mainLayout;
    const QMargins margins = grid->contentsMargins();
    const int height = grid->spacing() * (rows - 1) + margins.top() + margins.bottom() + rows * kRowHeight;
    // The check box alone stands where it stands below other rows.
    const bool isCheckBoxAlone = rows == 1 && m_enbWipeDarkSide;
    grid->setColumnStretch(0, isCheckBoxAlone ? 3 : 0);
    grid->setColumnStretch(1, isCheckBoxAlone ? 7 : 0);
    setFixedHeight(height);
    emit miniHeightChanged(height);
}

void ScreenSyncSOptWidget::onComboBoxChanged(int idx)
{
    if (idx < 0 || idx >= m_captures.size() || m_captures.at(idx) == m_chosenId)
        return;
    m_chosenId = m_captures.at(idx);
    logUserOption("Video input source changed to 0x", m_chosenId);
    emit effectPropertyChanged(kInputSource, m_chosenId);
}

void ScreenSyncSOptWidget::onSaturationChanged(int value)
{
    logUserOption("Saturation changed to ", value);
    emit effectPropertyChanged(kSaturation, strengthOf(value));
}

void ScreenSyncSOptWidget::onBlurChanged(int value)
{
    logUserOption("Blur changed to ", value);
    emit effectPropertyChanged(kBlur, strengthOf(value));
}

void ScreenSyncSOptWidget::onWipeDarkSideCBXChanged(bool b)
{
    followWipeDarkSide();
    logUserOption("Wipe dark side changed to ", b);
    emit effectPropertyChanged(kWipeDarkSide, b);
}

void ScreenSyncSOptWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_ui->retranslateUi(this);
        nameFrameRates();
        explainRows();
    }
    AbsWorkerWidget::changeEvent(event);
}
