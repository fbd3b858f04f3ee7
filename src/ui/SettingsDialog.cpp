#include "ui/SettingsDialog.h"

#include "support/capture/DeskCaptureOption.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/StoredNumber.h"
#include "ui/Autostart.h"
#include "ui/Languagemanager.h"

#include "ui_SettingsDialog.h"

#include <QApplication>
#include <QDebug>
#include <QDesktopServices>
#include <QUrl>

namespace {

constexpr int kGamaStoreMs = 200;
constexpr int kGamaSteps = 100;    ///< of the slider for a gamma of one
constexpr double kRounding = 1e-6; ///< a step counts as reached so near: 0.29 * 100 is less than 29
constexpr quintptr kNobody = 0x778331F3;
/// The window system does not always tell where a window is, and one that changes its size then jumps into a
/// corner: so large from the start that hardly a language asks for more.
constexpr QSize kUsualSize(560, 620);

bool isAppFlag(const char* property)
{
    return QCoreApplication::instance()->property(property).toBool();
}

QJsonValue stored(const char* key)
{
    return ConfigurationManager::instance()->appConfig(QLatin1String(key));
}

bool storedFlag(const ConfigKeys::Setting<bool>& setting)
{
    return stored(setting.key).toBool(setting.fallback);
}

bool isMissing(const QJsonValue& value)
{
    return value.isUndefined() || value.isNull();
}

/// Stores what the user has chosen and logs it; the line has the caller's place.
template <typename T>
void store(const char* key, const T& value, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    ConfigurationManager::instance()->setAppConfig(QLatin1String(key), QJsonValue(value));
    QMessageLogger(file, line, nullptr).info().noquote() << key << "changed to" << value;
}

} // namespace

SettingsDialog::SettingsDialog(QWidget* parent)
    : PagedDialog(parent)
    , ui(std::make_unique<Ui::SettingsDialog>())
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    connect(ui->toolButton, &QToolButton::clicked, this, &QDialog::reject);

    connect(ui->sliderBar, &SliderBar::currentItemChanged, this, &SettingsDialog::onSliderBarCurItemChanged);

    initGeneralPage();
    initCloseActionView();
    initPhysicalButton();
    initScreenCaptureModeView();
    initAdvancedPage();
    initPages(*ui->sliderBar, *ui->stackedWidget, kUsualSize);
    SettingsDialog::retranslate();
    keepFromWheel({ui->cbxLanguage, ui->phyBtnActionCbx, ui->screenCaptureModeComboBox, ui->gamaSliderBar});
}

SettingsDialog::~SettingsDialog()
{
    storeGama();
    delete m_box;
}

HotKeyEditWidget* SettingsDialog::hotkeyEditWidget() const
{
    return ui->hotkeyEditWidget;
}

// --- general page ---

void SettingsDialog::initGeneralPage()
{
    connect(ui->cbxLanguage, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &SettingsDialog::onCbxLanguageCurrentIndexChanged);
    ui->chkStartup->setChecked(Autostart::isEnabled());
    connect(ui->chkStartup, &QCheckBox::stateChanged, this, &SettingsDialog::onCheckBoxStateChanged);
    ui->chkLightsOffWhileLocked->setChecked(storedFlag(ConfigKeys::kLightsOffWhileLocked));
    connect(ui->chkLightsOffWhileLocked, &QCheckBox::toggled, this,
            [](bool on) { store(ConfigKeys::kLightsOffWhileLocked.key, on); });
    connect(ui->btnOpenConfigDir, &QPushButton::clicked, this, &SettingsDialog::on_btnOpenConfigDir_clicked);
    connect(ui->btnDefaultSettings, &QPushButton::clicked, this, &SettingsDialog::onBtnDefaultSettings);

    const bool hasCrashTest = isAppFlag("enableCrashTest");
    ui->btnCrashTest->setVisible(hasCrashTest);
    if (hasCrashTest)
        connect(ui->btnCrashTest, &QPushButton::clicked, this, &SettingsDialog::onCrashTestTriggered);

    ui->screenSyncAdvanedModeCBX->setChecked(storedFlag(ConfigKeys::kScreenSyncAdvancedMode));
    connect(ui->screenSyncAdvanedModeCBX, &QCheckBox::stateChanged, this,
            &SettingsDialog::onAdvancedModeChanged);
}

void SettingsDialog::onCbxLanguageCurrentIndexChanged(int index)
{
    LanguageManager::instance()->switchLanguage(ui->cbxLanguage->itemData(index).toString());
}

void SettingsDialog::onCheckBoxStateChanged(int state)
{
    Autostart::setEnabled(state == Qt::Checked);
    // It may have failed.
    const QSignalBlocker blocker(ui->chkStartup);
    ui->chkStartup->setChecked(Autostart::isEnabled());
}

void SettingsDialog::on_btnOpenConfigDir_clicked()
{
    const QString folder = ConfigurationManager::instance()->configPath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        qWarning().noquote() << "[SettingsDialog]: Nothing opens the folder" << folder;
}

void SettingsDialog::onBtnDefaultSettings()
{
    QMessageBox* box = makeBox(QMessageBox::Question, QStringLiteral("Lumivar"),
                               tr("清理配置文件需要重启应用程序, "
                                  "这个操作将退出Lumivar."),
                               QMessageBox::Yes | QMessageBox::No, this);
    box->button(QMessageBox::Yes)->setText(tr("是"));
    box->button(QMessageBox::No)->setText(tr("否"));
    box->setDefaultButton(QMessageBox::No);
    connect(box, &QDialog::finished, this, [](int answer) {
        if (answer != QMessageBox::Yes)
            return;
        ConfigurationManager::instance()->EnableCleanStartup();
        QCoreApplication::quit();
    });
    box->show();
}

void SettingsDialog::onCrashTestTriggered()
{
    hide();
    // Nobody's address, on purpose: the call faults.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    QMessageBox::information(reinterpret_cast<QWidget*>(kNobody), QStringLiteral("Lumivar"),
                             QStringLiteral("This is a crash message."));
}

void SettingsDialog::initCloseActionView()
{
    // Before the user has been asked there is no answer to change.
    const QJsonValue action = stored(ConfigKeys::kCloseButtonAction.key);
    ui->M46View->setHidden(isMissing(action));
    ui->closeBtnActCbx->setChecked(action.toString() == QLatin1String(ConfigKeys::kCloseMinimizes));
    connect(ui->closeBtnActCbx, &QCheckBox::stateChanged, this, &SettingsDialog::onCloseActionChanged);
}

void SettingsDialog::onCloseActionChanged(int state)
{
    store(ConfigKeys::kCloseButtonAction.key,
          state == Qt::Checked ? ConfigKeys::kCloseMinimizes : ConfigKeys::kCloseQuits);
}

void SettingsDialog::initPhysicalButton()
{
    auto* config = ConfigurationManager::instance();
    const QLatin1String singleKey(ConfigKeys::kPhyBtnSingleCtrlMode.key);
    if (isMissing(config->appConfig(singleKey)))
        config->setAppConfig(singleKey, true);
    ui->phyBtnSingleCtrllMode->setChecked(config->appConfig(singleKey) == false);
    connect(ui->phyBtnSingleCtrllMode, &QCheckBox::toggled, this, &SettingsDialog::onPhyBtnSingleModeChanged);

    const QLatin1String actionKey(ConfigKeys::kPhyBtnAction.key);
    if (isMissing(config->appConfig(actionKey)))
        config->setAppConfig(actionKey, ui->phyBtnActionCbx->currentIndex());
    ui->phyBtnActionCbx->setCurrentIndex(
        config->appConfig(actionKey).toInt(ConfigKeys::kPhyBtnAction.fallback));
    connect(ui->phyBtnActionCbx, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &SettingsDialog::onPhyBtnActionCbxChanged);
}

void SettingsDialog::onPhyBtnSingleModeChanged(bool status)
{
    store(ConfigKeys::kPhyBtnSingleCtrlMode.key, !status);
}

void SettingsDialog::onPhyBtnActionCbxChanged(int i)
{
    store(ConfigKeys::kPhyBtnAction.key, i);
}

void SettingsDialog::initScreenCaptureModeView()
{
    DeskCaptureOption* option = DeskCaptureOption::current();
    ui->screenCaptureModeView->setVisible(option != nullptr);
    if (!option) {
        qWarning() << "[SettingsDialog]: Cannot found deskCaptureOption instance.";
        return;
    }
    for (int i = 0; i < option->totalOfMode(); ++i)
        ui->screenCaptureModeComboBox->addItem(QString());
    ui->screenCaptureModeComboBox->setCurrentIndex(option->curMode());
    connect(ui->screenCaptureModeComboBox, qOverload<int>(&QComboBox::currentIndexChanged), option,
            &DeskCaptureOption::setCurMode);
}

void SettingsDialog::onAdvancedModeChanged(int state)
{
    store(ConfigKeys::kScreenSyncAdvancedMode.key, state == Qt::Checked);
    makeBox(QMessageBox::Information, QCoreApplication::applicationName(),
            tr("您的设置已经保存，请重新启动软件"), QMessageBox::Ok, parentWidget())
        ->show();
}

// --- advanced page ---

void SettingsDialog::initAdvancedPage()
{
    QSlider* slider = ui->gamaSliderBar;
    connect(slider, &QSlider::valueChanged, ui->gamaValueLabel, [this](int value) {
        ui->gamaValueLabel->setText(QString::number(value / double(kGamaSteps), 'f', 2));
    });
    ui->gamaValueLabel->setText(QStringLiteral("0.00")); // it never gets wider
    ui->gamaValueLabel->setMinimumWidth(ui->gamaValueLabel->sizeHint().width());
    slider->setValue(static_cast<int>(applicationNumber(ConfigKeys::kGama) * kGamaSteps + kRounding));
    emit slider->valueChanged(slider->value()); // for the label, where it is the slider's own already
    connect(slider, &QSlider::valueChanged, this, &SettingsDialog::onGamaChanged);
    m_gamaTimer.setSingleShot(true);
    m_gamaTimer.setInterval(kGamaStoreMs);
    connect(&m_gamaTimer, &QTimer::timeout, this, &SettingsDialog::storeGama);
    connect(this, &QDialog::finished, this, &SettingsDialog::storeGama);

    ui->screenEditCheckBox->setChecked(storedFlag(ConfigKeys::kScreenEditEnable));
    ui->screenshotCheckBox->setChecked(storedFlag(ConfigKeys::kScreenshotEnable));
    ui->loopLogCheckBox->setChecked(storedFlag(ConfigKeys::kLoopLogEnable));
    connect(ui->screenEditCheckBox, &QCheckBox::toggled, this, &SettingsDialog::onScreenEditStatChanged);
    connect(ui->screenshotCheckBox, &QCheckBox::toggled, this, &SettingsDialog::onScreenshotStatChanged);
    connect(ui->loopLogCheckBox, &QCheckBox::toggled, this, &SettingsDialog::onLoopLogStatChanged);
}

void SettingsDialog::onGamaChanged(int value)
{
    m_gama = value / double(kGamaSteps);
    emit gamaMoved(*m_gama);
    if (!m_gamaTimer.isActive())
        m_gamaTimer.start();
}

void SettingsDialog::storeGama()
{
    if (!m_gama)
        return;
    store(ConfigKeys::kGama.key, *m_gama);
    m_gama.reset();
}

void SettingsDialog::onScreenEditStatChanged(bool status)
{
    store(ConfigKeys::kScreenEditEnable.key, status);
}

void SettingsDialog::onScreenshotStatChanged(bool status)
{
    store(ConfigKeys::kScreenshotEnable.key, status);
}

void SettingsDialog::onLoopLogStatChanged(bool status)
{
    store(ConfigKeys::kLoopLogEnable.key, status);
}

// --- all of it ---

void SettingsDialog::onSliderBarCurItemChanged(int index, QString item)
{
    showPage(index, item);
}

QMessageBox* SettingsDialog::makeBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                                     QMessageBox::StandardButtons buttons, QWidget* parent)
{
    delete m_box;
    m_box = new QMessageBox(icon, title, text, buttons, parent);
    m_box->setWindowModality(Qt::ApplicationModal);
    connect(m_box, &QDialog::finished, m_box, &QObject::deleteLater);
    connect(this, &QDialog::finished, m_box, &QObject::deleteLater);
    return m_box;
}
