#include "ui/WallColorDialog.h"

#include "controllers/ColorPipeline.h"
#include "ui_WallColorDialog.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <cmath>

namespace {

constexpr QSize kUsualSize(500, 0);
constexpr int kSettleMs = 400;
constexpr double kPercent = 100.0;
constexpr double kMilli = 1000.0;
constexpr double kAmpSteps = 10.0;   ///< of the box for one ampere
constexpr double kScreenGamma = 2.2; ///< between light and what a screen is told to show

/// Walls that are usual, and the white that looks white on them: what the wall swallows, the other channels
/// give up. The full compensation of dark walls would leave little light.
struct Wall
{
    const char* name;
    QColor look;
    double red;
    double green;
    double blue;
};
const Wall kWalls[] = {
    {QT_TRANSLATE_NOOP("WallColorDialog", "白墙或灰墙"), {238, 238, 236}, 1.0, 1.0, 1.0},
    {QT_TRANSLATE_NOOP("WallColorDialog", "米色墙"), {240, 226, 196}, 0.75, 0.82, 1.0},
    {QT_TRANSLATE_NOOP("WallColorDialog", "木墙"), {190, 140, 92}, 0.5, 0.65, 1.0},
    {QT_TRANSLATE_NOOP("WallColorDialog", "浅蓝墙"), {178, 204, 230}, 1.0, 0.85, 0.7},
    {QT_TRANSLATE_NOOP("WallColorDialog", "浅绿墙"), {188, 214, 178}, 0.9, 0.75, 1.0},
};
constexpr int kOwnWall = sizeof(kWalls) / sizeof(kWalls[0]); ///< the row behind them

QIcon spot(const QColor& color)
{
    QPixmap picture(64, 64); // more than any scale asks for
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(122, 122, 122), 4));
    painter.setBrush(color);
    painter.drawEllipse(picture.rect().adjusted(4, 4, -4, -4));
    return QIcon(picture);
}

/// Its direction moves nothing around it.
QString isolated(const QString& text)
{
    return QChar(0x2068) + text + QChar(0x2069);
}

int shown(double light)
{
    return qRound(255 * std::pow(light, 1 / kScreenGamma));
}

} // namespace

WallColorDialog::WallColorDialog(QWidget* parent)
    : PagedDialog(parent)
    , ui(std::make_unique<Ui::WallColorDialog>())
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    connect(ui->toolButton, &QToolButton::clicked, this, &QDialog::reject);
    connect(ui->closeButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->resetButton, &QPushButton::clicked, this, [this] { take(withPageReset()); });
    connect(ui->sliderBar, &SliderBar::currentItemChanged, this, [this](int index, const QString& item) {
        showPage(index, item);
        wantWhite();
        ui->resetButton->setEnabled(m_correction != withPageReset());
    });
    connectWallPage();
    connectLightPage();
    m_settleTimer.setSingleShot(true);
    m_settleTimer.setInterval(kSettleMs);
    connect(&m_settleTimer, &QTimer::timeout, this, &WallColorDialog::settled);
    connect(this, &QDialog::finished, this, &WallColorDialog::settle);
    initPages(*ui->sliderBar, *ui->stackedWidget, kUsualSize);
    keepFromWheel({ui->presetBox, ui->redSlider, ui->greenSlider, ui->blueSlider, ui->minLightSlider,
                   ui->limitSpin, ui->ledSpin});
    if (parent)
        parent->window()->installEventFilter(this);
    WallColorDialog::retranslate();
}

WallColorDialog::~WallColorDialog() = default;

std::array<WallColorDialog::Channel, 3> WallColorDialog::channels() const
{
    return {{{ui->redSlider, ui->redValue, &ColorCorrection::whiteRed},
             {ui->greenSlider, ui->greenValue, &ColorCorrection::whiteGreen},
             {ui->blueSlider, ui->blueValue, &ColorCorrection::whiteBlue}}};
}

void WallColorDialog::connectWallPage()
{
    ui->presetBox->setItemDelegate(
        new QStyledItemDelegate(this)); // the style sheet does not reach the usual one
    connect(ui->presetBox, qOverload<int>(&QComboBox::activated), this, [this](int row) {
        if (row == kOwnWall)
            return showCorrection();
        ColorCorrection correction = m_correction;
        correction.whiteRed = kWalls[row].red;
        correction.whiteGreen = kWalls[row].green;
        correction.whiteBlue = kWalls[row].blue;
        take(correction);
    });
    for (const Channel& channel : channels()) {
        channel.value->setText(QStringLiteral("100 %")); // it never gets wider
        channel.value->setMinimumWidth(channel.value->sizeHint().width());
        connect(channel.slider, &QSlider::valueChanged, this, [this, share = channel.share](int percent) {
            ColorCorrection correction = m_correction;
            correction.*share = percent / kPercent;
            take(correction);
        });
    }
    ui->whiteBox->setChecked(true);
    connect(ui->whiteBox, &QCheckBox::toggled, this, &WallColorDialog::wantWhite);
}

void WallColorDialog::connectLightPage()
{
    const auto onPipeline = [this](QRadioButton* button, ColorCorrection::Pipeline pipeline) {
        connect(button, &QRadioButton::clicked, this, [this, pipeline] {
            ColorCorrection correction = m_correction;
            correction.pipeline = pipeline;
            take(correction);
        });
    };
    onPipeline(ui->linearButton, ColorCorrection::Pipeline::Linear);
    onPipeline(ui->classicButton, ColorCorrection::Pipeline::Classic);
    ui->minLightValue->setText(QStringLiteral("20"));
    ui->minLightValue->setMinimumWidth(ui->minLightValue->sizeHint().width());
    connect(ui->minLightSlider, &QSlider::valueChanged, this, [this](int levels) {
        ColorCorrection correction = m_correction;
        correction.minLight = levels;
        take(correction);
    });
    const auto takeLimit = [this] {
        ColorCorrection correction = m_correction;
        correction.powerLimitMa = ui->limitBox->isChecked() ? qRound(ui->limitSpin->value() * kMilli) : 0;
        take(correction);
    };
    connect(ui->limitBox, &QCheckBox::clicked, this, takeLimit);
    connect(ui->limitSpin, qOverload<double>(&QDoubleSpinBox::valueChanged), this, takeLimit);
    connect(ui->ledSpin, qOverload<int>(&QSpinBox::valueChanged), this, [this](int milliAmps) {
        ColorCorrection correction = m_correction;
        correction.ledMilliAmps = milliAmps;
        take(correction);
    });
}

void WallColorDialog::setDevice(const QString& name, int nbLeds)
{
    m_deviceName = name;
    m_nbLeds = nbLeds;
    showTexts();
}

void WallColorDialog::setLit(bool isLit)
{
    m_isLit = isLit;
    ui->whiteBox->setEnabled(isLit);
    showTexts();
}

void WallColorDialog::setDefaults(const ColorCorrection& defaults)
{
    m_defaults = defaults;
    showCorrection();
}

void WallColorDialog::setCorrection(const ColorCorrection& correction)
{
    m_correction = correction;
    {
        const QScopedValueRollback<bool> filling(m_isFilling, true);
        // A limit that is switched on begins where it never bites.
        ui->limitSpin->setValue(std::ceil(fullWhiteAmps() * kAmpSteps) / kAmpSteps);
    }
    showCorrection();
}

double WallColorDialog::fullWhiteAmps() const
{
    return m_nbLeds * (m_correction.ledMilliAmps + ColorPipeline::kIdleMilliAmps) / kMilli;
}

void WallColorDialog::take(const ColorCorrection& correction)
{
    if (m_isFilling || correction == m_correction)
        return;
    m_correction = correction;
    showCorrection();
    emit correctionChanged(m_correction);
    m_settleTimer.start();
}

/// Nobody who starts over with the wall means the limit that protects the power supply, too.
ColorCorrection WallColorDialog::withPageReset() const
{
    const bool isWall = ui->stackedWidget->currentIndex() == 0;
    ColorCorrection reset = isWall ? m_correction : m_defaults;
    const ColorCorrection& white = isWall ? m_defaults : m_correction;
    for (const Channel& channel : channels())
        reset.*channel.share = white.*channel.share;
    return reset;
}

void WallColorDialog::settle()
{
    if (!m_settleTimer.isActive())
        return;
    m_settleTimer.stop();
    emit settled();
}

void WallColorDialog::wantWhite()
{
    const QWidget* owner = parentWidget() ? parentWidget()->window() : nullptr;
    const bool isSeen = m_isSeen && (!owner || (owner->isVisible() && !owner->isMinimized()));
    const bool isWanted = isSeen && ui->stackedWidget->currentIndex() == 0 && ui->whiteBox->isChecked();
    if (isWanted == m_isWhiteWanted)
        return;
    m_isWhiteWanted = isWanted;
    emit whiteWanted(isWanted);
}

int WallColorDialog::wallOf(const ColorCorrection& correction) const
{
    const auto isSame = [](double one, double other) {
        return qRound(one * kPercent) == qRound(other * kPercent);
    };
    for (int row = 0; row < kOwnWall; ++row) {
        const Wall& wall = kWalls[row];
        if (isSame(wall.red, correction.whiteRed) && isSame(wall.green, correction.whiteGreen) &&
            isSame(wall.blue, correction.whiteBlue))
            return row;
    }
    return kOwnWall;
}

void WallColorDialog::showCorrection()
{
    const QScopedValueRollback<bool> filling(m_isFilling, true);
    ui->presetBox->setCurrentIndex(wallOf(m_correction));
    for (const Channel& channel : channels())
        channel.slider->setValue(qRound(m_correction.*channel.share * kPercent));
    ui->whiteSwatch->setStyleSheet(QStringLiteral("border-radius: 4px; background-color: rgb(%1, %2, %3);")
                                       .arg(shown(m_correction.whiteRed))
                                       .arg(shown(m_correction.whiteGreen))
                                       .arg(shown(m_correction.whiteBlue)));
    const bool isLinear = m_correction.pipeline == ColorCorrection::Pipeline::Linear;
    (isLinear ? ui->linearButton : ui->classicButton)->setChecked(true);
    ui->minLightSlider->setValue(m_correction.minLight);
    const bool isLimited = m_correction.powerLimitMa > 0;
    ui->limitBox->setChecked(isLimited);
    ui->limitSpin->setEnabled(isLimited);
    if (isLimited)
        ui->limitSpin->setValue(m_correction.powerLimitMa / kMilli);
    ui->ledSpin->setValue(m_correction.ledMilliAmps);
    ui->resetButton->setEnabled(m_correction != withPageReset());
    showTexts();
}

/// What depends on the values, in the language of the moment.
void WallColorDialog::showTexts()
{
    for (const Channel& channel : channels())
        channel.value->setText(QStringLiteral("%1 %").arg(channel.slider->value()));
    ui->minLightValue->setText(QString::number(ui->minLightSlider->value()));
    ui->wallHint->setText(m_isLit ? tr("让灯带显示白色，再调到墙面看起来也是白色。")
                                  : tr("灯已关闭，打开后才能在墙上看到效果。"));
    ui->powerHint->setText(
        tr("%1 颗灯珠全白时约需 %2。限制请勿超过电源的额定电流。")
            .arg(m_nbLeds)
            .arg(isolated(locale().toString(fullWhiteAmps(), 'f', 1) + ui->limitSpin->suffix())));
    showTitle();
}

/// The name is the user's own text: one line, and no wider than the header.
void WallColorDialog::showTitle()
{
    const QString name = QString(m_deviceName).replace(u'\n', u' ');
    setWindowTitle(QStringLiteral("%1 - %2").arg(tr("墙面颜色"), isolated(name)));
    ui->titleLabel->setText(
        ui->titleLabel->fontMetrics().elidedText(windowTitle(), Qt::ElideRight, ui->titleLabel->width()));
}

void WallColorDialog::retranslate()
{
    ui->retranslateUi(this);
    setPageNames(tr("墙面颜色;亮度与电源"));
    fillWalls();
    showCorrection();
}

void WallColorDialog::fillWalls()
{
    ui->presetBox->clear();
    for (const Wall& wall : kWalls)
        ui->presetBox->addItem(spot(wall.look), tr(wall.name));
    ui->presetBox->addItem(spot(Qt::transparent), tr("自定义"));
}

void WallColorDialog::showEvent(QShowEvent* event)
{
    PagedDialog::showEvent(event);
    m_isSeen = true;
    wantWhite();
}

void WallColorDialog::hideEvent(QHideEvent* event)
{
    m_isSeen = false;
    wantWhite();
    PagedDialog::hideEvent(event);
}

/// Some systems take the dialog away with its window without telling it.
bool WallColorDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (!parentWidget() || watched != parentWidget()->window())
        return PagedDialog::eventFilter(watched, event);
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide ||
        event->type() == QEvent::WindowStateChange)
        wantWhite();
    return false;
}

void WallColorDialog::resizeEvent(QResizeEvent* event)
{
    PagedDialog::resizeEvent(event);
    showTitle();
}
