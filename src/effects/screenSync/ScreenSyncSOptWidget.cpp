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
#include <cmath>

namespace {

constexpr char kBlur[] = "blur";
constexpr char kSaturation[] = "saturation";
constexpr char kInputSource[] = "inputSource";
constexpr char kWipeDarkSide[] = "wipeDarkSide";
constexpr char kEnbAdjust[] = "enbBlurAndSaturationAdjust";
constexpr const char* kAdvancedMode = ConfigKeys::kScreenSyncAdvancedMode.key;

/// What the widget's height reckons with for a row. In the form it has 28, taken from the bottom margin and,
/// row by row, from the spacing.
constexpr int kRowHeight = 20;

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
    listProperties();
    connectForm();
    updateRows();
}

ScreenSyncSOptWidget::~ScreenSyncSOptWidget() = default;

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
    WithProperties::setEffectProperty(key, val);
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
    m_ui->wipeDarkSideCBX->setVisible(m_enbWipeDarkSide);

    const int rows = (m_showSources ? 1 : 0) + (m_enbAdjust ? 2 : 0) + (m_enbWipeDarkSide ? 1 : 0);
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
    logUserOption("Wipe dark side changed to ", b);
    emit effectPropertyChanged(kWipeDarkSide, b);
}

void ScreenSyncSOptWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    AbsWorkerWidget::changeEvent(event);
}
