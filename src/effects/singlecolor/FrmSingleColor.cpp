#include "effects/singlecolor/FrmSingleColor.h"

#include "effects/rgb.h"
#include "support/config/ConfigKeys.h"
#include "widgets/ColorWheel.h"

#include <QApplication>
#include <QColorDialog>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace {

constexpr int kHeight = 180;
constexpr int kWheelSize = 160;
constexpr const char* kColorKey = ConfigKeys::kSingleColor.key;

/// The main window leaves its address in a property of the application.
QWidget* mainWindow()
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<QWidget*>(
        static_cast<quintptr>(qApp->property("mainWindowPointer").toULongLong()));
}

} // namespace

FrmSingleColor::FrmSingleColor(QWidget* parent)
    : WithProperties(parent)
    , m_colorWheel(new ColorWheel(this))
    , m_redBox(addBox("Rbox"))
    , m_greenBox(addBox("Gbox"))
    , m_blueBox(addBox("Bbox"))
    , m_selectColorBtn(new QPushButton(this))
{
    m_properties.add({{kColorKey, [this] { return toRgbArray(boxColor()); },
                       [this](const QJsonValue& color) {
                           if (color.isArray())
                               showColor(colorFromRgbArray(color.toArray()));
                       }}});
    setFixedHeight(kHeight);
    m_colorWheel->setObjectName(QStringLiteral("colorWheel"));
    m_colorWheel->setFixedSize(kWheelSize, kWheelSize);
    m_selectColorBtn->setObjectName(QStringLiteral("selectColorBtn"));
    m_selectColorBtn->setProperty("class", "Button1");
    buildLayout();
    retranslate();
    showColor(Qt::red);

    connect(m_colorWheel, &ColorWheel::colorChanged, this, &FrmSingleColor::onColorWheelChanged);
    connect(m_selectColorBtn, &QPushButton::clicked, this, &FrmSingleColor::onSelectColorBtnClicked);
}

QSpinBox* FrmSingleColor::addBox(const char* name)
{
    auto* box = new QSpinBox(this);
    box->setObjectName(QLatin1String(name));
    box->setRange(0, 255);
    box->setAlignment(Qt::AlignRight);
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &FrmSingleColor::onRGBBoxChanged);
    return box;
}

void FrmSingleColor::buildLayout()
{
    auto* numbers = new QFormLayout;
    numbers->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    numbers->setHorizontalSpacing(4); // the blank of a label is on its far side from right to left
    numbers->setVerticalSpacing(6);
    numbers->addRow(QStringLiteral("R: "), m_redBox);
    numbers->addRow(QStringLiteral("G: "), m_greenBox);
    numbers->addRow(QStringLiteral("B: "), m_blueBox);

    auto* right = new QVBoxLayout;
    right->setSpacing(0); // 180 pixels are few in a large font
    right->addStretch();
    right->addLayout(numbers);
    right->addSpacing(8);
    right->addWidget(m_selectColorBtn);
    right->addStretch();

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(18, 10, 18, 10);
    row->setSpacing(24);
    row->addWidget(m_colorWheel);
    row->addLayout(right);
    row->addStretch();
}

void FrmSingleColor::onColorWheelChanged(QColor color)
{
    const QSignalBlocker red(m_redBox);
    const QSignalBlocker green(m_greenBox);
    const QSignalBlocker blue(m_blueBox);
    m_redBox->setValue(color.red());
    m_greenBox->setValue(color.green());
    m_blueBox->setValue(color.blue());
    report();
}

void FrmSingleColor::onRGBBoxChanged(int)
{
    const QSignalBlocker wheel(m_colorWheel);
    m_colorWheel->setColor(boxColor());
    report();
}

void FrmSingleColor::onSelectColorBtnClicked()
{
    // The dialog runs its own event loop, in which a device may vanish and these options with it.
    const QPointer<FrmSingleColor> alive(this);
    const QColor color = QColorDialog::getColor(boxColor(), mainWindow(), tr("选择颜色"));
    if (alive && color.isValid())
        showColor(color);
}

void FrmSingleColor::showColor(const QColor& color)
{
    {
        const QSignalBlocker wheel(m_colorWheel);
        m_colorWheel->setColor(color);
    }
    onColorWheelChanged(color);
}

QColor FrmSingleColor::boxColor() const
{
    return {m_redBox->value(), m_greenBox->value(), m_blueBox->value(), 255};
}

void FrmSingleColor::report()
{
    emit effectPropertyChanged(kColorKey, toRgbArray(boxColor()));
    emit colorChanged(boxColor());
}

void FrmSingleColor::retranslate()
{
    m_selectColorBtn->setText(tr("选择颜色"));
    m_colorWheel->setAccessibleName(tr("色轮"));
    m_colorWheel->setAccessibleDescription(tr("方向键调整饱和度和亮度，Page Up 和 Page Down 键调整色相"));
    m_colorWheel->setToolTip(m_colorWheel->accessibleDescription());
}

void FrmSingleColor::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    AbsWorkerWidget::changeEvent(event);
}
